// SPDX-License-Identifier: MIT
// Memory error management unit.
#pragma once

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

/// Byte 0 count, then five bytes a fault: type, address with its most significant byte first.
std::vector<Fault> decodeFaults(const QByteArray &payload);

/// "memu flash correctable error"; the number for types beyond the table.
QString typeText(quint8 type);
/// Paragraphs of a fault record.
QStringList describe(const std::vector<Fault> &faults);

/// Memories in the order of the injection commands.
enum class Memory { Flash = 0, Pram = 1, Sram = 2 };
/// "inject 9 1 100" to "inject 9 6 100 55"; `arguments` as typed.
QString injectCommand(Memory memory, bool doubleBit, const QString &arguments);
inline constexpr QLatin1String kInjectCache("inject 9 7");
inline constexpr QLatin1String kReadFaults("memu 1");
inline constexpr QLatin1String kClearFaults("memu 2");
inline constexpr QLatin1String kClearStatus("memu 3");

} // namespace protocol::memu
