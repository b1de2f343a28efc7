// SPDX-License-Identifier: MIT
// Prints the board's messages into a text box, control sequences included.
#pragma once

#include <QStringList>
#include <QTextCharFormat>
#include <QTextCursor>

class QTextBlock;
class QTextEdit;

/// A terminal's cursor in the box's document. The box's own cursor follows it, except while the user selects text; where
/// the user clicks has no influence on the printing.
class TerminalView
{
public:
    explicit TerminalView(QTextEdit &box);

    /// Prints messages in order. A message that begins with CR, ESC and "[" is a control sequence, any other is text. The
    /// view follows the end if it showed the end.
    void print(const QStringList &messages);

private:
    void printMessage(const QString &message);
    void printText(const QString &text);
    void control(const QString &parameters, char letter);
    void put(const QString &run);
    void startLine();
    void moveTo(const QTextBlock &line, int column);
    void moveAcross(int columns);
    void moveDown(int lines);
    void eraseLine();
    void erase(const QString &parameters);
    void showCursor();

    QTextEdit &m_box;
    QTextCursor m_cursor;
    QTextCharFormat m_format;
    int m_column = -1;        // aimed at by successive moves up and down; -1: the cursor's
    bool m_replacing = false; // text replaces what follows the cursor instead of moving it on
};
