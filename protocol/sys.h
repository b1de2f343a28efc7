// SPDX-License-Identifier: MIT
// System status: operating mode, firmware version, restart notice.
#pragma once

#include "protocol/latin1.h"
#include "protocol/layout.h"
#include "protocol/reset.h"
#include "protocol/vg5k.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace protocol::sys {

enum ReportType : quint8 { OperatingModeReport = 1, FirmwareVersionReport = 4, RestartNoticeReport = 5 };

struct OperatingMode {
    quint8 mode = 0;

    bool operator==(const OperatingMode &) const = default;
};

struct FirmwareVersion {
    float version = 0;
    quint16 year = 0;
    quint8 month = 0;
    quint8 day = 0;

    bool operator==(const FirmwareVersion &) const = default;
};

/// The board has restarted, where it says so.
struct RestartNotice {
    bool restarted = false;

    bool operator==(const RestartNotice &) const = default;
};

/// Mode number.
quint8 decodeOperatingMode(const QByteArray &payload);
FirmwareVersion decodeFirmwareVersion(const QByteArray &payload);
/// True when the board says that it has restarted.
bool decodeRestartNotice(const QByteArray &payload);

/// "RESET", "TEST", ...; numbers beyond the table read "ERROR/UNKNOW".
QString modeName(quint8 number);
/// "Version:2.50  Release time:2020/12/31"
QString versionText(const FirmwareVersion &version);
/// The version in one paragraph.
QStringList describe(const FirmwareVersion &version);

// clang-format off
inline constexpr auto kOperatingModeFields = rowsOf<OperatingMode>({
    {"mode", u8(0), into<&OperatingMode::mode>, {.meaning = "operating mode", .words = modeName}},
});
inline constexpr auto kFirmwareVersionFields = rowsOf<FirmwareVersion>({
    {"version", f32be(0), into<&FirmwareVersion::version>, {.meaning = "version of the firmware"}},
    {"year", u16be(4), into<&FirmwareVersion::year>, {.meaning = "release date"}},
    {"month", u8(6), into<&FirmwareVersion::month>},
    {"day", u8(7), into<&FirmwareVersion::day>},
});
inline constexpr auto kRestartNoticeFields = rowsOf<RestartNotice>({
    {"restarted", coded(Coding::Restart, 0, 2), into<&RestartNotice::restarted>, {.meaning = "the board has restarted"}},
});
// clang-format on
constexpr const auto &layoutOf(const OperatingMode *)
{
    return kOperatingModeFields;
}
constexpr const auto &layoutOf(const FirmwareVersion *)
{
    return kFirmwareVersionFields;
}
constexpr const auto &layoutOf(const RestartNotice *)
{
    return kRestartNoticeFields;
}

/// Greeting, and the state of the fault collection unit.
inline constexpr QLatin1String kGetGreeting = "get 0"_l1;
/// Operating mode and firmware version.
inline constexpr QLatin1String kGetMode = "get 1"_l1;
inline constexpr QLatin1String kFunctionalReset = "inject 1"_l1;
inline constexpr QLatin1String kDestructiveReset = "inject 2"_l1;
/// The status poll, in the order sent.
inline constexpr QLatin1String kStatusPoll[] = {kGetMode, reset::kGetReasons, vg5k::kGetItems, kGetGreeting};

} // namespace protocol::sys
