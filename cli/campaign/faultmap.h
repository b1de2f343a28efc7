// SPDX-License-Identifier: MIT
// What became of the 128 inputs of fault collection.
#pragma once

#include "cli/campaign/outcome.h"

#include <array>

namespace campaign {

enum class Input {
    Unreached, // no case injects it
    NotRun,    // a case would, but was not run
    Missed,    // exercised, and not caught as expected
    Caught,    // in every case that exercised it
};

using FaultMap = std::array<Input, 128>;

FaultMap faultMapOf(const Plan &plan, const Outcome &outcome);

/// "caught"
QString nameOf(Input input);
int countOf(const FaultMap &map, Input input);

} // namespace campaign
