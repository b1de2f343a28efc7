// SPDX-License-Identifier: MIT
#include "protocol/swt.h"

#include <array>

namespace protocol::swt {

namespace {

constexpr std::array modeNames = {"Fixed Service Sequence", "Keyed Service Sequence", "Fixed Address Execution",
                                  "Incremental Address Execution"};

} // namespace

Status decodeStatus(const QByteArray &payload)
{
    return decode<Status>(payload);
}

QString modeName(quint8 mode)
{
    return mode < modeNames.size() ? QString::fromLatin1(modeNames[mode]) : QString();
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
