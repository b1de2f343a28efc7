// SPDX-License-Identifier: MIT
// System status: operating mode, firmware version, restart notice, and the commands of the System menu.
#include "protocol/sys.h"

#include "app/display.h"
#include "app/mainwindow.h"
#include "link/commandchannel.h"
#include "ui_mainwindow.h"

#include <QTimer>

namespace sys = protocol::sys;

namespace {

constexpr int kPollGapMs = 120;
constexpr int kRefreshDelayMs = 300;

} // namespace

void MainWindow::D_Reset()
{
    sendCommand(sys::kDestructiveReset);
}

void MainWindow::F_Reset()
{
    sendCommand(sys::kFunctionalReset);
}

void MainWindow::Get_Status()
{
    for (const QLatin1String command : sys::kStatusPoll) {
        sendCommand(command);
        delayMs(kPollGapMs);
    }
}

// Each notice gets a timer of its own; none is stopped.
void MainWindow::startRefresh()
{
    m_reset.resetTimer = new QTimer(this);
    m_reset.resetTimer->setSingleShot(true);
    connect(m_reset.resetTimer, &QTimer::timeout, this, &MainWindow::resetUpdate);
    connect(m_reset.resetTimer, &QTimer::timeout, m_reset.resetTimer, &QObject::deleteLater);
    m_reset.resetTimer->start(kRefreshDelayMs);
}

void MainWindow::SYSDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    switch (type) {
    case sys::OperatingModeReport:
        display::text(ui->lineEdit_sysworkmode, sys::modeName(sys::decodeOperatingMode(payload)));
        break;
    case sys::FirmwareVersionReport:
        display::text(ui->lineEdit_firewareVision, sys::versionText(sys::decodeFirmwareVersion(payload)));
        break;
    case sys::RestartNoticeReport:
        if (sys::decodeRestartNotice(payload))
            startRefresh();
        break;
    default:
        break;
    }
}
