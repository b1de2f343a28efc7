// SPDX-License-Identifier: MIT
// Clock monitor units: reports and commands.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace protocol::cmu {

enum ReportType : quint8 { TextReport = 0, MonitorReport = 1, FaultRecordReport = 2, ClockReport = 4 };

inline constexpr int kMonitorCount = 13;

/// State of one monitor; frequencies in MHz.
struct Monitor {
    quint8 id = 0;
    bool spiLost = false;
    bool xoscLost = false;
    bool enabled = false;
    quint8 value = 0;
    quint8 upper = 0;
    quint8 lower = 0;

    bool operator==(const Monitor &) const = default;
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

/// Byte 0: 7-4 monitor, 2 SPI clock lost, 1 crystal lost, 0 enabled; 1 frequency, 2 upper and 3 lower limit.
Monitor decodeMonitor(const QByteArray &payload);
/// Byte 0: 7 SDPLL, 6 PLL1, 5 PLL0, 4 XOSC, 3 IRC healthy, 2-0 source; 1-3 internal oscillator in Hz.
ClockStatus decodeClock(const QByteArray &payload);
/// Byte 0 count; then a byte an entry: high nibble monitor, low nibble kind. `length` is the announced one.
FaultRecord decodeFaultRecord(const QByteArray &payload, quint32 length);

/// "PLL0_PHI_CLK"; codes without a source read "Error".
QString clockSourceName(quint8 code);
/// Paragraphs of a fault record.
QStringList describe(const FaultRecord &record);

/// "cmu 13 4" and "cmu 14 4"
QString enableCommand(int monitor, bool on);
/// "cmu 3 170 150": the selector's text, then upper and lower limit.
QString limitCommand(const QString &selected, int upper, int lower);
/// "inject 5 1"
QString injectCommand(int fault);
inline constexpr QLatin1String kGetClock("get 3");
inline constexpr QLatin1String kGetMonitors("get 4");
inline constexpr QLatin1String kDefault("cmu 15");
inline constexpr QLatin1String kReadFaults("cmu 16");
inline constexpr QLatin1String kClearFaults("cmu 17");

} // namespace protocol::cmu
