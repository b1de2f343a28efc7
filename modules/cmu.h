// SPDX-License-Identifier: MIT
// What is kept of the clock monitors.
#pragma once

#include "protocol/cmu.h"

#include <vector>

struct CmuPanel {
    // In order of arrival until there are as many as monitors; from then on by monitor number.
    std::vector<protocol::cmu::Monitor> records;
    protocol::cmu::ClockStatus clockStatus;
};
