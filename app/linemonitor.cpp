// SPDX-License-Identifier: MIT
#include "app/linemonitor.h"

#include "link/linetraffic.h"
#include "link/portidentity.h"
#include "link/serialline.h"

#include <algorithm>

namespace {

constexpr int kTicksPerPatience = 8;

constexpr const char *moduleNames[] = {"text", "SYS", "CMU", "XBIC", "SMPU",  "REG_P", "CRC", "MEMU", "INTCM",
                                       "BIST", "PMC", "SWT", "FCCU", "RESET", "VG5k",  "CSE", "SPT"};
static_assert(std::size(moduleNames) == protocol::kModuleCount);

QString seconds(qint64 milliseconds)
{
    return QStringLiteral("%1 s").arg(milliseconds / 1000);
}

} // namespace

LineMonitor::LineMonitor(std::chrono::milliseconds patience, QObject *parent)
    : QObject(parent),
      m_patienceMs(patience.count())
{
    const LineTraffic &line = lineTraffic();
    connect(&line, &LineTraffic::opened, this, &LineMonitor::onOpened);
    connect(&line, &LineTraffic::received, this, &LineMonitor::onReceived);
    connect(&line, &LineTraffic::sent, this, &LineMonitor::onSent);
    connect(&line, &LineTraffic::closed, this, [this] { end(State::Closed); });
    connect(&line, &LineTraffic::lost, this, [this] { end(State::Lost); });
    connect(&m_tick, &QTimer::timeout, this, &LineMonitor::look);
    m_tick.setInterval(static_cast<int>(m_patienceMs / kTicksPerPatience));
}

QString LineMonitor::word() const
{
    switch (m_state) {
    case State::Closed:
        return QStringLiteral("closed");
    case State::Console:
        return QStringLiteral("the console has it");
    case State::Quiet:
        return QStringLiteral("open, quiet");
    case State::Receiving:
        return QStringLiteral("receiving");
    case State::Silent:
        return QStringLiteral("no answer for ") + seconds(m_asked.elapsed());
    case State::Lost:
        return canComeBack(m_port) ? QStringLiteral("lost, waiting for ") + m_port : QStringLiteral("lost");
    }
    return {};
}

quint64 LineMonitor::damagedBytes() const
{
    const quint64 good = m_counts.frameBytes + static_cast<quint64>(m_frames.pending());
    return m_counts.bytesIn - std::min(good, m_counts.bytesIn);
}

void LineMonitor::giveUp()
{
    if (m_state == State::Lost)
        enter(State::Closed);
}

void LineMonitor::onOpened(const QString &port)
{
    m_port = port;
    m_frames.clear();
    m_lines.clear();
    m_heard.invalidate();
    m_asked.invalidate();
    m_current = false;
    m_tick.start();
    enter(gSerialPort->isOpen() ? State::Quiet : State::Console);
}

void LineMonitor::onReceived(const QByteArray &bytes)
{
    m_counts.bytesIn += static_cast<quint64>(bytes.size());
    m_heard.start();
    m_asked.invalidate();
    const bool wasCurrent = m_current;
    countFrames(m_frames.take(bytes));
    if (m_state == State::Quiet || m_state == State::Silent)
        enter(State::Receiving);
    else if (m_current != wasCurrent)
        emit changed();
}

void LineMonitor::countFrames(const QList<frameData> &frames)
{
    if (frames.isEmpty())
        return;
    QStringList messages;
    for (const frameData &frame : frames) {
        ++m_counts.frames;
        m_counts.frameBytes += static_cast<quint64>(protocol::kFrameOverhead + frame.data.size());
        if (frame.moduleId < protocol::kModuleCount)
            ++m_counts.byModule[frame.moduleId];
        if (frame.moduleId == static_cast<quint8>(protocol::ModuleId::Text))
            messages.append(QString::fromLatin1(frame.data.constData()));
    }
    m_lastModule = frames.constLast().moduleId;
    m_lastAnswer = QDateTime::currentDateTime();
    if (m_state == State::Console)
        return; // it shows them itself, and the window shows none
    m_current = m_shown = true;
    if (!messages.isEmpty())
        emit messagesArrived(messages);
}

void LineMonitor::onSent(const QByteArray &bytes)
{
    m_counts.bytesOut += static_cast<quint64>(bytes.size());
    const QByteArrayList lines = m_lines.take(bytes);
    for (const QByteArray &line : lines)
        onCommand(line);
}

// Requests are answered by every board; of other commands some have nothing to report.
void LineMonitor::onCommand(const QByteArray &line)
{
    ++m_counts.commands;
    if (m_asked.isValid() || !line.startsWith("get "))
        return;
    m_asked.start();
    m_askedAt = QDateTime::currentDateTime();
}

void LineMonitor::end(State state)
{
    m_tick.stop();
    m_asked.invalidate();
    m_current = false;
    enter(state);
}

// Whether silence has become one, and how long it has lasted.
void LineMonitor::look()
{
    if (m_state == State::Console)
        return;
    if (m_state == State::Silent) {
        emit changed();
    } else if (m_asked.isValid() && m_asked.hasExpired(m_patienceMs)) {
        m_current = false;
        enter(State::Silent, m_askedAt);
    } else if (m_state == State::Receiving && m_heard.hasExpired(m_patienceMs)) {
        enter(State::Quiet);
    }
}

void LineMonitor::enter(State state, const QDateTime &since)
{
    m_state = state;
    m_since = since;
    emit changed();
}

QString moduleName(int module)
{
    return module >= 0 && module < protocol::kModuleCount ? QString::fromLatin1(moduleNames[module])
                                                          : QString::number(module);
}
