// SPDX-License-Identifier: MIT
// Signal processing accelerator.
#pragma once

#include "protocol/latin1.h"
#include "protocol/layout.h"

#include <QByteArray>
#include <QStringList>

#include <vector>

namespace protocol::spt {

enum ReportType : quint8 { FrameCountReport = 1, FaultRecordReport = 2 };

struct FrameCount {
    quint32 count = 0;

    bool operator==(const FrameCount &) const = default;
};

struct Fault {
    quint32 code = 0;

    bool operator==(const Fault &) const = default;
};

struct FaultRecord {
    quint8 count = 0;          // as sent
    std::vector<Fault> faults; // one for each complete group of four bytes

    bool operator==(const FaultRecord &) const = default;
};

quint32 decodeFrameCount(const QByteArray &payload);
FaultRecord decodeFaultRecord(const QByteArray &payload);

/// Paragraphs of a fault record.
QStringList describe(const FaultRecord &record);

// clang-format off
inline constexpr auto kFrameCountFields = rowsOf<FrameCount>({
    {"count", u32be(0), into<&FrameCount::count>, {.meaning = "radar frames processed", .unit = "frames"}},
});
inline constexpr auto kFaultFields = rowsOf<Fault>({
    {"code", u32be(0), into<&Fault::code>, {.meaning = "fault code of the accelerator"}},
});
constexpr const auto &layoutOf(const Fault *) { return kFaultFields; }
inline constexpr auto kFaultRecordFields = rowsOf<FaultRecord>({
    {"count", u8(0), into<&FaultRecord::count>, {.meaning = "number of faults"}},
    {"faults", whole(1, 4), listOf<&FaultRecord::faults>, {.meaning = "the faults"}},
});
// clang-format on
constexpr const auto &layoutOf(const FrameCount *)
{
    return kFrameCountFields;
}
constexpr const auto &layoutOf(const FaultRecord *)
{
    return kFaultRecordFields;
}

inline constexpr QLatin1String kInjectOram = "inject 10 1"_l1;
inline constexpr QLatin1String kInjectTram = "inject 10 2"_l1;
inline constexpr QLatin1String kReadFaults = "spt 1"_l1;
inline constexpr QLatin1String kClearFaults = "spt 2"_l1;

} // namespace protocol::spt
