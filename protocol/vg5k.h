// SPDX-License-Identifier: MIT
// The external safety power chip.
#pragma once

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

/// Byte 0 item, signed; byte 1 its value. An empty payload has no item.
Report decodeReport(const QByteArray &payload);

inline constexpr QLatin1String kGetItems("get 10");

} // namespace protocol::vg5k
