// SPDX-License-Identifier: MIT
// Clock monitors: thirteen of them, the clock generators, limits and fault injection.
#pragma once

#include "protocol/cmu.h"

#include <vector>

class QWidget;
namespace Ui {
class MainWindow;
}

class CmuPage
{
public:
    /// Boxes open over `window`.
    CmuPage(const Ui::MainWindow &form, QWidget &window) : m_form(form), m_window(window) {}

    void show(const protocol::cmu::CmuRecord &monitor);
    void show(const protocol::cmu::ClockStatus &clock);
    void show(const protocol::cmu::FaultRecord &record);
    void show(const protocol::cmu::Text &message);

    void switchMonitor(int monitor, bool on);
    /// Sends the limits set for the monitor chosen, after a question where its clock is beyond them.
    void setLimits();
    /// The limits flash; monitors beyond the last do nothing.
    void flashLimits(int monitor);
    void clearFaults();

    // The five fault injections: an animation, then the command.
    void injectSlowClock();
    void injectFastClock();
    void injectLostClock();
    void injectHighLimits();
    void injectLowLimits();

private:
    bool confirmLimits(int monitor);
    void injectLimits(int fault, int lower, int upper);
    void store(const protocol::cmu::CmuRecord &monitor);

    const Ui::MainWindow &m_form;
    QWidget &m_window;
    // In order of arrival until there are as many as monitors; from then on by monitor number.
    std::vector<protocol::cmu::CmuRecord> m_records;
    protocol::cmu::ClockStatus clockStatus;
};
