// SPDX-License-Identifier: MIT
// Software watchdogs.
#pragma once

#include <QByteArray>
#include <QString>

namespace protocol::swt {

enum ReportType : quint8 { StatusReport = 1 };

inline constexpr int kWatchdogCount = 3;
inline constexpr quint32 kCountsPerMs = 16000;

struct Status {
    quint8 selector = 0;
    quint8 mode = 0;
    bool on = false;
    quint32 window = 0;  // counts of a 16 MHz clock
    quint32 timeout = 0; // counts of a 16 MHz clock

    bool operator==(const Status &) const = default;
};

/// Byte 0: 7-6 selector, 5-4 mode, 3 on; 1-4 window, 5-8 time-out, most significant byte first.
Status decodeStatus(const QByteArray &payload);

/// "Fixed Service Sequence", ...; mode 0 to 3.
QString modeName(quint8 mode);

/// "swt 3 1" and "swt 4 1"; watchdog from 1, 4 for all.
QString switchCommand(int watchdog, bool on);
/// "swt 2 2 200": mode and core counted from 1, then the time-out.
QString configureCommand(int mode, int core, int timeout);
inline constexpr int kAll = 4;
inline constexpr QLatin1String kGetStatus("get 2");
inline constexpr QLatin1String kDefault("swt 5");
inline constexpr QLatin1String kInjectTimeout("inject 3 1");
inline constexpr QLatin1String kInjectAccess("inject 3 2");

} // namespace protocol::swt
