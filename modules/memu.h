// SPDX-License-Identifier: MIT
// What is kept of the memory errors.
#pragma once

#include "protocol/memu.h"

struct MemuPanel {
    std::vector<protocol::memu::Fault> faults;
};
