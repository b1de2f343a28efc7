// SPDX-License-Identifier: MIT
// Interrupt monitor: the grid of nine channels, configuration, faults.
#pragma once

#include "protocol/intcm.h"

namespace Ui {
class MainWindow;
}

class IntcmPage
{
public:
    explicit IntcmPage(const Ui::MainWindow &form) : m_form(form) {}

    /// Sends what the selectors and fields say, and asks for the grid a little later.
    void configure();
    void closeChannel();

    void showStatus(std::vector<protocol::intcm::Channel> channels);
    void showFaults(std::vector<protocol::intcm::Channel> channels);

private:
    const Ui::MainWindow &m_form;
    std::vector<protocol::intcm::Channel> m_status = {};
    std::vector<protocol::intcm::Channel> m_faults = {};
};
