// SPDX-License-Identifier: MIT
// The board's command line: whole lines from a program, or keys from a person at a terminal.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QStringList>

namespace simulator {

class Board;

/// Lines that arrive in one piece are carried out silently. Anything else is typing: it is echoed and edited with the
/// cursor keys, Backspace and Delete, with a short history, by messages with ANSI control sequences.
class Shell : public QObject
{
    Q_OBJECT

public:
    explicit Shell(Board &board, QObject *parent = nullptr);

    void take(const QByteArray &bytes);

    /// Longer lines than this are dropped with a message.
    static constexpr int kMaxLine = 65536;
    static constexpr int kHistory = 20;

private:
    bool takeLines(const QByteArray &bytes);
    void takeKey(char key);
    void takeEscape(char key);
    void finishLine();
    void recall(int step);
    void moveTo(int position);
    void redraw();
    void prompt();

    Board &m_board;
    QByteArray m_line;
    int m_position = 0;
    int m_escape = 0; // bytes of an escape sequence seen
    bool m_afterReturn = false;
    bool m_tooLong = false;
    bool m_lineOpen = false; // what was said last did not end its line
    QStringList m_history;
    int m_recalled = 0; // from the end of the history; 0: the line being typed
};

} // namespace simulator
