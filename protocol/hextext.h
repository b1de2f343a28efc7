// SPDX-License-Identifier: MIT
// Hexadecimal numbers as texts.
#pragma once

#include <QString>

namespace protocol {

/// "0x0000A0FF": upper case, at least `digits` of them.
inline QString hexText(quint32 value, int digits)
{
    return QStringLiteral("0x") + QStringLiteral("%1").arg(value, digits, 16, QLatin1Char('0')).toUpper();
}

} // namespace protocol
