// SPDX-License-Identifier: MIT
// Reset reasons and reset escalation.
#pragma once

#include "protocol/latin1.h"
#include "protocol/fccu.h"
#include "protocol/layout.h"

#include <QBitArray>
#include <QByteArray>
#include <QString>
#include <QStringList>

namespace protocol::reset {

enum ReportType : quint8 { ReasonReport = 1, EscalationReport = 4 };

inline constexpr int kReasonCount = 24;
inline constexpr int kSourceFlagCount = 128;
/// Reasons from this flag on are destructive resets.
inline constexpr int kFirstDestructive = 6;

/// Reasons that have a name in code, by the number of their flag. Only a reset by the fault collection unit comes with
/// fault sources.
enum class Reason : quint8 {
    SoftwareFunctional = 1,
    FccuShort = 3,
    FccuLong = 4,
    SelfTest = 7,
    SoftwareDestructive = 9,
    PowerOn = 10,
    FunctionalEscalation = 21,
};
constexpr bool hasSources(Reason reason)
{
    return reason == Reason::FccuShort || reason == Reason::FccuLong;
}

struct Reasons {
    QBitArray reasons = QBitArray(kReasonCount); // see Reason
    QBitArray sources = QBitArray(kSourceFlagCount);

    bool isDestructive() const;
    bool operator==(const Reasons &) const = default;
};

struct Escalation {
    quint8 functional = 0;  // number of functional resets that make a destructive one; 0: off
    quint8 destructive = 0; // number of destructive resets that keep the chip in reset; 0: off

    bool operator==(const Escalation &) const = default;
};

Reasons decodeReasons(const QByteArray &payload);
Escalation decodeEscalation(const QByteArray &payload);

/// Text of a reason flag, 0 to 23.
QString reasonText(int flag);
/// Fault source that a source flag stands for: they are in reverse order.
constexpr int faultOfFlag(int flag)
{
    return kSourceFlagCount - 1 - flag;
}

/// Paragraphs of a report: the reasons, and the fault sources behind those that come with some.
QStringList describe(const Reasons &report);

/// The same by a flag of any value: no text beyond the reasons.
QString reasonName(quint8 flag);

// clang-format off
inline constexpr auto kReasonsFields = rowsOf<Reasons>({
    {"reasons", flagsFirst(1, 3), into<&Reasons::reasons>, {.meaning = "why the board was reset", .words = reasonName}},
    {"sources", flagsNumber(4, 16), reversed<&Reasons::sources>,
     {.meaning = "fault sources behind a reset by the fault collection unit", .words = fccu::sourceOf}},
    {"destructive", coded(Coding::Computed), computed<&Reasons::isDestructive>,
     {.meaning = "one of the reasons 6 to 23"}},
});
inline constexpr auto kEscalationFields = rowsOf<Escalation>({
    {"functional", u8(0), into<&Escalation::functional>,
     {.meaning = "functional resets that make a destructive one; 0: off", .unit = "resets"}},
    {"destructive", u8(1), into<&Escalation::destructive>,
     {.meaning = "destructive resets that keep the chip in reset; 0: off", .unit = "resets"}},
});
// clang-format on
constexpr const auto &layoutOf(const Reasons *)
{
    return kReasonsFields;
}
constexpr const auto &layoutOf(const Escalation *)
{
    return kEscalationFields;
}

enum class Kind { Functional = 1, Destructive = 2 };
enum class Operation { Toggle = 1, ClearCounter = 2 };
/// Reset reasons and escalation thresholds.
inline constexpr QLatin1String kGetReasons = "get 9"_l1;
/// "resetEsca 1 1"
QString escalationCommand(Kind kind, Operation operation);
/// "resetEsca 1 3 5"
QString thresholdCommand(Kind kind, int threshold);

} // namespace protocol::reset
