// SPDX-License-Identifier: MIT
#include "protocol/sys.h"

#include "protocol/payload.h"

#include <algorithm>
#include <iterator>

namespace protocol::sys {

namespace {

constexpr const char *modeNames[] = {"RESET", "TEST", "SAFE",  "DRUN",     "RUN0",  "RUN1",
                                     "RUN2",  "RUN3", "HALT0", "reserved", "STOP0", "ERROR/UNKNOW"};

} // namespace

quint8 decodeOperatingMode(const QByteArray &payload)
{
    return PayloadReader(payload).u8(0);
}

FirmwareVersion decodeFirmwareVersion(const QByteArray &payload)
{
    const PayloadReader read(payload);
    return {read.f32be(0), read.u16be(4), read.u8(6), read.u8(7)};
}

bool decodeRestartNotice(const QByteArray &payload)
{
    const PayloadReader read(payload);
    return read.u8(0) == 0x7F || read.u8(1) == 0xFE;
}

QString modeName(quint8 number)
{
    constexpr std::size_t last = std::size(modeNames) - 1;
    return QString::fromLatin1(modeNames[std::min<std::size_t>(number, last)]);
}

QString versionText(const FirmwareVersion &version)
{
    return QStringLiteral("Version:%1  Release time:%2/%3/%4")
        .arg(static_cast<double>(version.version), 0, 'f', 2)
        .arg(version.year)
        .arg(version.month)
        .arg(version.day);
}

} // namespace protocol::sys
