// SPDX-License-Identifier: MIT
// Fault collection and control unit: its state, the fault shown, the log and the history.
#pragma once

#include "app/textview.h"
#include "modules/faulthistory.h"
#include "protocol/fccu.h"

class FrameFlash;
class QWidget;
namespace Ui {
class MainWindow;
}

class FccuPage
{
public:
    /// `window` owns the timers.
    FccuPage(const Ui::MainWindow &form, QWidget &window);
    Q_DISABLE_COPY(FccuPage)

    void show(const protocol::fccu::UnitState &unit);
    void showNormal();
    /// Logs and records the fault, and selects it.
    void show(const protocol::fccu::FaultEvent &fault);
    /// Shows the record of that row; others change nothing.
    void select(int row);
    void clearLog();

private:
    void announce();
    void addFaults();

    const Ui::MainWindow &m_form;
    QWidget &m_window;
    FrameFlash *const m_flash; // the panel's frame
    textview::Log m_log;
    QString m_announced;                      // the state that screen readers were told
    FaultHistory *const m_history;            // the selector's
    std::vector<FccuFaultRecord> m_newFaults; // of this arrival, not in the history yet
};
