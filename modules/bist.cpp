// SPDX-License-Identifier: MIT
// Built-in self-tests: results kept, and played onto their two rows of indicators.
#include "protocol/bist.h"

#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "link/commandchannel.h"

namespace bist = protocol::bist;

void MainWindow::LBIST_sequence()
{
    labelBitSet(bist::kLbistCount, QStringLiteral("LBIST"), QString::fromLatin1(indicator::kGreen),
                m_selfTest.lbistSet2, 8);
}

void MainWindow::MBIST_sequence()
{
    labelBitSet(bist::kMbistShown, QStringLiteral("MBIST"), QString::fromLatin1(indicator::kGreen),
                m_selfTest.mbistSet2, 5);
}

// The logic row is greyed by the memory flags too.
void MainWindow::BISTReset()
{
    const QString grey = QString::fromLatin1(indicator::kGrey);
    labelBitSet(bist::kLbistCount, QStringLiteral("LBIST"), grey, m_selfTest.mbistSet2, 0);
    labelBitSet(bist::kMbistShown, QStringLiteral("MBIST"), grey, m_selfTest.mbistSet2, 0);
    delayMs(200);
}

void MainWindow::BISTDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    if (type != bist::ResultReport)
        return;
    const bist::Results results = bist::decodeResults(payload);
    m_selfTest.lbistSet1 |= results.lbistSet1;
    m_selfTest.lbistSet2 |= results.lbistSet2;
    m_selfTest.mbistSet1 |= results.mbistSet1;
    m_selfTest.mbistSet2 |= results.mbistSet2;
    m_reset.bistResetPending = true;
}

// The self-test control unit's own frames say nothing that is shown.
void MainWindow::STCUDataFrameUnpack(uint8_t, uint32_t, QByteArray) {}
