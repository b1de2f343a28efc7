// SPDX-License-Identifier: MIT
// Self-tests: flags seen since the window was built, and their two rows of indicators.
#pragma once

#include "protocol/bist.h"

namespace Ui {
class MainWindow;
}

class BistPage
{
public:
    explicit BistPage(const Ui::MainWindow &form) : m_form(form) {}

    /// Results play with the next refresh; flags are only ever set.
    void keep(const protocol::bist::Results &results);

    void sweepLogic();
    void sweepMemory();
    /// Greys the tests named by the memory flags, and gives time to see it.
    void reset();

    bool bistResetPending = false; // results have come that no refresh has played

private:
    const Ui::MainWindow &m_form;
    QBitArray lbistSet1{protocol::bist::kLbistCount};
    QBitArray lbistSet2{protocol::bist::kLbistCount};
    QBitArray mbistSet1{protocol::bist::kMbistCount};
    QBitArray mbistSet2{protocol::bist::kMbistCount};
};
