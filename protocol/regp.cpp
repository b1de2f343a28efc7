// SPDX-License-Identifier: MIT
#include "protocol/regp.h"

namespace protocol::regp {

Status decodeStatus(const QByteArray &payload)
{
    return decode<Status>(payload);
}

QString writeCommand(Write write, const QString &value)
{
    return QStringLiteral("regP %1 ").arg(static_cast<int>(write)) + value;
}

} // namespace protocol::regp
