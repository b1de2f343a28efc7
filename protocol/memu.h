// SPDX-License-Identifier: MIT
// Memory error management unit.
#pragma once

#include "protocol/latin1.h"
#include "protocol/layout.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace protocol::memu {

enum ReportType : quint8 { FaultRecordReport = 2 };

enum FaultType : quint8 {
    FlashCorrectable = 0,
    FlashUncorrectable = 1,
    PramCorrectable = 2,
    PramUncorrectable = 3,
    SramCorrectable = 4,
    SramUncorrectable = 5,
};

struct Fault {
    quint8 type = 0; // FaultType
    quint32 address = 0;

    bool operator==(const Fault &) const = default;
};

struct FaultRecord {
    std::vector<Fault> faults;

    bool operator==(const FaultRecord &) const = default;
};

std::vector<Fault> decodeFaults(const QByteArray &payload);

/// "memu flash correctable error"; the number for types beyond the table.
QString typeText(quint8 type);
/// Paragraphs of a fault record.
QStringList describe(const std::vector<Fault> &faults);
inline QStringList describe(const FaultRecord &record)
{
    return describe(record.faults);
}

// clang-format off
inline constexpr auto kFaultFields = rowsOf<Fault>({
    {"type", u8(0), into<&Fault::type>, {.meaning = "memory and severity", .words = typeText}},
    {"address", u32be(1), into<&Fault::address>, {.meaning = "address of the error", .hexadecimal = true}},
});
constexpr const auto &layoutOf(const Fault *) { return kFaultFields; }
inline constexpr auto kFaultRecordFields = rowsOf<FaultRecord>({
    {"count", u8(0), sizeOf<&FaultRecord::faults>, {.meaning = "number of faults"}},
    {"faults", counted(1, 5), listOf<&FaultRecord::faults>, {.meaning = "the faults"}},
});
// clang-format on
constexpr const auto &layoutOf(const FaultRecord *)
{
    return kFaultRecordFields;
}

/// Memories in the order of the injection commands.
enum class Memory { Flash = 0, Pram = 1, Sram = 2 };
/// "inject 9 1 100" to "inject 9 6 100 55"; `arguments` as typed.
QString injectCommand(Memory memory, bool doubleBit, const QString &arguments);
inline constexpr QLatin1String kInjectCache = "inject 9 7"_l1;
inline constexpr QLatin1String kReadFaults = "memu 1"_l1;
inline constexpr QLatin1String kClearFaults = "memu 2"_l1;
inline constexpr QLatin1String kClearStatus = "memu 3"_l1;

} // namespace protocol::memu
