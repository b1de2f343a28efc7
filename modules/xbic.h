// SPDX-License-Identifier: MIT
// Crossbar integrity checkers: five groups, fault paths that blink.
#pragma once

#include "protocol/xbic.h"

class QWidget;
namespace Ui {
class MainWindow;
}

class XbicPage
{
public:
    /// Boxes open over `window`.
    XbicPage(const Ui::MainWindow &form, QWidget &window) : m_form(form), m_window(window) {}

    /// The fault's path blinks, then the command goes out; a checker that is off is told.
    void inject(int checker);

    void show(const protocol::xbic::Enables &enables);
    void show(const protocol::xbic::FaultRecord &record);

private:
    const Ui::MainWindow &m_form;
    QWidget &m_window;
    quint8 m_enabled = 0; // bit n: checker n
    protocol::xbic::FaultRecord m_faults = {};
};
