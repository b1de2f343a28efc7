// SPDX-License-Identifier: MIT
// What is kept of the interrupt monitor.
#pragma once

#include "protocol/intcm.h"

struct IntcmPanel {
    std::vector<protocol::intcm::Channel> status;
    std::vector<protocol::intcm::Channel> faults;
};
