// SPDX-License-Identifier: MIT
// Prints the board's messages into a text box, control sequences included.
#pragma once

#include <QString>
#include <QTextCharFormat>
#include <QTextCursor>

class QTextEdit;

/// A cursor of its own in the box's document; the user's selection stays the user's.
class TerminalView
{
public:
    explicit TerminalView(QTextEdit &box);

    /// One message: text, or a control sequence when it begins with CR, ESC and "[".
    void print(const QString &message);

private:
    void control(const QString &parameters, char letter);
    void insert(const QString &text);
    void erase(const QString &parameters);
    void colour(const QString &parameters);

    QTextEdit &m_box;
    QTextCursor m_cursor;
    QTextCharFormat m_format;
};
