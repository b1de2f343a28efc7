// SPDX-License-Identifier: MIT
// Register protection.
#pragma once

#include "protocol/latin1.h"
#include "protocol/layout.h"

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

// clang-format off
inline constexpr auto kStatusFields = rowsOf<Status>({
    {"hard_locked", coded(Coding::One), into<&Status::hardLocked>, {.meaning = "the hard lock is on"}},
    {"soft_locked", u32le(1), into<&Status::softLocked>, {.meaning = "the soft lock is on: the soft lock word is not 0"}},
    {"module_space", u32le(5), into<&Status::moduleSpace>,
     {.meaning = "the register as read in module register space", .hexadecimal = true}},
    {"mirror_space", u32le(9), into<&Status::mirrorSpace>,
     {.meaning = "the register as read in mirror space", .hexadecimal = true}},
});
// clang-format on
constexpr const auto &layoutOf(const Status *)
{
    return kStatusFields;
}

Status decodeStatus(const QByteArray &payload);

/// Ways of writing a typed value.
enum class Write { SoftLockByMirror = 2, SoftLockByBit = 3, HardLock = 4, Data = 5 };
/// "regP 5 1234"; the value as typed
QString writeCommand(Write write, const QString &value);
inline constexpr QLatin1String kGetStatus = "get 8"_l1;
inline constexpr QLatin1String kSoftLockOff = "regP 1"_l1;

} // namespace protocol::regp
