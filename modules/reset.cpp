// SPDX-License-Identifier: MIT
// Reset reasons with their fault sources, and the refresh after a restart.
#include "protocol/reset.h"

#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "app/textview.h"
#include "link/commandchannel.h"
#include "protocol/cmu.h"
#include "ui_mainwindow.h"

#include <utility>

namespace reset = protocol::reset;

namespace {

// A board that keeps restarting nests refreshes inside each other's waits. Deeper ones are put off: one more runs when the
// outermost has ended, so that what is shown is never older than the last restart.
constexpr int kMaxNestedRefreshes = 8;

} // namespace

void MainWindow::RESETDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    if (type == reset::ReasonReport) {
        const reset::Reasons report = reset::decodeReasons(payload);
        m_reset.resetReasonBits = report.reasons;
        m_reset.resetSourceBits = report.sources;
        m_reset.destructiveResetSeen = m_reset.destructiveResetSeen || report.isDestructive();
        textview::show(ui->textBrowser_ResetSource, reset::describe(report));
    } else if (type == reset::EscalationReport) {
        showEscalation(payload);
    }
}

void MainWindow::resetUpdate()
{
    if (m_reset.refreshes >= kMaxNestedRefreshes) {
        m_reset.refreshMissed = true;
        return;
    }
    do {
        ++m_reset.refreshes;
        refresh();
        --m_reset.refreshes;
    } while (m_reset.refreshes == 0 && std::exchange(m_reset.refreshMissed, false));
}

void MainWindow::refresh()
{
    const display::Pause pause;
    ui->textBrowser_fccurecord->clear();
    sendCommand(protocol::cmu::kGetClock);
    delayMs(20);
    sendCommand(protocol::cmu::kGetMonitors);
    delayMs(40);
    if (m_reset.destructiveResetSeen) {
        PMC_Status_Reset();
        m_reset.destructiveResetSeen = false;
    }
    if (m_reset.bistResetPending)
        BISTReset();
    labeltwinkle(ui->label_reset_stutas, 135, indicator::background(indicator::kGreen),
                 indicator::background(indicator::kRed), 2);
    if (m_reset.bistResetPending) {
        MBIST_sequence();
        LBIST_sequence();
        m_reset.bistResetPending = false;
    }
}
