// SPDX-License-Identifier: MIT
// One unit of the board: a module's state and behaviour.
#pragma once

#include <QString>

enum class ResetKind;

class Unit
{
public:
    virtual ~Unit() = default;

    /// Short name for people: "cmu".
    virtual QString name() const = 0;
    /// Takes the state that the unit has after a reset of this kind, for `reason` (a reset-reason flag).
    virtual void reset(ResetKind kind, int reason) = 0;
    /// Sends what the unit reports by itself after a restart.
    virtual void announce() {}
    /// One short plain line on its state, for people.
    virtual QString status() const = 0;
};
