// SPDX-License-Identifier: MIT
// Crossbar integrity checkers: five groups, fault paths that blink.
#pragma once

#include "protocol/xbic.h"

class FaultLayer;
class QWidget;
namespace Ui {
class MainWindow;
}

class XbicPage
{
public:
    /// Boxes open over `window`.
    XbicPage(const Ui::MainWindow &form, QWidget &window);

    /// The fault's path blinks, then the command goes out; a checker that is off is told.
    void inject(int checker);
    /// Asks the board to forget its faults, and takes their paths off the drawing.
    void clearFaults();

    void show(const protocol::xbic::Enables &enables);
    void show(const protocol::xbic::FaultRecord &record);

private:
    void showPaths();

    const Ui::MainWindow &m_form;
    QWidget &m_window;
    quint8 m_enabled = 0; // bit n: checker n
    protocol::xbic::FaultRecord m_faults = {};
    FaultLayer *const m_layer;
    quint8 m_injected = 0; // bit n: into checker n, since the faults were cleared
};
