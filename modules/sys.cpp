// System status: operating mode, firmware version, restart notice, and the commands of the System menu.
#include "protocol/sys.h"

#include "app/mainwindow.h"
#include "link/commandchannel.h"
#include "ui_mainwindow.h"

namespace sys = protocol::sys;

namespace {

constexpr int kPollGapMs = 120;

} // namespace

void MainWindow::D_Reset()
{
    sendCommand(QString::fromLatin1(sys::kDestructiveReset));
}

void MainWindow::F_Reset()
{
    sendCommand(QString::fromLatin1(sys::kFunctionalReset));
}

void MainWindow::Get_Status()
{
    for (const char *command : sys::kStatusPoll) {
        sendCommand(QString::fromLatin1(command));
        delayMs(kPollGapMs);
    }
}

void MainWindow::SYSDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    switch (type) {
    case sys::OperatingModeReport:
        ui->lineEdit_sysworkmode->setText(sys::modeName(sys::decodeOperatingMode(payload)));
        break;
    case sys::FirmwareVersionReport:
        ui->lineEdit_firewareVision->setText(sys::versionText(sys::decodeFirmwareVersion(payload)));
        break;
    default:
        break;
    }
}
