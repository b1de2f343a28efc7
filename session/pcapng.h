// SPDX-License-Identifier: MIT
// The recording's format: pcapng, readable by the usual network analysers without any setting.
//
//   section header          the program that wrote it; comments
//   interface description   one per port: link type 252 (upper PDU export), name, bits per second, nanoseconds
//   enhanced packet         one per read, write or note; the direction in its flags
//
// A packet begins with tags of two 16-bit numbers, kind and length, most significant byte first: 12 the name of the
// dissector, 35 the direction (0 sent, 1 received), 0 the end; then come the bytes of the line. A note has no direction.
// Everything else stands in the byte order of the machine that wrote the section.
#pragma once

#include "session/packet.h"

#include <QByteArray>
#include <QIODevice>
#include <QString>

#include <optional>
#include <string_view>
#include <vector>

namespace session {

/// Bits per second of the line, for the interface description.
inline constexpr quint64 kLineSpeed = 1958400;

/// The blocks before the first packet: a section of `program` with `comments`, and a port per name.
QByteArray encodeStart(const QString &program, const QStringList &ports, const QStringList &comments = {});

/// More bytes than this are no packet for the analysers that read the format.
inline constexpr int kLargestPacket = 256 * 1024 - 64;

/// Appends one packet of at most kLargestPacket bytes to `to`. A comment beyond 65535 bytes is cut at a character.
void appendPacket(QByteArray &to, const Packet &packet);

/// Reads a recording block by block, also one that other programs have edited or joined. Whatever the bytes are, it holds
/// one block of at most 16 MiB; blocks that it does not know and packets of other link types are passed over.
class Reader
{
public:
    /// `device` is open for reading, and stays so.
    explicit Reader(QIODevice &device) : m_device(device) {}

    /// The next packet, valid until the next call; false at the end, also where the bytes are cut or damaged: see
    /// trouble().
    bool next(PacketView &packet);

    /// Why the end was reached before the last byte, for people; empty for a whole recording.
    QString trouble() const { return m_trouble; }
    /// Names of the ports met so far; a packet's `port` counts in it.
    const QStringList &ports() const { return m_ports; }
    /// Comments of the sections met so far, the first 1000.
    const QStringList &comments() const { return m_comments; }
    /// Packets of other link types, passed over.
    quint64 foreignPackets() const { return m_foreign; }

private:
    struct Interface {
        bool ours = false;
        quint32 port = 0;
        quint8 resolution = 6; // as in the file: a power of ten, or of two with the highest bit set
        qint64 offset = 0;     // seconds
    };

    std::size_t fill(std::size_t wanted);
    std::optional<quint32> nextBlock(std::string_view &body);
    bool beginBlock(std::string_view header);
    bool beginSection(std::string_view header);
    void readSection(std::string_view body);
    void readInterface(std::string_view body);
    bool readPacket(std::string_view body, PacketView &packet);
    std::nullopt_t stop(const char *what);
    quint16 u16(std::string_view bytes, std::size_t at) const;
    quint32 u32(std::string_view bytes, std::size_t at) const;
    template <class Take> void forEachOption(std::string_view options, Take take) const;

    QIODevice &m_device;
    std::vector<char> m_buffer;
    std::size_t m_from = 0; // first byte of the buffer that has not been parsed
    std::size_t m_to = 0;
    qint64 m_position = 0; // in the file, of m_from
    bool m_inSection = false;
    bool m_swapped = false;
    std::vector<Interface> m_interfaces; // of this section
    QStringList m_ports;
    QStringList m_comments;
    QString m_trouble;
    quint64 m_foreign = 0;
};

} // namespace session
