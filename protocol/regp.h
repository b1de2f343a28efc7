// SPDX-License-Identifier: MIT
// Register protection.
#pragma once

#include <QByteArray>
#include <QString>

namespace protocol::regp {

enum ReportType : quint8 { StatusReport = 1 };

struct Status {
    bool hardLocked = false;
    bool softLocked = false;
    quint32 moduleSpace = 0; // the register as read in module register space
    quint32 mirrorSpace = 0; // the register as read in mirror space

    bool operator==(const Status &) const = default;
};

/// Byte 0 hard lock, locked when exactly 1; 1-4 soft lock word, locked when not 0; 5-8 and 9-12 the register in both
/// spaces. Least significant byte first.
Status decodeStatus(const QByteArray &payload);

/// What is done with a typed value.
enum class Write { SoftLockByMirror = 2, SoftLockByBit = 3, HardLock = 4, Data = 5 };
/// "regP 5 1234"; the value as typed
QString writeCommand(Write write, const QString &value);
inline constexpr QLatin1String kGetStatus("get 8");
inline constexpr QLatin1String kSoftLockOff("regP 1");

} // namespace protocol::regp
