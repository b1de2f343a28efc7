// SPDX-License-Identifier: MIT
// What passes the line becomes packets: every read and every write as it happened, openings and losses as notes, and the
// firmware's version as a comment on the packet that brought it.
#pragma once

#include "session/clock.h"
#include "session/framestream.h"
#include "session/notes.h"
#include "session/packet.h"

#include <functional>

namespace session {

class Recorder
{
public:
    using Sink = std::function<void(const Packet &)>;

    /// `sink` gets each packet as it passes.
    explicit Recorder(Sink sink) : m_sink(std::move(sink)) {}

    void opened(const QString &port);
    void received(const QByteArray &bytes);
    void sent(const QByteArray &bytes);
    void closed();
    void lost(const QString &reason);
    /// A mark with the time `at` of the moment that it is for: words take their time.
    void mark(const QString &word, qint64 at);

    /// Nanoseconds since 1970, UTC, as the packets have them.
    qint64 now() const { return m_clock.now(); }

    /// Ports opened so far; a packet's `port` counts in it.
    const QStringList &ports() const { return m_ports; }
    /// The last version that the board told; empty until then.
    QString firmware() const { return m_firmware; }

private:
    void note(NoteKind kind, const QString &text, qint64 time);
    void put(Direction direction, const QByteArray &bytes, const QStringList &comments = {});

    Sink m_sink;
    Clock m_clock;
    FrameStream m_frames;
    QStringList m_ports;
    quint32 m_port = 0;
    QString m_firmware;
};

} // namespace session
