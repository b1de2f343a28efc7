// SPDX-License-Identifier: MIT
// Crossbar integrity checkers.
#pragma once

#include "protocol/latin1.h"
#include "protocol/layout.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace protocol::xbic {

enum ReportType : quint8 { EnableReport = 1, FaultRecordReport = 2 };

inline constexpr int kCheckerCount = 5;
inline constexpr quint8 kCheckerMask = 0x1F;

struct Enables {
    quint8 mask = 0; // bit n is checker n's enable

    bool operator==(const Enables &) const = default;
};

struct Fault {
    quint8 index = 0; // not shown
    quint8 master = 0;
    quint8 slave = 0;
    quint8 syndrome = 0;
    quint32 address = 0;

    bool operator==(const Fault &) const = default;
};

struct FaultRecord {
    std::vector<Fault> faults;

    bool operator==(const FaultRecord &) const = default;
};

/// The mask.
quint8 decodeEnables(const QByteArray &payload);
std::vector<Fault> decodeFaults(const QByteArray &payload);

/// Paragraphs of a fault record.
QStringList describe(const std::vector<Fault> &faults);
inline QStringList describe(const FaultRecord &record)
{
    return describe(record.faults);
}
/// "XBIC3"
QString checkerName(quint8 checker);

// clang-format off
inline constexpr auto kEnablesFields = rowsOf<Enables>({
    {"mask", bits(0, 4, 0), into<&Enables::mask>, {.meaning = "a bit per checker that is on"}},
    {"enabled", flagsNumber(0, 1, 5), partOf<&Enables::mask>, {.meaning = "the checkers that are on", .words = checkerName}},
});
inline constexpr auto kFaultFields = rowsOf<Fault>({
    {"index", u8(0), into<&Fault::index>, {.meaning = "kept, shown nowhere"}},
    {"master", u8(1), into<&Fault::master>, {.meaning = "master port"}},
    {"slave", u8(2), into<&Fault::slave>, {.meaning = "slave port"}},
    {"syndrome", u8(3), into<&Fault::syndrome>, {.meaning = "syndrome of the check"}},
    {"address", u32le(4), into<&Fault::address>, {.meaning = "address of the access", .hexadecimal = true}},
});
constexpr const auto &layoutOf(const Fault *) { return kFaultFields; }
inline constexpr auto kFaultRecordFields = rowsOf<FaultRecord>({
    {"count", u8(0), sizeOf<&FaultRecord::faults>, {.meaning = "number of faults"}},
    {"faults", counted(1, 8), listOf<&FaultRecord::faults>, {.meaning = "the faults"}},
});
// clang-format on
constexpr const auto &layoutOf(const Enables *)
{
    return kEnablesFields;
}
constexpr const auto &layoutOf(const FaultRecord *)
{
    return kFaultRecordFields;
}

/// "xbic 1 3" and "xbic 2 3"
QString enableCommand(int checker, bool on);
/// "inject 7 4" for checker 3
QString injectCommand(int checker);
inline constexpr QLatin1String kGetEnables = "get 11"_l1;
inline constexpr QLatin1String kDefault = "xbic 3"_l1;
inline constexpr QLatin1String kReadFaults = "xbic 4"_l1;
inline constexpr QLatin1String kClearFaults = "xbic 5"_l1;

} // namespace protocol::xbic
