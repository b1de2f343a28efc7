// SPDX-License-Identifier: MIT
#include "modules/pages.h"

#include "app/display.h"
#include "app/mainwindow.h"
#include "link/commandchannel.h"

#include <utility>

namespace {

constexpr int kRefreshDelayMs = 300;

// A board that keeps restarting nests refreshes inside each other's waits. Deeper ones are put off: one more runs when the
// outermost has ended, so that what is shown is never older than the last restart.
constexpr int kMaxNestedRefreshes = 8;

} // namespace

Pages::Pages(const Ui::MainWindow &form, MainWindow &window)
    : bist(form),
      cmu(form, window),
      crc(form),
      cse(form, window),
      escalation(form),
      fccu(form, window),
      intcm(form),
      memu(form),
      pmc(form),
      regp(form),
      reset(form),
      smpu(form),
      spt(form),
      swt(form),
      sys(form),
      vg5k(form),
      xbic(form, window),
      m_window(window)
{
}

void Pages::refreshSoon()
{
    resetTimer = new QTimer(&m_window);
    resetTimer->setSingleShot(true);
    QObject::connect(resetTimer, &QTimer::timeout, &m_window, &MainWindow::resetUpdate);
    QObject::connect(resetTimer, &QTimer::timeout, resetTimer, &QObject::deleteLater);
    resetTimer->start(kRefreshDelayMs);
}

void Pages::refreshAfterRestart()
{
    if (m_refreshes >= kMaxNestedRefreshes) {
        m_refreshMissed = true;
        return;
    }
    do {
        ++m_refreshes;
        refresh();
        --m_refreshes;
    } while (m_refreshes == 0 && std::exchange(m_refreshMissed, false));
}

void Pages::refresh()
{
    const display::Pause pause;
    fccu.clearLog();
    sendCommand(protocol::cmu::kGetClock);
    delayMs(20);
    sendCommand(protocol::cmu::kGetMonitors);
    delayMs(40);
    if (reset.destructiveResetSeen) {
        pmc.reset();
        reset.destructiveResetSeen = false;
    }
    if (bist.bistResetPending)
        bist.reset();
    reset.blink();
    if (bist.bistResetPending) {
        bist.sweepMemory();
        bist.sweepLogic();
        bist.bistResetPending = false;
    }
}

void MainWindow::makePages()
{
    m_pages.reset(new Pages(*ui, *this));
}

void MainWindow::DeletePages::operator()(Pages *pages) const
{
    delete pages;
}
