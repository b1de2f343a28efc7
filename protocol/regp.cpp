// SPDX-License-Identifier: MIT
#include "protocol/regp.h"

#include "protocol/payload.h"

namespace protocol::regp {

Status decodeStatus(const QByteArray &payload)
{
    const PayloadReader read(payload);
    return {read.u8(0) == 1, read.u32le(1) != 0, read.u32le(5), read.u32le(9)};
}

QString writeCommand(Write write, const QString &value)
{
    return QStringLiteral("regP %1 ").arg(static_cast<int>(write)) + value;
}

} // namespace protocol::regp
