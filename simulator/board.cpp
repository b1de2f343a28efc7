// SPDX-License-Identifier: MIT
#include "simulator/board.h"

#include "protocol/frame.h"
#include "protocol/payload.h"
#include "protocol/sys.h"
#include "simulator/detection.h"
#include "simulator/unit.h"
#include "simulator/units.h"

#include <QTimer>

#include <algorithm>

namespace simulator {

namespace {

using protocol::ModuleId;

constexpr int kMaxWords = 3; // of a command

int wordCount(const QString &words)
{
    return words.count(QLatin1Char(' ')) + 1;
}

} // namespace

Board::Board(quint32 seed, QObject *parent) : QObject(parent), m_random(seed)
{
    m_units = makeUnits(*this);
    addCommands({
        {"help", "all commands", [this] { sayHelp(); }},
        {"status", "state of all modules", [this] { sayStatus(); }},
        {"sick none", "repair everything", [this] { heal(); }},
    });
    for (const auto &unit : m_units)
        unit->reset(ResetKind::PowerOn);
}

Board::~Board() = default;

void Board::addCommands(std::initializer_list<Command> commands)
{
    for (const Command &command : commands) {
        Q_ASSERT(wordCount(command.words) <= kMaxWords);
        m_index[command.words].push_back(m_commands.size());
        m_commands.push_back(command);
    }
}

// The places of the commands that answer to the most of these words.
const std::vector<std::size_t> *Board::find(const QStringList &words) const
{
    const std::vector<std::size_t> *longest = nullptr;
    for (int count = std::min(kMaxWords, static_cast<int>(words.size())); count > 0; --count) {
        const auto found = m_index.constFind(words.mid(0, count).join(QLatin1Char(' ')));
        if (found == m_index.constEnd())
            continue;
        if (m_commands[found->front()].takes(static_cast<int>(words.size()) - count))
            return &*found;
        longest = longest ? longest : &*found;
    }
    return longest;
}

void Board::execute(const QString &line)
{
    if (m_state != State::Running)
        return;
    emit executed(line);
    const QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.isEmpty())
        return;
    const std::vector<std::size_t> *found = find(words);
    if (!found) {
        say(QStringLiteral("unknown command: %1").arg(line.left(200)));
        return;
    }
    const Command &first = m_commands[found->front()];
    const QStringList arguments = words.mid(wordCount(first.words));
    if (!first.takes(static_cast<int>(arguments.size()))) {
        say(QStringLiteral("usage: %1").arg(first.usage()));
        return;
    }
    if (m_defects.isIgnored(first.words))
        return;
    for (std::size_t i = 0; i < found->size() && m_state == State::Running; ++i)
        m_commands[(*found)[i]].run(arguments);
}

void Board::send(ModuleId module, quint8 type, const QByteArray &payload)
{
    if (m_state != State::Running)
        return;
    if (const auto sent = m_defects.sent(module, type, payload))
        emit output(protocol::encodeFrame(module, type, *sent));
}

void Board::say(const QString &text)
{
    // A text is one byte per character; the quotation marks of the reset reasons have no such byte.
    const QString plain =
        QString(text).replace(QChar(0x2018), QLatin1Char('\'')).replace(QChar(0x2019), QLatin1Char('\''));
    send(ModuleId::Text, 0, plain.toLatin1());
    emit said(text);
}

void Board::detect(quint8 source, double elapsedUs, const std::function<void()> &record)
{
    if (m_defects.isMute(source))
        return;
    const int delayMs = m_defects.delayMs(source);
    const auto notice = [this, source, time = elapsedUs + delayMs * 1000.0, record] {
        if (m_defects.isReported(source))
            report(source, time);
        if (m_defects.isRecorded(source))
            record();
    };
    if (delayMs > 0)
        after(delayMs, notice);
    else
        notice();
}

void Board::report(quint8 source, double elapsedUs)
{
    const Detection &detection = detectionOf(source);
    const double time = elapsedUs + detection.us + detection.spread * drawn(0, 1000) / 1000;
    for (int count = m_defects.reportsOf(source); count > 0; --count) {
        for (const auto &unit : m_units)
            unit->faultReported(m_defects.reportedAs(source), static_cast<float>(time));
    }
}

void Board::clearFault(quint8 source)
{
    for (const auto &unit : m_units)
        unit->faultCleared(m_defects.reportedAs(source));
}

void Board::heal()
{
    for (const auto &unit : m_units)
        unit->heal();
}

void Board::restart(Reason reason, std::optional<quint8> source)
{
    const auto actual = m_defects.resetFor(reason);
    if (m_state != State::Running || !actual)
        return;
    for (const auto &unit : m_units) {
        if (unit->replacesReset(reason))
            return;
    }
    beginRestart(*actual, source);
}

void Board::beginRestart(Reason reason, std::optional<quint8> source)
{
    for (const auto &unit : m_units)
        unit->restartBegins(reason, source);
    m_state = State::Restarting;
    const unsigned life = ++m_life;
    QTimer::singleShot(kRestartMs, this, [this, reason, life] {
        if (life == m_life)
            finishRestart(reason);
    });
}

void Board::finishRestart(Reason reason)
{
    m_state = State::Running;
    for (const auto &unit : m_units)
        reset(*unit, kindOf(reason));
    send(ModuleId::Sys, protocol::sys::RestartNoticeReport, protocol::PayloadWriter().u8(0x7F).u8(0xFE).take());
    for (const auto &unit : m_units)
        unit->announce();
}

void Board::reset(Unit &unit, ResetKind kind)
{
    if (m_defects.isKept(unit.name()) && kind != ResetKind::PowerOn)
        return;
    const bool losesAll = m_defects.isLost(unit.name()) && kind == ResetKind::Functional;
    unit.reset(losesAll ? ResetKind::Destructive : kind);
}

void Board::holdInReset()
{
    ++m_life;
    m_state = State::Held;
    emit heldInReset();
}

void Board::powerCycle()
{
    beginRestart(Reason::PowerOn);
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

QByteArray Board::drawnBytes(int count)
{
    QByteArray bytes;
    for (int i = 0; i < count; ++i)
        bytes.append(static_cast<char>(drawn(0, 255)));
    return bytes;
}

void Board::sayHelp()
{
    for (const Command &command : m_commands) {
        if (!command.help.isEmpty())
            say(QStringLiteral("%1 - %2\r\n").arg(command.usage(), command.help));
    }
}

// Each name in a colour of its own; a control sequence is a message of its own.
void Board::sayStatus()
{
    for (const auto &unit : m_units) {
        say(QStringLiteral("\r\x1B[1;36m"));
        say(unit->name().leftJustified(8));
        say(QStringLiteral("\r\x1B[0m"));
        say(unit->status() + QStringLiteral("\r\n"));
    }
}

} // namespace simulator
