// SPDX-License-Identifier: MIT
// Self-test flags seen since the window was built; they are set and never cleared.
#pragma once

#include "protocol/bist.h"

struct SelfTestPanel {
    QBitArray lbistSet1{protocol::bist::kLbistCount};
    QBitArray lbistSet2{protocol::bist::kLbistCount};
    QBitArray mbistSet1{protocol::bist::kMbistCount};
    QBitArray mbistSet2{protocol::bist::kMbistCount};
};
