// SPDX-License-Identifier: MIT
// Register protection: the two locks, the register in its two spaces, and the writes.
#include "protocol/regp.h"

#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "link/commandchannel.h"
#include "protocol/hextext.h"
#include "ui_mainwindow.h"

namespace regp = protocol::regp;

namespace {

void showLock(QLabel *label, QCheckBox *box, bool locked)
{
    box->setChecked(locked);
    indicator::paint(label, locked ? indicator::kGreen : indicator::kGrey);
    display::text(label, locked ? QStringLiteral("Lock") : QStringLiteral("Unlock"));
}

} // namespace

void MainWindow::on_pushButton_regUpdate_clicked()
{
    sendCommand(regp::kGetStatus);
}

void MainWindow::on_pushButton_reg_softlockoff_clicked()
{
    sendCommand(regp::kSoftLockOff);
}

// Only a destructive reset takes the hard lock off.
void MainWindow::on_pushButton_reg_hardlockoff_clicked()
{
    D_Reset();
}

void MainWindow::on_pushButton_reg_writedata_clicked()
{
    sendCommand(regp::writeCommand(regp::Write::Data, ui->lineEdit_reg_writedata->text()));
}

void MainWindow::on_pushButton_reg_turnonsoft1_clicked()
{
    sendCommand(regp::writeCommand(regp::Write::SoftLockByMirror, ui->lineEdit_reg_turnonsoft1->text()));
}

void MainWindow::on_pushButton_reg_turnonsoft2_clicked()
{
    sendCommand(regp::writeCommand(regp::Write::SoftLockByBit, ui->lineEdit_reg_turnonsoft2->text()));
}

void MainWindow::on_pushButton_reg_turnonhard_clicked()
{
    sendCommand(regp::writeCommand(regp::Write::HardLock, ui->lineEdit_reg_turnonhard->text()));
}

void MainWindow::REG_PDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    if (type != regp::StatusReport)
        return;
    const regp::Status status = regp::decodeStatus(payload);
    showLock(ui->label_regp_hardlock_status, ui->checkBox_hardlock_2, status.hardLocked);
    showLock(ui->label_regp_softlock_status, ui->checkBox_softlock_2, status.softLocked);
    display::text(ui->lineEdit_reg_module_2, protocol::hexText(status.moduleSpace, 8));
    display::text(ui->lineEdit_reg_mirror_2, protocol::hexText(status.mirrorSpace, 8));
}
