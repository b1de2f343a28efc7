// SPDX-License-Identifier: MIT
#include "simulator/board.h"

#include "protocol/frame.h"
#include "protocol/payload.h"
#include "protocol/sys.h"
#include "simulator/resetreason.h"
#include "simulator/unit.h"
#include "simulator/units.h"

#include <QTimer>

#include <algorithm>

namespace {

using protocol::ModuleId;

int wordCount(const QString &words)
{
    return words.count(QLatin1Char(' ')) + 1;
}

// Whether `line` begins with these words, whole ones.
bool beginsWith(const QStringList &line, const QString &words)
{
    const int count = wordCount(words);
    return line.size() >= count && line.mid(0, count).join(QLatin1Char(' ')) == words;
}

} // namespace

Board::Board(quint32 seed, QObject *parent) : QObject(parent), m_random(seed), m_units(makeUnits(*this))
{
    for (const auto &unit : m_units)
        unit->reset(ResetKind::PowerOn, PowerOnReset);
}

Board::~Board() = default;

void Board::addCommand(Command command)
{
    m_commands.push_back(std::move(command));
}

void Board::execute(const QString &line)
{
    if (m_restarting || m_held)
        return;
    emit executed(line);
    const QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.isEmpty())
        return;
    const Command *best = nullptr;
    for (const Command &command : m_commands) {
        if (beginsWith(words, command.words) && (!best || wordCount(command.words) > wordCount(best->words)))
            best = &command;
    }
    if (!best) {
        say(QStringLiteral("unknown command: %1").arg(line.left(200)));
        return;
    }
    const QStringList arguments = words.mid(wordCount(best->words));
    if (arguments.size() < best->minimum || arguments.size() > best->maximum) {
        say(QStringLiteral("usage: %1 %2").arg(best->words, best->arguments).trimmed());
        return;
    }
    const QString wanted = best->words;
    for (std::size_t i = 0; i < m_commands.size() && !m_restarting; ++i) {
        if (m_commands[i].words == wanted)
            m_commands[i].run(arguments);
    }
}

void Board::send(ModuleId module, quint8 type, const QByteArray &payload)
{
    if (!m_restarting && !m_held)
        emit output(protocol::encodeFrame(module, type, payload));
}

void Board::say(const QString &text)
{
    // A byte a character: the quotation marks of the reset reasons have none of their own.
    const QString plain =
        QString(text).replace(QChar(0x2018), QLatin1Char('\'')).replace(QChar(0x2019), QLatin1Char('\''));
    send(ModuleId::Text, 0, plain.toLatin1());
    emit said(text);
}

void Board::reportFault(quint8 source)
{
    if (m_faults.report)
        m_faults.report(source);
    emit faultReported(source);
}

void Board::clearFault(quint8 source)
{
    if (m_faults.clear)
        m_faults.clear(source);
}

void Board::restart(ResetKind kind, int reason, int source)
{
    if (m_restarting || m_held || (m_resetRule && m_resetRule(kind, reason, source)))
        return;
    m_restarting = true;
    const unsigned life = ++m_life;
    QTimer::singleShot(kRestartMs, this, [this, kind, reason, life] {
        if (life == m_life)
            startAgain(kind, reason);
    });
}

void Board::startAgain(ResetKind kind, int reason)
{
    m_restarting = false;
    for (const auto &unit : m_units)
        unit->reset(kind, reason);
    send(ModuleId::Sys, protocol::sys::RestartNoticeReport, protocol::PayloadWriter().u8(0x7F).u8(0xFE).take());
    for (const auto &unit : m_units)
        unit->announce();
}

void Board::holdInReset()
{
    ++m_life;
    m_held = true;
    emit heldInReset();
}

void Board::powerCycle()
{
    m_held = false;
    m_restarting = true;
    const unsigned life = ++m_life;
    QTimer::singleShot(kRestartMs, this, [this, life] {
        if (life == m_life)
            startAgain(ResetKind::PowerOn, PowerOnReset);
    });
}

void Board::after(int milliseconds, std::function<void()> work)
{
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, this, [this, work = std::move(work), life = m_life] {
        if (life == m_life)
            work();
    });
}

int Board::drawn(int low, int high)
{
    return low + static_cast<int>(m_random() % static_cast<unsigned>(high - low + 1));
}
