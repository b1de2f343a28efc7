// SPDX-License-Identifier: MIT
// Fault collection and control unit: its state, and the faults that it reports.
#pragma once

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

struct FaultEvent {
    quint8 id = 0;
    float time = 0; // from injection to detection by the hardware, microseconds

    bool operator==(const FaultEvent &) const = default;
};

/// State code, byte 0.
quint8 decodeState(const QByteArray &payload);
/// Byte 0 fault source, 1-4 time (float, most significant byte first).
FaultEvent decodeFault(const QByteArray &payload);

/// "Fault ID 28"
QString titleOf(quint8 id);
/// What a history keeps of a fault: the table's texts, or fixed ones for several sources and for identifiers without a
/// place in the table. The log words the latter differently.
FaultText recordedText(quint8 id);
/// Paragraphs of a fault in the log.
QStringList describe(const FaultEvent &event);

} // namespace protocol::fccu
