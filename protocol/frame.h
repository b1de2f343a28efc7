// SPDX-License-Identifier: MIT
// One response frame: its layout on the wire, the record it is extracted into, and its encoding.
//
//   offset 0   A5 C3       sync
//          2   tag         16 bits, read by nobody
//          4   module      protocol::ModuleId
//          5   type        which report of that module
//          6   N           payload length, 16 bits
//          8   payload     N bytes
//        8+N   2 bytes     skipped, never checked
//       10+N   D4 B2       end
//
// Multi-byte fields are big-endian.
#pragma once

#include "protocol/moduleid.h"

#include <QByteArray>
#include <QList>
#include <QMetaType>

#include <cstdint>

struct frameData {
    uint8_t moduleId = 0;
    uint8_t dataType = 0;
    uint16_t frameTag = 0;
    uint16_t dataLength = 0;
    QByteArray data;
    bool handled = false;

    friend bool operator==(const frameData &a, const frameData &b)
    {
        return a.moduleId == b.moduleId && a.dataType == b.dataType && a.frameTag == b.frameTag
            && a.dataLength == b.dataLength && a.data == b.data && a.handled == b.handled;
    }
};
Q_DECLARE_METATYPE(frameData)

namespace protocol {

inline constexpr char kSync0 = '\xA5';
inline constexpr char kSync1 = '\xC3';
inline constexpr char kEnd0 = '\xD4';
inline constexpr char kEnd1 = '\xB2';
inline constexpr int kHeaderSize = 8;
inline constexpr int kTrailerSize = 4;
inline constexpr int kFrameOverhead = kHeaderSize + kTrailerSize;
inline constexpr int kMaxPayloadSize = 65535;

/// The frame as sent by a board. A payload is cut at kMaxPayloadSize.
QByteArray encodeFrame(ModuleId module, quint8 type, const QByteArray &payload, quint16 tag = 0);

} // namespace protocol
