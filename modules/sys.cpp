// SPDX-License-Identifier: MIT
#include "modules/sys.h"

#include "app/display.h"
#include "app/mainwindow.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

namespace sys = protocol::sys;

namespace {

constexpr int kPollGapMs = 120;

} // namespace

void SysPanel::show(const sys::OperatingMode &mode)
{
    display::text(m_form.lineEdit_sysworkmode, sys::modeName(mode.mode));
}

void SysPanel::show(const sys::FirmwareVersion &version)
{
    display::text(m_form.lineEdit_firewareVision, sys::versionText(version));
}

// clang-format off
void MainWindow::D_Reset() { sendCommand(sys::kDestructiveReset); }
void MainWindow::F_Reset() { sendCommand(sys::kFunctionalReset); }
// clang-format on

void MainWindow::Get_Status()
{
    for (const QLatin1String command : sys::kStatusPoll) {
        sendCommand(command);
        delayMs(kPollGapMs);
    }
}

void MainWindow::SYSDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Sys, type, payload);
}
