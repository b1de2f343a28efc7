// SPDX-License-Identifier: MIT
#include "protocol/vg5k.h"

#include "protocol/payload.h"

namespace protocol::vg5k {

Report decodeReport(const QByteArray &payload)
{
    const PayloadReader read(payload);
    if (read.isEmpty())
        return {};
    return {static_cast<qint8>(read.u8(0)), read.u8(1), read.size() > 1};
}

} // namespace protocol::vg5k
