// SPDX-License-Identifier: MIT
#include "protocol/frame.h"

#include "protocol/payload.h"

namespace protocol {

namespace {

constexpr unsigned kSyncWord = 0xA5C3;
constexpr unsigned kEndWord = 0xD4B2;

} // namespace

QByteArray encodeFrame(ModuleId module, quint8 type, const QByteArray &payload, quint16 tag)
{
    const QByteArray body = payload.left(kMaxPayloadSize);
    PayloadWriter frame;
    frame.u16be(kSyncWord).u16be(tag).u8(static_cast<quint8>(module)).u8(type);
    frame.u16be(static_cast<quint16>(body.size())).bytes(body).u16be(0).u16be(kEndWord);
    return frame.take();
}

} // namespace protocol
