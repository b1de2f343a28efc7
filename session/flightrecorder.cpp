// SPDX-License-Identifier: MIT
#include "session/flightrecorder.h"

#include "session/pcapng.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace session {

namespace {

// To be written to, not to be replaced by a file.
bool isDevice(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() && !info.isFile();
}

bool commit(QFile &file)
{
    return file.flush();
}

bool commit(QSaveFile &file)
{
    return file.commit();
}

} // namespace

// A new piece takes the memory of the oldest one where that has to go.
void FlightRecorder::startPiece()
{
    Piece piece;
    while (m_pieces.size() > 0 && m_size + kPiece > m_limit) {
        piece = std::move(m_pieces.front());
        m_pieces.pop_front();
        m_size -= piece.bytes.size();
        m_packets -= piece.packets;
        m_dropped += piece.packets;
    }
    piece.bytes.reserve(kPiece);
    piece.bytes.resize(0);
    piece.packets = 0;
    m_pieces.push_back(std::move(piece));
}

void FlightRecorder::add(const Packet &packet)
{
    m_encoded.reserve(kLargestPacket);
    m_encoded.resize(0);
    appendPacket(m_encoded, packet);
    if (m_pieces.empty() || m_pieces.back().bytes.size() + m_encoded.size() > kPiece)
        startPiece();
    m_pieces.back().bytes.append(m_encoded);
    ++m_pieces.back().packets;
    m_size += m_encoded.size();
    ++m_packets;
}

QString FlightRecorder::save(const QString &path, const QString &program, const QStringList &ports,
                             const QStringList &comments) const
{
    QStringList all = comments;
    if (m_dropped > 0)
        all.append(QStringLiteral("%1 earlier packets are not in this recording").arg(m_dropped));
    const QByteArray start = encodeStart(program, ports.isEmpty() ? QStringList(QString()) : ports, all);
    const QString trouble = isDevice(path) ? writtenTo<QFile>(path, start) : writtenTo<QSaveFile>(path, start);
    return trouble.isEmpty() ? QString() : QStringLiteral("%1: %2").arg(path, trouble);
}

// Returns what went wrong.
template <class File> QString FlightRecorder::writtenTo(const QString &path, const QByteArray &start) const
{
    File file(path);
    bool good = file.open(QIODevice::WriteOnly) && file.write(start) == start.size();
    for (auto piece = m_pieces.begin(); good && piece != m_pieces.end(); ++piece)
        good = file.write(piece->bytes) == piece->bytes.size();
    return good && commit(file) ? QString() : file.errorString();
}

} // namespace session
