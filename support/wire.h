// SPDX-License-Identifier: MIT
// Frames as the wire carries them, written out by hand and not by the program's encoder.
#pragma once

#include <QByteArray>

namespace wire {

inline QByteArray frame(int module, int type, const QByteArray &payload)
{
    return QByteArray::fromHex("A5C30000") + static_cast<char>(module) + static_cast<char>(type)
        + static_cast<char>(payload.size() >> 8) + static_cast<char>(payload.size()) + payload
        + QByteArray::fromHex("0000D4B2");
}

} // namespace wire
