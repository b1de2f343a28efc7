// SPDX-License-Identifier: MIT
// System memory protection units.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>
#include <vector>

namespace protocol::smpu {

enum ReportType : quint8 { RegionReport = 1, FaultRecordReport = 2 };

inline constexpr int kCoreCount = 3;

/// Rights of a core: bit 1 read, bit 0 write.
enum Rights : quint8 { NoAccess = 0, WriteOnly = 1, ReadOnly = 2, ReadWrite = 3 };

struct Region {
    quint8 selector = 0;
    bool unitOn = false;
    bool valid = false;
    std::array<quint8, kCoreCount> rights = {}; // Rights of cores 0 to 2
    bool cacheInhibit = false;
    quint32 start = 0;
    quint32 end = 0;

    bool operator==(const Region &) const = default;
};

struct Fault {
    quint8 master = 0;
    bool write = false;
    quint32 address = 0;

    bool operator==(const Fault &) const = default;
};

/// Byte 0: 7-4 selector, 3 unit on, 2 valid, 1-0 core 0; 1: 7-6 core 1, 5-4 core 2, 3 cache inhibit; 2-5 start and 6-9
/// end as two 16-bit halves, the low one first, each with its most significant byte first.
Region decodeRegion(const QByteArray &payload);
/// Five bytes a fault: 4 write, 3-0 master; address with its least significant byte first. Trailing bytes are left out.
std::vector<Fault> decodeFaults(const QByteArray &payload);

/// "r:OK  w:NO"
QString rightsText(quint8 rights);
/// Paragraphs of a fault record.
QStringList describe(const std::vector<Fault> &faults);

/// "inject 6 1" to "inject 6 6"
QString injectCommand(int fault);
inline constexpr QLatin1String kGetRegions("get 5");
inline constexpr QLatin1String kAllOn("smpu 1");
inline constexpr QLatin1String kAllOff("smpu 2");
inline constexpr QLatin1String kDefault("smpu 3");
inline constexpr QLatin1String kReadFaults("smpu 4");
inline constexpr QLatin1String kClearFaults("smpu 5");

} // namespace protocol::smpu
