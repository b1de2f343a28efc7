// SPDX-License-Identifier: MIT
// Results of the built-in self-tests.
#pragma once

#include "protocol/layout.h"

#include <QBitArray>
#include <QByteArray>

namespace protocol::bist {

enum ReportType : quint8 { ResultReport = 1 };

inline constexpr int kLbistCount = 8;
inline constexpr int kMbistCount = 96;
/// Memory cuts that have an indicator.
inline constexpr int kMbistShown = 92;

/// Two sets of flags of each kind; the second one is displayed.
struct Results {
    QBitArray lbistSet1 = QBitArray(kLbistCount);
    QBitArray lbistSet2 = QBitArray(kLbistCount);
    QBitArray mbistSet1 = QBitArray(kMbistCount);
    QBitArray mbistSet2 = QBitArray(kMbistCount);

    bool operator==(const Results &) const = default;
};

Results decodeResults(const QByteArray &payload);

// clang-format off
inline constexpr auto kResultsFields = rowsOf<Results>({
    {"lbist_set1", flagsFirst(1, 1), into<&Results::lbistSet1>, {.meaning = "logic partitions, first set"}},
    {"lbist_set2", flagsFirst(2, 1), into<&Results::lbistSet2>, {.meaning = "logic partitions, second set: the one shown"}},
    {"mbist_set1", flagsNumber(3, 12), into<&Results::mbistSet1>, {.meaning = "memory cuts, first set"}},
    {"mbist_set2", flagsNumber(15, 12), into<&Results::mbistSet2>, {.meaning = "memory cuts, second set: the one shown"}},
});
// clang-format on
constexpr const auto &layoutOf(const Results *)
{
    return kResultsFields;
}

} // namespace protocol::bist
