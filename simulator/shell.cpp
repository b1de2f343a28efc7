// SPDX-License-Identifier: MIT
#include "simulator/shell.h"

#include "simulator/board.h"

#include <algorithm>

namespace simulator {

namespace {

constexpr char kEscape = '\x1B';
constexpr char kBackspace = '\b';
constexpr char kDelete = '\x7F';
const QString kPrompt = QStringLiteral("> ");

// A control sequence is a message of its own.
QString sequence(const QString &text)
{
    return QStringLiteral("\r\x1B[") + text;
}

bool isLineEnd(char byte)
{
    return byte == '\r' || byte == '\n';
}

bool isPrintable(char byte)
{
    return static_cast<unsigned char>(byte) >= ' ' && byte != kDelete;
}

} // namespace

Shell::Shell(Board &board, QObject *parent) : QObject(parent), m_board(board)
{
    connect(&board, &Board::said, this,
            [this](const QString &text) { m_lineOpen = !text.endsWith(QLatin1Char('\n')); });
}

void Shell::take(const QByteArray &bytes)
{
    if (!isTyped(bytes)) {
        takeLines(bytes);
        return;
    }
    for (const char byte : bytes)
        takeKey(byte);
}

bool Shell::isTyped(const QByteArray &bytes) const
{
    if (!m_pending.isEmpty())
        return false;
    const bool wholeLines = bytes.size() > 2 && isLineEnd(bytes.back());
    return !m_line.isEmpty() || m_escape > 0 || !(wholeLines || bytes.size() >= kProgramPiece)
        || bytes.contains(kEscape) || bytes.contains(kBackspace) || bytes.contains(kDelete);
}

void Shell::takeLines(const QByteArray &bytes)
{
    m_pending.append(bytes);
    m_pending.replace('\r', '\n');
    int begin = 0;
    for (int end = m_pending.indexOf('\n'); end >= 0; end = m_pending.indexOf('\n', begin)) {
        takeLine(m_pending.mid(begin, end - begin));
        begin = end + 1;
    }
    m_pending.remove(0, begin);
    if (m_pending.size() > kMaxLine)
        m_pending.truncate(kMaxLine + 1); // still too long
}

void Shell::takeLine(const QByteArray &line)
{
    if (line.size() > kMaxLine)
        m_board.say(QStringLiteral("line too long, dropped"));
    else if (!line.isEmpty())
        m_board.execute(QString::fromLatin1(line.constData(), static_cast<int>(line.size())));
}

void Shell::takeKey(char key)
{
    const bool secondEnd = key == '\n' && m_afterReturn;
    m_afterReturn = key == '\r';
    if (m_escape > 0 || key == kEscape) {
        takeEscape(key);
    } else if (isLineEnd(key)) {
        if (!secondEnd)
            finishLine();
    } else if (key == kBackspace || key == kDelete) {
        if (key == kBackspace && m_position > 0)
            m_line.remove(--m_position, 1);
        else if (key == kDelete)
            m_line.remove(m_position, 1);
        redraw();
    } else if (isPrintable(key)) {
        if (m_line.size() >= kMaxLine) {
            m_tooLong = true;
            return;
        }
        m_line.insert(m_position++, key);
        if (m_position == m_line.size())
            m_board.say(QString(QLatin1Char(key)));
        else
            redraw();
    }
}

void Shell::takeEscape(char key)
{
    if (m_escape < 2) {
        const bool expected = m_escape == 0 || key == '[';
        m_escape = expected ? m_escape + 1 : 0;
        return;
    }
    m_escape = 0;
    if (key == 'A' || key == 'B')
        recall(key == 'A' ? 1 : -1);
    else if (key == 'C' || key == 'D')
        moveTo(m_position + (key == 'C' ? 1 : -1));
}

void Shell::finishLine()
{
    const QString line = QString::fromLatin1(m_line.constData(), static_cast<int>(m_line.size()));
    m_line.clear();
    m_position = m_recalled = 0;
    m_board.say(QStringLiteral("\r\n"));
    if (m_tooLong) {
        m_board.say(QStringLiteral("line too long, dropped"));
    } else if (!line.trimmed().isEmpty()) {
        m_history.removeAll(line);
        m_history.append(line);
        if (m_history.size() > kHistory)
            m_history.removeFirst();
        m_board.execute(line);
    }
    m_tooLong = false;
    prompt();
}

void Shell::prompt()
{
    m_board.say(m_lineOpen ? QStringLiteral("\r\n") + kPrompt : kPrompt);
}

void Shell::recall(int step)
{
    m_recalled = std::clamp(m_recalled + step, 0, static_cast<int>(m_history.size()));
    m_line = m_recalled == 0 ? QByteArray() : m_history[m_history.size() - m_recalled].toLatin1();
    m_position = m_line.size();
    redraw();
}

void Shell::moveTo(int position)
{
    const int target = std::clamp(position, 0, static_cast<int>(m_line.size()));
    if (target != m_position)
        m_board.say(sequence(target < m_position ? QStringLiteral("1D") : QStringLiteral("1C")));
    m_position = target;
}

void Shell::redraw()
{
    m_board.say(sequence(QStringLiteral("K")));
    m_board.say(kPrompt + QString::fromLatin1(m_line));
    if (m_position < m_line.size())
        m_board.say(sequence(QStringLiteral("%1D").arg(m_line.size() - m_position)));
}

} // namespace simulator
