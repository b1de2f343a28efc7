// SPDX-License-Identifier: MIT
// Reasons of the board's last reset, and the label that blinks after one.
#pragma once

#include "protocol/reset.h"

namespace Ui {
class MainWindow;
}

class ResetPanel
{
public:
    explicit ResetPanel(const Ui::MainWindow &form) : m_form(form) {}

    void show(const protocol::reset::Reasons &reasons);
    void blink();

    bool destructiveResetSeen = false; // since the last refresh

private:
    const Ui::MainWindow &m_form;
    QBitArray resetReasonBits; // of the last report
    QBitArray resetSourceBits;
};
