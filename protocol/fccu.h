// SPDX-License-Identifier: MIT
// Fault collection and control unit: its state, and the faults that it reports.
#pragma once

#include "protocol/layout.h"
#include "protocol/faulttable.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace protocol::fccu {

enum ReportType : quint8 { StateReport = 1, FaultReport = 2 };

enum State : quint8 { Config = 0, Normal = 1, Alarm = 2, Fault = 3 };

/// The last identifier that is looked up in the fault table; one beyond its end, see faultText().
inline constexpr quint8 kLastListed = 128;
inline constexpr quint8 kMultipleSources = 254;

struct UnitState {
    quint8 state = 0; // State; other values mean nothing

    bool operator==(const UnitState &) const = default;
};

struct FaultEvent {
    quint8 id = 0;
    float time = 0; // from injection to detection by the hardware, microseconds

    /// As recorded.
    QString source() const;
    QString description() const;

    bool operator==(const FaultEvent &) const = default;
};

/// State code.
quint8 decodeState(const QByteArray &payload);
FaultEvent decodeFault(const QByteArray &payload);

/// "Fault ID 28"
QString titleOf(quint8 id);
/// A fault's entry in the history: the table's texts, or fixed ones for several sources and for identifiers without a
/// place in the table. The log words the latter differently.
FaultText recordedText(quint8 id);
QString sourceOf(quint8 id);
QString descriptionOf(quint8 id);
/// Paragraphs of a fault in the log.
QStringList describe(const FaultEvent &event);
/// "ALARM"; no text beyond the states
QString stateName(quint8 state);

// clang-format off
inline constexpr auto kUnitStateFields = rowsOf<UnitState>({
    {"state", u8(0), into<&UnitState::state>, {.meaning = "state of the unit", .words = stateName}},
});
inline constexpr auto kFaultEventFields = rowsOf<FaultEvent>({
    {"id", u8(0), into<&FaultEvent::id>, {.meaning = "fault source, 0 to 127; 254: several"}},
    {"time", f32be(1), into<&FaultEvent::time>, {.meaning = "from injection to detection by the hardware", .unit = "us"}},
    {"source", coded(Coding::Words), computed<&FaultEvent::source>,
     {.meaning = "module that the fault comes from", .words = sourceOf}},
    {"description", coded(Coding::Words), computed<&FaultEvent::description>,
     {.meaning = "what the fault means", .words = descriptionOf}},
});
// clang-format on
constexpr const auto &layoutOf(const UnitState *)
{
    return kUnitStateFields;
}
constexpr const auto &layoutOf(const FaultEvent *)
{
    return kFaultEventFields;
}

} // namespace protocol::fccu
