// SPDX-License-Identifier: MIT
#include "modules/bist.h"

#include "app/animations.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

namespace bist = protocol::bist;

void BistPage::keep(const bist::Results &results)
{
    lbistSet1 |= results.lbistSet1;
    lbistSet2 |= results.lbistSet2;
    mbistSet1 |= results.mbistSet1;
    mbistSet2 |= results.mbistSet2;
    bistResetPending = true;
}

void BistPage::sweepLogic()
{
    animation::sweep(*m_form.centralWidget, bist::kLbistCount, QStringLiteral("LBIST"),
                     QString::fromLatin1(indicator::kGreen), lbistSet2, 8);
}

void BistPage::sweepMemory()
{
    animation::sweep(*m_form.centralWidget, bist::kMbistShown, QStringLiteral("MBIST"),
                     QString::fromLatin1(indicator::kGreen), mbistSet2, 5);
}

// The logic row is greyed by the memory flags too.
void BistPage::reset()
{
    const QString grey = QString::fromLatin1(indicator::kGrey);
    animation::sweep(*m_form.centralWidget, bist::kLbistCount, QStringLiteral("LBIST"), grey, mbistSet2, 0);
    animation::sweep(*m_form.centralWidget, bist::kMbistShown, QStringLiteral("MBIST"), grey, mbistSet2, 0);
    delayMs(200);
}

// clang-format off
void MainWindow::LBIST_sequence() { m_pages->bist.sweepLogic(); }
void MainWindow::MBIST_sequence() { m_pages->bist.sweepMemory(); }
void MainWindow::BISTReset() { m_pages->bist.reset(); }
// clang-format on

void MainWindow::BISTDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Bist, type, payload);
}

// The self-test control unit's own frames say nothing that is shown.
void MainWindow::STCUDataFrameUnpack(uint8_t, uint32_t, QByteArray) {}
