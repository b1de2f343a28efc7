// SPDX-License-Identifier: MIT
// Software watchdogs: one per core.
#pragma once

#include "protocol/swt.h"

#include <array>

class ServiceWindow;
namespace Ui {
class MainWindow;
}

class SwtPage
{
public:
    explicit SwtPage(const Ui::MainWindow &form);

    /// The indicator follows at once, without waiting for the board.
    void switchWatchdog(int watchdog, bool on);
    /// Sends the settings of the selectors.
    void configure();

    void show(const protocol::swt::Status &status);

private:
    const Ui::MainWindow &m_form;
    std::array<ServiceWindow *, protocol::swt::kWatchdogCount> m_windows;
};
