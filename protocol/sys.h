// SPDX-License-Identifier: MIT
// System status: operating mode, firmware version, restart notice.
#pragma once

#include "protocol/reset.h"
#include "protocol/vg5k.h"

#include <QByteArray>
#include <QString>

namespace protocol::sys {

enum ReportType : quint8 { OperatingModeReport = 1, FirmwareVersionReport = 4, RestartNoticeReport = 5 };

struct FirmwareVersion {
    float version = 0;
    quint16 year = 0;
    quint8 month = 0;
    quint8 day = 0;

    bool operator==(const FirmwareVersion &) const = default;
};

/// Mode number, byte 0.
quint8 decodeOperatingMode(const QByteArray &payload);
/// Bytes 0-3 version (float), 4-5 year, 6 month, 7 day; most significant byte first.
FirmwareVersion decodeFirmwareVersion(const QByteArray &payload);
/// True when the board says that it has restarted: byte 0 is 0x7F or byte 1 is 0xFE.
bool decodeRestartNotice(const QByteArray &payload);

/// "RESET", "TEST", ...; numbers beyond the table read "ERROR/UNKNOW".
QString modeName(quint8 number);
/// "Version:2.50  Release time:2020/12/31"
QString versionText(const FirmwareVersion &version);

/// Greeting, and the state of the fault collection unit.
inline constexpr QLatin1String kGetGreeting("get 0");
/// Operating mode and firmware version.
inline constexpr QLatin1String kGetMode("get 1");
inline constexpr QLatin1String kFunctionalReset("inject 1");
inline constexpr QLatin1String kDestructiveReset("inject 2");
/// The status poll, in the order sent.
inline constexpr QLatin1String kStatusPoll[] = {kGetMode, reset::kGetReasons, vg5k::kGetItems, kGetGreeting};

} // namespace protocol::sys
