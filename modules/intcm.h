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

    /// Sends the settings of selectors and fields, and requests the grid a little later.
    void configure();
    void closeChannel();

    void show(const protocol::intcm::Status &status);
    void show(const protocol::intcm::FaultRecord &record);

private:
    const Ui::MainWindow &m_form;
    protocol::intcm::Status m_status = {};
    protocol::intcm::FaultRecord m_faults = {};
};
