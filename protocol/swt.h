// SPDX-License-Identifier: MIT
// Software watchdogs.
#pragma once

#include "protocol/latin1.h"
#include "protocol/layout.h"

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

Status decodeStatus(const QByteArray &payload);

/// "Fixed Service Sequence", ...; no text beyond mode 3.
QString modeName(quint8 mode);

// clang-format off
inline constexpr auto kStatusFields = rowsOf<Status>({
    {"selector", bits(0, 7, 6), into<&Status::selector>, {.meaning = "watchdog, 0 to 2; 3: the first, without a mode"}},
    {"mode", bits(0, 5, 4), into<&Status::mode>, {.meaning = "how it is to be served", .words = modeName}},
    {"on", bit(0, 3), into<&Status::on>, {.meaning = "the watchdog is on"}},
    {"window", u32be(1), into<&Status::window>,
     {.meaning = "start of the window", .unit = "counts", .divisor = kCountsPerMs, .perDivisor = "ms"}},
    {"timeout", u32be(5), into<&Status::timeout>,
     {.meaning = "time-out", .unit = "counts", .divisor = kCountsPerMs, .perDivisor = "ms"}},
});
// clang-format on
constexpr const auto &layoutOf(const Status *)
{
    return kStatusFields;
}

/// "swt 3 1" and "swt 4 1"; watchdog from 1, 4 for all.
QString switchCommand(int watchdog, bool on);
/// "swt 2 2 200": mode and core counted from 1, then the time-out.
QString configureCommand(int mode, int core, int timeout);
inline constexpr int kAll = 4;
inline constexpr QLatin1String kGetStatus = "get 2"_l1;
inline constexpr QLatin1String kDefault = "swt 5"_l1;
inline constexpr QLatin1String kInjectTimeout = "inject 3 1"_l1;
inline constexpr QLatin1String kInjectAccess = "inject 3 2"_l1;

} // namespace protocol::swt
