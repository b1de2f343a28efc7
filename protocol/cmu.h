// SPDX-License-Identifier: MIT
// Clock monitor units: reports and commands.
#pragma once

#include "protocol/latin1.h"
#include "protocol/layout.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace protocol::cmu {

enum ReportType : quint8 { TextReport = 0, MonitorReport = 1, FaultRecordReport = 2, ClockReport = 4 };

inline constexpr int kMonitorCount = 13;
inline constexpr int kHzPerMHz = 1000000;

/// State of one monitor; frequencies in MHz.
struct CmuRecord {
    quint8 id = 0;
    bool spiLost = false;
    bool xoscLost = false;
    bool enabled = false;
    quint8 value = 0;
    quint8 upper = 0;
    quint8 lower = 0;

    bool operator==(const CmuRecord &) const = default;
};

/// A message in place of a fault record.
struct Text {
    QString text;

    bool operator==(const Text &) const = default;
};

struct ClockStatus {
    bool sdpll = false;
    bool pll1 = false;
    bool pll0 = false;
    bool xosc = false;
    bool irc = false;
    quint8 source = 0; // system clock source code
    float ircMHz = 0;  // measurement of the internal oscillator

    bool operator==(const ClockStatus &) const = default;
};

enum FaultKind : quint8 { TooHigh = 0, TooLow = 1, ClockLoss = 2 };

struct FaultEntry {
    quint8 monitor = 0;
    quint8 kind = 0; // FaultKind; other values have no description

    bool operator==(const FaultEntry &) const = default;
};

struct FaultRecord {
    quint8 count = 0;
    std::vector<FaultEntry> entries;

    bool operator==(const FaultRecord &) const = default;
};

CmuRecord decodeMonitor(const QByteArray &payload);
ClockStatus decodeClock(const QByteArray &payload);
/// The record that a payload of `length` bytes holds; bytes that it does not have are 0.
FaultRecord decodeFaultRecord(const QByteArray &payload, quint32 length);

/// "PLL0_PHI_CLK"; codes without a source read "Error".
QString clockSourceName(quint8 code);
/// "too low", ...
QString kindName(quint8 kind);
/// Paragraphs of a fault record.
QStringList describe(const FaultRecord &record);

// clang-format off
inline constexpr auto kTextFields = rowsOf<Text>({
    {"text", coded(Coding::Utf8), into<&Text::text>, {.meaning = "shown in place of the fault record"}},
});
inline constexpr auto kCmuRecordFields = rowsOf<CmuRecord>({
    {"id", bits(0, 7, 4), into<&CmuRecord::id>, {.meaning = "monitor, 0 to 12"}},
    {"spi_lost", bit(0, 2), into<&CmuRecord::spiLost>, {.meaning = "the SPI clock is lost; told by CMU8"}},
    {"xosc_lost", bit(0, 1), into<&CmuRecord::xoscLost>, {.meaning = "the crystal's clock is lost; told by CMU0"}},
    {"enabled", bit(0, 0), into<&CmuRecord::enabled>, {.meaning = "the monitor is on"}},
    {"value", u8(1), into<&CmuRecord::value>, {.meaning = "measured frequency", .unit = "MHz"}},
    {"upper", u8(2), into<&CmuRecord::upper>, {.meaning = "upper limit", .unit = "MHz"}},
    {"lower", u8(3), into<&CmuRecord::lower>, {.meaning = "lower limit", .unit = "MHz"}},
});
inline constexpr auto kFaultEntryFields = rowsOf<FaultEntry>({
    {"monitor", bits(0, 7, 4), into<&FaultEntry::monitor>, {.meaning = "monitor that has found the fault"}},
    {"kind", bits(0, 3, 0), into<&FaultEntry::kind>, {.meaning = "what is wrong", .words = kindName}},
});
constexpr const auto &layoutOf(const FaultEntry *) { return kFaultEntryFields; }
inline constexpr auto kFaultRecordFields = rowsOf<FaultRecord>({
    {"count", u8(0), into<&FaultRecord::count>, {.meaning = "number of faults"}},
    {"faults", whole(1, 1), listOf<&FaultRecord::entries>, {.meaning = "the faults"}},
});
inline constexpr auto kClockStatusFields = rowsOf<ClockStatus>({
    {"sdpll", bit(0, 7), into<&ClockStatus::sdpll>, {.meaning = "SDPLL is healthy"}},
    {"pll1", bit(0, 6), into<&ClockStatus::pll1>, {.meaning = "PLL1 is healthy"}},
    {"pll0", bit(0, 5), into<&ClockStatus::pll0>, {.meaning = "PLL0 is healthy"}},
    {"xosc", bit(0, 4), into<&ClockStatus::xosc>, {.meaning = "the crystal oscillator is healthy"}},
    {"irc", bit(0, 3), into<&ClockStatus::irc>, {.meaning = "the internal oscillator is healthy"}},
    {"source", bits(0, 2, 0), into<&ClockStatus::source>, {.meaning = "system clock source", .words = clockSourceName}},
    {"irc_frequency", u24be(1), divided<&ClockStatus::ircMHz, kHzPerMHz>,
     {.meaning = "measured frequency of the internal oscillator; sent in Hz", .unit = "MHz", .scale = kHzPerMHz}},
});
// clang-format on
constexpr const auto &layoutOf(const Text *)
{
    return kTextFields;
}
constexpr const auto &layoutOf(const CmuRecord *)
{
    return kCmuRecordFields;
}
constexpr const auto &layoutOf(const FaultRecord *)
{
    return kFaultRecordFields;
}
constexpr const auto &layoutOf(const ClockStatus *)
{
    return kClockStatusFields;
}

/// "cmu 13 4" and "cmu 14 4"
QString enableCommand(int monitor, bool on);
/// "cmu 3 170 150": the selector's text, then upper and lower limit.
QString limitCommand(const QString &selected, int upper, int lower);
/// "inject 5 1"
QString injectCommand(int fault);
inline constexpr QLatin1String kGetClock = "get 3"_l1;
inline constexpr QLatin1String kGetMonitors = "get 4"_l1;
inline constexpr QLatin1String kDefault = "cmu 15"_l1;
inline constexpr QLatin1String kReadFaults = "cmu 16"_l1;
inline constexpr QLatin1String kClearFaults = "cmu 17"_l1;

} // namespace protocol::cmu
