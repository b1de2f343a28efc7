// SPDX-License-Identifier: MIT
// Interrupt monitor.
#pragma once

#include "protocol/latin1.h"
#include "protocol/layout.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace protocol::intcm {

enum ReportType : quint8 { StatusReport = 1, FaultRecordReport = 2 };

inline constexpr int kCoreCount = 3;
inline constexpr int kMonitorsPerCore = 3;
inline constexpr int kMonitorCount = kCoreCount * kMonitorsPerCore;
inline constexpr quint32 kCountsPerUs = 120;

/// One monitor channel; the same record in both reports.
struct Channel {
    quint8 core = 0;
    quint8 index = 0;
    quint8 mode = 0;
    quint16 irq = 0;
    quint32 latency = 0; // counts of a 120 MHz clock
    quint32 timer = 0;   // counts of a 120 MHz clock

    bool operator==(const Channel &) const = default;
};

struct Status {
    std::vector<Channel> channels;

    bool operator==(const Status &) const = default;
};

struct FaultRecord {
    std::vector<Channel> faults;

    bool operator==(const FaultRecord &) const = default;
};

std::vector<Channel> decodeChannels(const QByteArray &payload);

/// "K7a(1)" and "EOI"; the number for codes beyond the tables.
QString coreName(quint8 core);
QString modeName(quint8 mode);
/// Paragraphs of a fault record.
QStringList describe(const std::vector<Channel> &faults);
inline QStringList describe(const FaultRecord &record)
{
    return describe(record.faults);
}

// clang-format off
inline constexpr auto kChannelFields = rowsOf<Channel>({
    {"core", u8(0), into<&Channel::core>, {.meaning = "core", .words = coreName}},
    {"index", u8(1), into<&Channel::index>, {.meaning = "monitor of that core, 0 to 2"}},
    {"mode", u8(2), into<&Channel::mode>, {.meaning = "what ends the measurement", .words = modeName}},
    {"irq", u16be(3), into<&Channel::irq>, {.meaning = "interrupt watched"}},
    {"latency", u24be(5), into<&Channel::latency>,
     {.meaning = "allowed latency; 0: the channel is off", .unit = "counts", .divisor = kCountsPerUs, .perDivisor = "us"}},
    {"timer", u24be(8), into<&Channel::timer>,
     {.meaning = "measured time", .unit = "counts", .divisor = kCountsPerUs, .perDivisor = "us"}},
});
constexpr const auto &layoutOf(const Channel *) { return kChannelFields; }
inline constexpr auto kStatusFields = rowsOf<Status>({
    {"count", u8(0), sizeOf<&Status::channels>, {.meaning = "number of channels"}},
    {"channels", counted(1, 11), listOf<&Status::channels>, {.meaning = "the channels: three of K4, of K7a, of K7b"}},
});
inline constexpr auto kFaultRecordFields = rowsOf<FaultRecord>({
    {"count", u8(0), sizeOf<&FaultRecord::faults>, {.meaning = "number of faults"}},
    {"faults", counted(1, 11), listOf<&FaultRecord::faults>, {.meaning = "the channels that have found a fault"}},
});
// clang-format on
constexpr const auto &layoutOf(const Status *)
{
    return kStatusFields;
}
constexpr const auto &layoutOf(const FaultRecord *)
{
    return kFaultRecordFields;
}

/// "intcm EOI 1 2 20000 301": latency and interrupt as typed.
QString configureCommand(const QString &mode, int core, int index, const QString &latency, const QString &irq);
/// "intcm 4 1 2"
QString closeCommand(int core, int index);
/// "inject 8 2" for core 1
QString injectCommand(int core);
inline constexpr QLatin1String kGetStatus = "get 7"_l1;
inline constexpr QLatin1String kDefault = "intcm 1"_l1;
inline constexpr QLatin1String kReadFaults = "intcm 2"_l1;
inline constexpr QLatin1String kClearFaults = "intcm 3"_l1;

} // namespace protocol::intcm
