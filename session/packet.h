// SPDX-License-Identifier: MIT
// One read or one write of the line exactly as it happened, or a note without bytes.
#pragma once

#include <QByteArray>
#include <QStringList>

#include <string_view>
#include <vector>

namespace session {

enum class Direction : quint8 {
    Sent = 0,     // from us to the board
    Received = 1, // from the board
    None = 2,     // a note
};

struct Packet {
    qint64 time = 0; // nanoseconds since 1970, UTC
    Direction direction = Direction::None;
    QByteArray bytes;
    QStringList comments;
    quint32 port = 0; // which port of the recording

    bool operator==(const Packet &) const = default;
};

/// A packet in the reader's memory: it lives as long as the bytes that are read.
struct PacketView {
    qint64 time = 0;
    Direction direction = Direction::None;
    std::string_view bytes;
    std::vector<std::string_view> comments; // UTF-8
    quint32 port = 0;

    Packet copied() const;
};

} // namespace session
