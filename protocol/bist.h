// SPDX-License-Identifier: MIT
// Results of the built-in self-tests.
#pragma once

#include <QBitArray>
#include <QByteArray>

namespace protocol::bist {

enum ReportType : quint8 { ResultReport = 1 };

inline constexpr int kLbistCount = 8;
inline constexpr int kMbistCount = 96;
/// Memory cuts that have an indicator.
inline constexpr int kMbistShown = 92;
inline constexpr int kPayloadSize = 27;

/// Two sets of flags of each kind; the second one is displayed.
struct Results {
    QBitArray lbistSet1, lbistSet2; // kLbistCount flags
    QBitArray mbistSet1, mbistSet2; // kMbistCount flags

    bool operator==(const Results &) const = default;
};

/// Bytes 1 and 2: logic partitions, most significant bit first. Bytes 3-14 and 15-26: memory cuts, each group one
/// 96-bit number with the most significant byte first, cut 0 its least significant bit.
Results decodeResults(const QByteArray &payload);

} // namespace protocol::bist
