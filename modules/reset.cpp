// SPDX-License-Identifier: MIT
#include "modules/reset.h"

#include "app/animations.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "app/textview.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

namespace reset = protocol::reset;

void ResetPanel::show(const reset::Reasons &reasons)
{
    resetReasonBits = reasons.reasons;
    resetSourceBits = reasons.sources;
    destructiveResetSeen = destructiveResetSeen || reasons.isDestructive();
    textview::show(m_form.textBrowser_ResetSource, reset::describe(reasons));
}

void ResetPanel::blink()
{
    animation::blink(m_form.label_reset_stutas, 135, indicator::background(indicator::kGreen),
                     indicator::background(indicator::kRed), 2);
}

void MainWindow::resetUpdate()
{
    m_pages->refreshAfterRestart();
}

void MainWindow::RESETDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Reset, type, payload);
}
