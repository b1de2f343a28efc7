// SPDX-License-Identifier: MIT
// System memory protection units.
#pragma once

#include "protocol/latin1.h"
#include "protocol/layout.h"

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

struct FaultRecord {
    std::vector<Fault> faults;

    bool operator==(const FaultRecord &) const = default;
};

Region decodeRegion(const QByteArray &payload);
/// Whole records alone; trailing bytes are left out.
std::vector<Fault> decodeFaults(const QByteArray &payload);

/// "r:OK  w:NO"
QString rightsText(quint8 rights);
/// Paragraphs of a fault record.
QStringList describe(const std::vector<Fault> &faults);
inline QStringList describe(const FaultRecord &record)
{
    return describe(record.faults);
}

// clang-format off
inline constexpr auto kRegionFields = rowsOf<Region>({
    {"selector", bits(0, 7, 4), into<&Region::selector>, {.meaning = "region: 7 of SMPU0; 0, 1, 4 and 15 of SMPU1"}},
    {"unit_on", bit(0, 3), into<&Region::unitOn>, {.meaning = "the region's unit is on"}},
    {"valid", bit(0, 2), into<&Region::valid>, {.meaning = "the region is valid"}},
    {"core0_rights", bits(0, 1, 0), element<&Region::rights, 0>, {.meaning = "rights of K4", .words = rightsText}},
    {"core1_rights", bits(1, 7, 6), element<&Region::rights, 1>, {.meaning = "rights of K7a", .words = rightsText}},
    {"core2_rights", bits(1, 5, 4), element<&Region::rights, 2>, {.meaning = "rights of K7b", .words = rightsText}},
    {"cache_inhibit", bit(1, 3), into<&Region::cacheInhibit>, {.meaning = "accesses go past the cache"}},
    {"start", halves(2), into<&Region::start>, {.meaning = "first address", .hexadecimal = true}},
    {"end", halves(6), into<&Region::end>, {.meaning = "last address", .hexadecimal = true}},
});
inline constexpr auto kFaultFields = rowsOf<Fault>({
    {"master", bits(0, 3, 0), into<&Fault::master>, {.meaning = "bus master"}},
    {"write", bit(0, 4), into<&Fault::write>, {.meaning = "a write, not a read"}},
    {"address", u32le(1), into<&Fault::address>, {.meaning = "address of the access", .hexadecimal = true}},
});
constexpr const auto &layoutOf(const Fault *) { return kFaultFields; }
inline constexpr auto kFaultRecordFields = rowsOf<FaultRecord>({
    {"faults", whole(0, 5), listOf<&FaultRecord::faults>, {.meaning = "the faults"}},
});
// clang-format on
constexpr const auto &layoutOf(const Region *)
{
    return kRegionFields;
}
constexpr const auto &layoutOf(const FaultRecord *)
{
    return kFaultRecordFields;
}

/// "inject 6 1" to "inject 6 6"
QString injectCommand(int fault);
inline constexpr QLatin1String kGetRegions = "get 5"_l1;
inline constexpr QLatin1String kAllOn = "smpu 1"_l1;
inline constexpr QLatin1String kAllOff = "smpu 2"_l1;
inline constexpr QLatin1String kDefault = "smpu 3"_l1;
inline constexpr QLatin1String kReadFaults = "smpu 4"_l1;
inline constexpr QLatin1String kClearFaults = "smpu 5"_l1;

} // namespace protocol::smpu
