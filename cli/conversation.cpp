// SPDX-License-Identifier: MIT
#include "cli/conversation.h"

#include "cli/complain.h"
#include "cli/exitcode.h"
#include "cli/interrupt.h"
#include "cli/settings.h"
#include "link/linetraffic.h"

#include <QTimer>

#include <algorithm>

namespace {

constexpr int kOpenMs = 5000;

} // namespace

Conversation::Conversation(const Settings &settings) : Conversation(settings, wayTo(settings)) {}

Conversation::Conversation(const Settings &settings, Way way)
    : m_settings(settings),
      m_way(std::move(way)),
      m_recorder([this](const session::Packet &packet) { take(packet); })
{
    m_clock.start();
    const LineTraffic &line = lineTraffic();
    connect(&line, &LineTraffic::opened, this, [this](const QString &port) { m_recorder.opened(port); });
    connect(&line, &LineTraffic::received, this, [this](const QByteArray &bytes) { m_recorder.received(bytes); });
    connect(&line, &LineTraffic::sent, this, [this](const QByteArray &bytes) { m_recorder.sent(bytes); });
    connect(&line, &LineTraffic::closed, this, [this] { m_recorder.closed(); });
    connect(&line, &LineTraffic::lost, this, [this](const QString &reason) {
        m_lost = reason.isEmpty() ? QStringLiteral("connection lost") : reason;
        m_recorder.lost(reason);
    });
    connect(&m_writer, &session::RecordingWriter::failed, this, &complain);
    onInterrupt(this, [this] { m_loop.quit(); });
}

Conversation::~Conversation()
{
    close();
}

// The line's end is announced, and recorded.
void Conversation::close()
{
    m_way.transport.reset();
    m_writer.flush();
}

int Conversation::finish(int code)
{
    close();
    return code == kAsAsked && !recordingIsWhole() ? kUsageOrFile : code;
}

int Conversation::open()
{
    if (!m_way.transport) {
        complain(m_way.trouble);
        return m_way.exitCode;
    }
    if (!m_settings.record.isEmpty()
        && !m_writer.open(m_settings.record, QStringLiteral("safety-workbench-cli " WORKBENCH_VERSION),
                          m_way.transport->name()))
        return kUsageOrFile;
    m_name = m_way.transport->name();
    const QString trouble = m_way.transport->open(m_settings.timeoutMs.value_or(kOpenMs));
    if (trouble.isEmpty())
        return kAsAsked;
    complain(trouble);
    return kLineOrBoard;
}

void Conversation::send(const QString &command)
{
    m_way.transport->write((command + QStringLiteral("\r\n")).toLatin1());
}

void Conversation::take(const session::Packet &packet)
{
    m_writer.add(packet);
    if (onPacket)
        onPacket(packet);
    if (packet.direction == session::Direction::Received) {
        m_lastArrival = m_clock.elapsed();
        // A copy: a listener may send, and an answer may come, while the frames are gone through.
        const QList<frameData> frames = m_frames.take(packet.bytes);
        for (const frameData &frame : frames) {
            if (onFrame)
                onFrame(frame, packet.time);
        }
    }
    m_loop.quit();
}

Conversation::Waited Conversation::wait(int milliseconds, const std::function<bool()> &done)
{
    QElapsedTimer waited;
    waited.start();
    QTimer wake;
    wake.setSingleShot(true);
    wake.setTimerType(Qt::PreciseTimer);
    connect(&wake, &QTimer::timeout, &m_loop, &QEventLoop::quit);
    for (;;) {
        if (interrupted())
            return Waited::Interrupted;
        if (done && done())
            return Waited::Done;
        if (!m_lost.isEmpty())
            return Waited::Lost;
        const qint64 left = milliseconds - waited.elapsed();
        if (milliseconds >= 0 && left <= 0)
            return Waited::TimedOut;
        if (milliseconds >= 0)
            wake.start(static_cast<int>(left));
        m_loop.exec();
    }
}

Conversation::Waited Conversation::waitForSilence(int silenceMs, int milliseconds)
{
    QElapsedTimer waited;
    waited.start();
    m_lastArrival = m_clock.elapsed();
    for (;;) {
        const qint64 quiet = m_clock.elapsed() - m_lastArrival;
        const qint64 left = std::min<qint64>(silenceMs - quiet, milliseconds - waited.elapsed());
        if (left <= 0)
            return Waited::Done;
        const Waited ended = wait(static_cast<int>(left));
        if (ended != Waited::TimedOut)
            return ended;
    }
}

int Conversation::codeOf(Waited waited) const
{
    if (waited == Waited::Interrupted)
        return kInterrupted;
    if (waited != Waited::Lost)
        return kAsAsked;
    complain(QStringLiteral("%1: connection lost: %2").arg(m_name, m_lost));
    return kLineOrBoard;
}

bool isCommandLine(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar character) {
        return character.unicode() <= 0xFF && character.category() != QChar::Other_Control;
    });
}
