// SPDX-License-Identifier: MIT
// The last packets in memory, ready to be saved.
#pragma once

#include "session/packet.h"

#include <QByteArray>
#include <QString>

#include <deque>

namespace session {

/// Keeps packets as the bytes of a file, in pieces; the oldest piece goes when there are too many. A packet costs the time
/// to copy it, however many are held.
class FlightRecorder
{
public:
    static constexpr qint64 kUsualLimit = qint64{64} * 1024 * 1024;
    static constexpr int kPiece = 1024 * 1024;

    /// At most `limit` bytes of packets are held, or one piece where that is more.
    explicit FlightRecorder(qint64 limit = kUsualLimit) : m_limit(limit) {}

    void add(const Packet &packet);
    /// Packets held, and packets that had to go.
    quint64 packets() const { return m_packets; }
    quint64 dropped() const { return m_dropped; }
    /// Bytes held.
    qint64 size() const { return m_size; }

    /// Writes a recording of `program` with the names of its ports. A file that is there is replaced only when all is
    /// written. Returns why it failed, for people; empty on success.
    QString save(const QString &path, const QString &program, const QStringList &ports,
                 const QStringList &comments = {}) const;

private:
    struct Piece {
        QByteArray bytes;
        quint64 packets = 0;
    };

    void startPiece();
    template <class File> QString writtenTo(const QString &path, const QByteArray &start) const;

    qint64 m_limit;
    std::deque<Piece> m_pieces;
    qint64 m_size = 0;
    quint64 m_packets = 0;
    quint64 m_dropped = 0;
    QByteArray m_encoded;
};

} // namespace session
