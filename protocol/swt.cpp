// SPDX-License-Identifier: MIT
#include "protocol/swt.h"

#include "protocol/payload.h"

#include <array>

namespace protocol::swt {

namespace {

constexpr std::array modeNames = {"Fixed Service Sequence", "Keyed Service Sequence", "Fixed Address Execution",
                                  "Incremental Address Execution"};

} // namespace

Status decodeStatus(const QByteArray &payload)
{
    const PayloadReader read(payload);
    const unsigned flags = read.u8(0);
    return {static_cast<quint8>(flags >> 6), static_cast<quint8>(flags >> 4 & 3), (flags & 8) != 0, read.u32be(1),
            read.u32be(5)};
}

QString modeName(quint8 mode)
{
    return QString::fromLatin1(modeNames.at(mode));
}

QString switchCommand(int watchdog, bool on)
{
    return QStringLiteral("swt %1 %2").arg(on ? 3 : 4).arg(watchdog);
}

QString configureCommand(int mode, int core, int timeout)
{
    return QStringLiteral("swt %1 %2 %3").arg(mode + 1).arg(core + 1).arg(timeout);
}

} // namespace protocol::swt
