// SPDX-License-Identifier: MIT
// One unit of the board: a module's state and behaviour.
#pragma once

#include "protocol/reset.h"

#include <QString>

#include <cstddef>
#include <optional>

namespace simulator {

using protocol::reset::Reason;

/// Entries that a fault record keeps: its count is one byte on the wire.
inline constexpr std::size_t kMaxRecord = 255;

enum class ResetKind { PowerOn, Functional, Destructive };

constexpr ResetKind kindOf(Reason reason)
{
    if (reason == Reason::PowerOn)
        return ResetKind::PowerOn;
    return static_cast<int>(reason) < protocol::reset::kFirstDestructive ? ResetKind::Functional
                                                                         : ResetKind::Destructive;
}

class Unit
{
public:
    virtual ~Unit() = default;

    /// Short name for people: "cmu".
    virtual QString name() const = 0;
    /// Takes the state that the unit has after a reset of this kind.
    virtual void reset(ResetKind kind) = 0;
    /// Sends the unit's reports after a restart.
    virtual void announce() {}
    /// One short plain line on its state, for people.
    virtual QString status() const = 0;

    /// Repairs what "sick" commands broke, and reports it.
    virtual void heal() {}

    /// Told of every fault that a mechanism detects (its source, and microseconds from its beginning to its detection),
    /// and of every fault status that is cleared.
    virtual void faultReported(quint8, float) {}
    virtual void faultCleared(quint8) {}
    /// Asked before a restart; true when another reset takes its place or the board stays in reset.
    virtual bool replacesReset(Reason) { return false; }
    /// Told why a restart begins, and by which fault source where one caused it.
    virtual void restartBegins(Reason, std::optional<quint8>) {}
};

} // namespace simulator
