// SPDX-License-Identifier: MIT
#include "console/terminalview.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextEdit>

#include <algorithm>

namespace {

// The eight colours of a terminal, then the eight bright ones.
constexpr QRgb colours[] = {
    0xFF000000, 0xFFCD3131, 0xFF0DBC79, 0xFFE5E510, 0xFF2472C8, 0xFFBC3FBC, 0xFF11A8CD, 0xFFE5E5E5,
    0xFF767676, 0xFFF14C4C, 0xFF23D18B, 0xFFF5F543, 0xFF3B8EEA, 0xFFD670D6, 0xFF29B8DB, 0xFFFFFFFF,
};
constexpr int kLongestMove = 10000;

int countOf(const QString &parameters)
{
    return std::clamp(parameters.toInt(), 1, kLongestMove);
}

bool isFinal(QChar c)
{
    return (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) || (c >= QLatin1Char('a') && c <= QLatin1Char('z'));
}

} // namespace

TerminalView::TerminalView(QTextEdit &box) : m_box(box), m_cursor(box.document())
{
    box.document()->setUndoRedoEnabled(false);
    m_format = m_cursor.charFormat();
}

void TerminalView::print(const QString &message)
{
    static const QString introducer = QStringLiteral("\r\x1B[");
    if (!message.startsWith(introducer)) {
        insert(message);
        return;
    }
    const auto letter = std::find_if(message.begin() + introducer.size(), message.end(), isFinal);
    if (letter == message.end())
        return;
    const int end = static_cast<int>(letter - message.begin());
    control(message.mid(introducer.size(), end - introducer.size()), letter->toLatin1());
    if (end + 1 < message.size())
        insert(message.mid(end + 1));
}

// What stands under the cursor is written over, as on a terminal; a line end moves to the next line.
void TerminalView::insert(const QString &text)
{
    if (m_cursor.atEnd()) {
        m_cursor.insertText(text, m_format);
        return;
    }
    for (const QChar c : text) {
        if (c == QLatin1Char('\n')) {
            m_cursor.movePosition(QTextCursor::End);
            m_cursor.insertBlock();
        } else if (c == QLatin1Char('\b')) {
            m_cursor.movePosition(QTextCursor::Left);
        } else if (c != QLatin1Char('\r')) {
            if (!m_cursor.atBlockEnd())
                m_cursor.deleteChar();
            m_cursor.insertText(QString(c), m_format);
        }
    }
}

void TerminalView::control(const QString &parameters, char letter)
{
    switch (letter) {
    case 'A':
        m_cursor.movePosition(QTextCursor::Up, QTextCursor::MoveAnchor, countOf(parameters));
        break;
    case 'B':
        m_cursor.movePosition(QTextCursor::Down, QTextCursor::MoveAnchor, countOf(parameters));
        break;
    case 'C':
        m_cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, countOf(parameters));
        break;
    case 'D':
        m_cursor.movePosition(QTextCursor::Left, QTextCursor::MoveAnchor, countOf(parameters));
        break;
    case 'K':
        m_cursor.movePosition(QTextCursor::StartOfBlock);
        m_cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        m_cursor.removeSelectedText();
        break;
    case 'J':
        erase(parameters);
        break;
    case 'm':
        colour(parameters);
        break;
    default: // among them "h", a mode that this terminal does not have
        break;
    }
}

// 0 from the cursor to the end, 1 from the start to the cursor, 2 all.
void TerminalView::erase(const QString &parameters)
{
    const int what = parameters.toInt();
    if (what == 2) {
        m_box.clear();
        m_cursor = QTextCursor(m_box.document());
    } else if (what == 0 || what == 1) {
        m_cursor.movePosition(what == 0 ? QTextCursor::End : QTextCursor::Start, QTextCursor::KeepAnchor);
        m_cursor.removeSelectedText();
    }
}

void TerminalView::colour(const QString &parameters)
{
    const QStringList numbers = parameters.split(QLatin1Char(';'));
    for (const QString &number : numbers) {
        const int code = number.toInt(); // none is 0
        if (code == 0)
            m_format = QTextCharFormat();
        else if (code == 1)
            m_format.setFontWeight(QFont::Bold);
        else if (code == 22)
            m_format.setFontWeight(QFont::Normal);
        else if (code >= 30 && code <= 37)
            m_format.setForeground(QColor(colours[code - 30]));
        else if (code >= 90 && code <= 97)
            m_format.setForeground(QColor(colours[8 + code - 90]));
        else if (code == 39)
            m_format.clearForeground();
        else if (code >= 40 && code <= 47)
            m_format.setBackground(QColor(colours[code - 40]));
        else if (code >= 100 && code <= 107)
            m_format.setBackground(QColor(colours[8 + code - 100]));
        else if (code == 49)
            m_format.clearBackground();
    }
}
