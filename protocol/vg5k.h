// SPDX-License-Identifier: MIT
// The external safety power chip.
#pragma once

#include "protocol/latin1.h"
#include "protocol/layout.h"

#include <QByteArray>
#include <QString>

namespace protocol::vg5k {

enum ReportType : quint8 { ItemReport = 1 };

enum Item : qint8 { Regulators = 0, FailSafeState = 1, DebugMode = 2, FaultCounter = 3 };

struct Report {
    qint8 item = -1; // Item; other values mean nothing
    quint8 value = 0;
    bool hasValue = false;

    bool operator==(const Report &) const = default;
};

enum FailSafe : quint8 { InitFs = 0, WaitAbist2 = 1, Abist2 = 2, AssertFs0b = 3, NormalFs = 4 };

/// An empty payload has no item.
Report decodeReport(const QByteArray &payload);

/// "regulators"; no text beyond the items
QString itemName(quint8 item);
/// "VPRE", ...: by bit of the regulators' value
QString regulatorName(quint8 bit);
/// "NORMAL_FS"; "Unknown" beyond the states
QString failSafeName(quint8 state);

// clang-format off
inline constexpr auto kReportFields = rowsOf<Report>({
    {"item", coded(Coding::Signed), into<&Report::item>, {.meaning = "what the value is of", .words = itemName}},
    {"has_value", coded(Coding::Present, 1), into<&Report::hasValue>, {.meaning = "there is a value"}},
    {"value", u8(1), into<&Report::value>, {.meaning = "the value"}},
    {"not_good", flagsNumber(1, 1), partOf<&Report::value>,
     {.meaning = "supplies that are not good", .words = regulatorName, .onlyWhen = Regulators}},
    {"fail_safe_state", u8(1), partOf<&Report::value>,
     {.meaning = "state of the fail-safe machine", .words = failSafeName, .onlyWhen = FailSafeState}},
    {"debug", bit(1, 0), partOf<&Report::value>, {.meaning = "the chip is in debug mode", .onlyWhen = DebugMode}},
    {"fault_counter", u8(1), partOf<&Report::value>, {.meaning = "faults counted by the chip", .onlyWhen = FaultCounter}},
});
// clang-format on
constexpr const auto &layoutOf(const Report *)
{
    return kReportFields;
}

inline constexpr QLatin1String kGetItems = "get 10"_l1;

} // namespace protocol::vg5k
