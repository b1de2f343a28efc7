// SPDX-License-Identifier: MIT
// The board's command line: whole lines from a program, or keys from a person at a terminal.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QStringList>

namespace simulator {

class Board;

/// Whole lines that arrive in one piece are a program's and are carried out silently; so is a line that begins with a
/// piece too long to have been typed. Anything else is typing: it is echoed and edited with the cursor keys, Backspace
/// and Delete, with a short history, by messages with ANSI control sequences.
class Shell : public QObject
{
    Q_OBJECT

public:
    explicit Shell(Board &board, QObject *parent = nullptr);

    void take(const QByteArray &bytes);

    /// Longer lines than this are dropped with a message. The longest useful one encrypts 32 KiB.
    static constexpr int kMaxLine = 66 * 1024;
    /// A piece of this length was not typed.
    static constexpr int kProgramPiece = 1024;
    static constexpr int kHistory = 20;

private:
    bool isTyped(const QByteArray &bytes) const;
    void takeLines(const QByteArray &bytes);
    void takeLine(const QByteArray &line);
    void takeKey(char key);
    void takeEscape(char key);
    void finishLine();
    void recall(int step);
    void moveTo(int position);
    void redraw();
    void prompt();

    Board &m_board;
    QByteArray m_pending; // the beginning of a program's line
    QByteArray m_line;    // being typed
    int m_position = 0;
    int m_escape = 0; // bytes of an escape sequence seen
    bool m_afterReturn = false;
    bool m_tooLong = false;
    bool m_lineOpen = false; // the last text did not end its line
    QStringList m_history;
    int m_recalled = 0; // from the end of the history; 0: the line being typed
};

} // namespace simulator
