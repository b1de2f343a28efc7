// SPDX-License-Identifier: MIT
#include "protocol/sys.h"

#include <algorithm>
#include <iterator>

namespace protocol::sys {

namespace {

constexpr const char *modeNames[] = {"RESET", "TEST", "SAFE",  "DRUN",     "RUN0",  "RUN1",
                                     "RUN2",  "RUN3", "HALT0", "reserved", "STOP0", "ERROR/UNKNOW"};

} // namespace

quint8 decodeOperatingMode(const QByteArray &payload)
{
    return decode<OperatingMode>(payload).mode;
}

FirmwareVersion decodeFirmwareVersion(const QByteArray &payload)
{
    return decode<FirmwareVersion>(payload);
}

bool decodeRestartNotice(const QByteArray &payload)
{
    return decode<RestartNotice>(payload).restarted;
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

QStringList describe(const FirmwareVersion &version)
{
    return {versionText(version)};
}

} // namespace protocol::sys
