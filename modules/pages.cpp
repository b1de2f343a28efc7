// SPDX-License-Identifier: MIT
#include "modules/pages.h"

#include "app/display.h"
#include "app/mainwindow.h"
#include "app/reportfeed.h"
#include "link/commandchannel.h"

#include <utility>
#include <variant>

namespace {

using namespace protocol;

// Which page shows what.
struct Shower {
    Pages &pages;

    void operator()(const TextMessage &) const {}
    void operator()(const sys::OperatingMode &report) const { pages.sys.show(report); }
    void operator()(const sys::FirmwareVersion &report) const { pages.sys.show(report); }
    void operator()(const sys::RestartNotice &report) const
    {
        if (report.restarted)
            pages.refreshSoon();
    }
    void operator()(const cmu::Text &report) const { pages.cmu.show(report); }
    void operator()(const cmu::CmuRecord &report) const { pages.cmu.show(report); }
    void operator()(const cmu::FaultRecord &report) const { pages.cmu.show(report); }
    void operator()(const cmu::ClockStatus &report) const { pages.cmu.show(report); }
    void operator()(const xbic::Enables &report) const { pages.xbic.show(report); }
    void operator()(const xbic::FaultRecord &report) const { pages.xbic.show(report); }
    void operator()(const smpu::Region &report) const { pages.smpu.show(report); }
    void operator()(const smpu::FaultRecord &report) const { pages.smpu.show(report); }
    void operator()(const regp::Status &report) const { pages.regp.show(report); }
    void operator()(const crc::Result &report) const { pages.crc.show(report); }
    void operator()(const memu::FaultRecord &report) const { pages.memu.show(report); }
    void operator()(const intcm::Status &report) const { pages.intcm.show(report); }
    void operator()(const intcm::FaultRecord &report) const { pages.intcm.show(report); }
    void operator()(const bist::Results &report) const { pages.bist.keep(report); }
    void operator()(const pmc::Detectors &report) const { pages.pmc.show(report); }
    void operator()(const pmc::FaultRecord &report) const { pages.pmc.show(report); }
    void operator()(const pmc::SelfTest &report) const { pages.pmc.show(report); }
    void operator()(const swt::Status &report) const { pages.swt.show(report); }
    void operator()(const fccu::UnitState &report) const { pages.fccu.show(report); }
    void operator()(const fccu::FaultEvent &report) const { pages.fccu.show(report); }
    void operator()(const reset::Reasons &report) const { pages.reset.show(report); }
    void operator()(const reset::Escalation &report) const { pages.escalation.show(report); }
    void operator()(const vg5k::Report &report) const { pages.vg5k.show(report); }
    void operator()(const cse::Status &report) const { pages.cse.show(report); }
    void operator()(const cse::Result &report) const { pages.cse.show(report); }
    void operator()(const spt::FrameCount &report) const { pages.spt.show(report); }
    void operator()(const spt::FaultRecord &report) const { pages.spt.show(report); }
};

constexpr int kRefreshDelayMs = 300;

// A board that keeps restarting nests refreshes inside each other's waits. Deeper ones are put off: one more runs when the
// outermost has ended, so that no state on screen is older than the last restart.
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

void Pages::show(const Report &report)
{
    emit reportFeed().reported(report);
    std::visit(Shower{*this}, report);
}

void Pages::show(quint8 module, quint8 type, const QByteArray &payload)
{
    if (const auto report = decode(module, type, payload))
        show(*report);
}

void Pages::show(ModuleId module, quint8 type, const QByteArray &payload)
{
    show(static_cast<quint8>(module), type, payload);
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
    sendCommand(cmu::kGetClock);
    delayMs(20);
    sendCommand(cmu::kGetMonitors);
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

void MainWindow::showReport(const frameData &frame)
{
    m_pages->show(frame.moduleId, frame.dataType, frame.data);
}

void MainWindow::makePages()
{
    m_pages.reset(new Pages(*ui, *this));
}

void MainWindow::DeletePages::operator()(Pages *pages) const
{
    delete pages;
}
