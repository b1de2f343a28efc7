// SPDX-License-Identifier: MIT
// Signal processing accelerator.
#pragma once

#include <QByteArray>
#include <QStringList>

#include <vector>

namespace protocol::spt {

enum ReportType : quint8 { FrameCountReport = 1, FaultRecordReport = 2 };

struct FaultRecord {
    quint8 count = 0;           // as sent
    std::vector<quint32> codes; // one for each complete group of four bytes

    bool operator==(const FaultRecord &) const = default;
};

/// Bytes 0-3, most significant byte first.
quint32 decodeFrameCount(const QByteArray &payload);
/// Byte 0 count, then four bytes a code, most significant byte first.
FaultRecord decodeFaultRecord(const QByteArray &payload);

/// Paragraphs of a fault record.
QStringList describe(const FaultRecord &record);

inline constexpr QLatin1String kInjectOram("inject 10 1");
inline constexpr QLatin1String kInjectTram("inject 10 2");
inline constexpr QLatin1String kReadFaults("spt 1");
inline constexpr QLatin1String kClearFaults("spt 2");

} // namespace protocol::spt
