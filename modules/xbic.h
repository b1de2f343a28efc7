// SPDX-License-Identifier: MIT
// What is kept of the crossbar checkers.
#pragma once

#include "protocol/xbic.h"

struct XbicPanel {
    quint8 enabled = 0; // bit n: checker n
    std::vector<protocol::xbic::Fault> faults;
};
