// SPDX-License-Identifier: MIT
// Interrupt monitor.
#pragma once

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

/// Byte 0 count, then eleven bytes a channel: core, index, mode, 2 interrupt, 3 latency, 3 timer; most significant byte
/// first.
std::vector<Channel> decodeChannels(const QByteArray &payload);

/// "K7a(1)" and "EOI"; the number for codes beyond the tables.
QString coreName(quint8 core);
QString modeName(quint8 mode);
/// Paragraphs of a fault record.
QStringList describe(const std::vector<Channel> &faults);

/// "intcm EOI 1 2 20000 301": latency and interrupt as typed.
QString configureCommand(const QString &mode, int core, int index, const QString &latency, const QString &irq);
/// "intcm 4 1 2"
QString closeCommand(int core, int index);
/// "inject 8 2" for core 1
QString injectCommand(int core);
inline constexpr QLatin1String kGetStatus("get 7");
inline constexpr QLatin1String kDefault("intcm 1");
inline constexpr QLatin1String kReadFaults("intcm 2");
inline constexpr QLatin1String kClearFaults("intcm 3");

} // namespace protocol::intcm
