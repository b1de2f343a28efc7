// SPDX-License-Identifier: MIT
#include "console/terminalview.h"

#include "app/textview.h"
#include "console/textcolours.h"

#include <QApplication>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextEdit>

#include <algorithm>

namespace {

constexpr int kMaxMove = 10000;

int countOf(const QString &parameters)
{
    return std::clamp(parameters.toInt(), 1, kMaxMove);
}

bool isFinal(QChar c)
{
    return (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) || (c >= QLatin1Char('a') && c <= QLatin1Char('z'));
}

bool movesCursor(QChar c)
{
    return c == QLatin1Char('\b') || c == QLatin1Char('\r') || c == QLatin1Char('\n');
}

} // namespace

TerminalView::TerminalView(QTextEdit &box) : m_box(box), m_cursor(box.document())
{
    box.document()->setUndoRedoEnabled(false);
    m_format = m_cursor.charFormat();
}

void TerminalView::print(const QStringList &messages)
{
    QScrollBar &bar = *m_box.verticalScrollBar();
    const bool atEnd = bar.value() >= bar.maximum();
    m_cursor.beginEditBlock();
    for (const QString &message : messages)
        printMessage(message);
    m_cursor.endEditBlock();
    textview::foldOlder(m_box);
    const int value = bar.value();
    showCursor(); // and scrolls to it
    bar.setValue(atEnd ? bar.maximum() : value);
}

void TerminalView::printMessage(const QString &message)
{
    static const QString introducer = QStringLiteral("\r\x1B[");
    if (!message.startsWith(introducer)) {
        printText(message);
        return;
    }
    const auto letter = std::find_if(message.begin() + introducer.size(), message.end(), isFinal);
    if (letter == message.end())
        return;
    const int end = static_cast<int>(letter - message.begin());
    control(message.mid(introducer.size(), end - introducer.size()), letter->toLatin1());
    printText(message.mid(end + 1));
}

// Backspace, carriage return and line feed move the cursor as on a terminal, and later text overwrites the text there.
void TerminalView::printText(const QString &text)
{
    if (!text.isEmpty())
        m_column = -1;
    for (auto at = text.begin(); at != text.end();) {
        const auto end = std::find_if(at, text.end(), movesCursor);
        if (end != at) {
            put(text.mid(static_cast<int>(at - text.begin()), static_cast<int>(end - at)));
            at = end;
            continue;
        }
        if (*at == QLatin1Char('\n'))
            startLine();
        else if (*at == QLatin1Char('\r'))
            moveTo(m_cursor.block(), 0);
        else
            moveAcross(-1);
        m_replacing = true;
        ++at;
    }
}

void TerminalView::put(const QString &run)
{
    if (m_replacing && !m_cursor.atBlockEnd()) {
        const int rest = m_cursor.block().length() - 1 - m_cursor.positionInBlock();
        m_cursor.setPosition(m_cursor.position() + std::min(run.size(), rest), QTextCursor::KeepAnchor);
    }
    m_cursor.insertText(run, m_format);
}

void TerminalView::startLine()
{
    if (m_cursor.block().next().isValid()) {
        moveTo(m_cursor.block().next(), 0);
        return;
    }
    m_cursor.movePosition(QTextCursor::End);
    m_cursor.insertBlock();
}

void TerminalView::control(const QString &parameters, char letter)
{
    switch (letter) {
    case 'A':
        moveDown(-countOf(parameters));
        break;
    case 'B':
        moveDown(countOf(parameters));
        break;
    case 'C':
        moveAcross(countOf(parameters));
        break;
    case 'D':
        moveAcross(-countOf(parameters));
        break;
    case 'K':
        m_column = -1;
        m_replacing = false;
        eraseLine();
        break;
    case 'J':
        m_column = -1;
        m_replacing = false;
        erase(parameters);
        break;
    case 'm':
        selectColours(m_format, parameters);
        break;
    default: // among them "h", a mode that this terminal does not have
        break;
    }
}

void TerminalView::moveTo(const QTextBlock &line, int column)
{
    m_replacing = false;
    m_cursor.setPosition(line.position() + std::clamp(column, 0, line.length() - 1));
}

void TerminalView::moveAcross(int columns)
{
    m_column = -1;
    moveTo(m_cursor.block(), m_cursor.positionInBlock() + columns);
}

void TerminalView::moveDown(int lines)
{
    m_column = std::max(m_column, m_cursor.positionInBlock());
    const QTextDocument &document = *m_box.document();
    const int line = std::clamp(m_cursor.blockNumber() + lines, 0, document.blockCount() - 1);
    moveTo(document.findBlockByNumber(line), m_column);
}

void TerminalView::eraseLine()
{
    m_cursor.endEditBlock(); // inside one it is not known where a long line is wrapped
    m_cursor.movePosition(QTextCursor::StartOfLine);
    m_cursor.movePosition(QTextCursor::EndOfLine, QTextCursor::KeepAnchor);
    m_cursor.beginEditBlock();
    m_cursor.removeSelectedText();
}

// 0 from the cursor to the end, 1 from the start to the cursor, 2 all.
void TerminalView::erase(const QString &parameters)
{
    const int what = parameters.toInt();
    if (what == 2) {
        m_cursor.endEditBlock();
        m_box.clear();
        m_cursor = QTextCursor(m_box.document());
        m_cursor.beginEditBlock();
    } else if (what == 0 || what == 1) {
        m_cursor.movePosition(what == 0 ? QTextCursor::End : QTextCursor::Start, QTextCursor::KeepAnchor);
        m_cursor.removeSelectedText();
    }
}

// Not while the user selects text, or is about to.
void TerminalView::showCursor()
{
    if (!m_box.textCursor().hasSelection() && QApplication::mouseButtons() == Qt::NoButton)
        m_box.setTextCursor(m_cursor);
}
