// SPDX-License-Identifier: MIT
#include "modules/regp.h"

#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "protocol/hextext.h"
#include "ui_mainwindow.h"

namespace regp = protocol::regp;

namespace {

void showLock(QLabel *label, QCheckBox *box, bool locked)
{
    display::checked(box, locked);
    indicator::state(label, locked ? QStringLiteral("Lock") : QStringLiteral("Unlock"),
                     indicator::background(locked ? indicator::kGreen : indicator::kGrey));
}

} // namespace

void RegpPage::write(regp::Write how)
{
    const QLineEdit *field = nullptr;
    switch (how) {
    case regp::Write::Data:
        field = m_form.lineEdit_reg_writedata;
        break;
    case regp::Write::SoftLockByMirror:
        field = m_form.lineEdit_reg_turnonsoft1;
        break;
    case regp::Write::SoftLockByBit:
        field = m_form.lineEdit_reg_turnonsoft2;
        break;
    case regp::Write::HardLock:
        field = m_form.lineEdit_reg_turnonhard;
        break;
    }
    sendCommand(regp::writeCommand(how, field->text()));
}

void RegpPage::show(const regp::Status &status)
{
    showLock(m_form.label_regp_hardlock_status, m_form.checkBox_hardlock_2, status.hardLocked);
    showLock(m_form.label_regp_softlock_status, m_form.checkBox_softlock_2, status.softLocked);
    display::text(m_form.lineEdit_reg_module_2, protocol::hexText(status.moduleSpace, 8));
    display::text(m_form.lineEdit_reg_mirror_2, protocol::hexText(status.mirrorSpace, 8));
}

// Only a destructive reset takes the hard lock off.
// clang-format off
void MainWindow::on_pushButton_regUpdate_clicked() { sendCommand(regp::kGetStatus); }
void MainWindow::on_pushButton_reg_softlockoff_clicked() { sendCommand(regp::kSoftLockOff); }
void MainWindow::on_pushButton_reg_hardlockoff_clicked() { D_Reset(); }
void MainWindow::on_pushButton_reg_writedata_clicked() { m_pages->regp.write(regp::Write::Data); }
void MainWindow::on_pushButton_reg_turnonsoft1_clicked() { m_pages->regp.write(regp::Write::SoftLockByMirror); }
void MainWindow::on_pushButton_reg_turnonsoft2_clicked() { m_pages->regp.write(regp::Write::SoftLockByBit); }
void MainWindow::on_pushButton_reg_turnonhard_clicked() { m_pages->regp.write(regp::Write::HardLock); }
// clang-format on

void MainWindow::REG_PDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::RegProt, type, payload);
}
