// SPDX-License-Identifier: MIT
#include "protocol/fccu.h"

#include "protocol/payload.h"

namespace protocol::fccu {

quint8 decodeState(const QByteArray &payload)
{
    return PayloadReader(payload).u8(0);
}

FaultEvent decodeFault(const QByteArray &payload)
{
    const PayloadReader read(payload);
    return {read.u8(0), read.f32be(1)};
}

} // namespace protocol::fccu
