// SPDX-License-Identifier: MIT
#include "modules/memu.h"

#include "app/mainwindow.h"
#include "app/textview.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

namespace memu = protocol::memu;

namespace {

void inject(memu::Memory memory, const QComboBox *bits, const QString &arguments)
{
    const int selected = bits->currentIndex();
    if (selected == 0 || selected == 1)
        sendCommand(memu::injectCommand(memory, selected == 1, arguments));
}

QString offsetAndData(const QLineEdit *offset, const QLineEdit *data)
{
    return offset->text() + QLatin1Char(' ') + data->text();
}

} // namespace

void MemuPage::injectFlash()
{
    inject(memu::Memory::Flash, m_form.comboBox_memu_1, m_form.lineEdit_memu_1->text());
}

void MemuPage::injectPram()
{
    inject(memu::Memory::Pram, m_form.comboBox_memu_2, offsetAndData(m_form.lineEdit_memu_2, m_form.lineEdit_memu_4));
}

void MemuPage::injectSram()
{
    inject(memu::Memory::Sram, m_form.comboBox_memu_3, offsetAndData(m_form.lineEdit_memu_3, m_form.lineEdit_memu_5));
}

void MemuPage::clearFaults()
{
    sendCommand(memu::kClearFaults);
    delayMs(100);
    sendCommand(memu::kClearStatus);
}

void MemuPage::show(const memu::FaultRecord &record)
{
    m_faults = record;
    textview::show(m_form.textEdit_memuFaultRecord, memu::describe(m_faults));
}

// clang-format off
void MainWindow::on_pushButton_memu_inject_clicked() { m_pages->memu.injectFlash(); }
void MainWindow::on_pushButton_memu_inject_2_clicked() { m_pages->memu.injectPram(); }
void MainWindow::on_pushButton_memu_inject_3_clicked() { m_pages->memu.injectSram(); }
void MainWindow::on_pushButton_memu_inject_5_clicked() { sendCommand(memu::kInjectCache); }
void MainWindow::on_pushButton_memu_faultrecord_get_clicked() { sendCommand(memu::kReadFaults); }
void MainWindow::on_pushButton_memu_faultstatus_clear_clicked() { m_pages->memu.clearFaults(); }
// clang-format on

void MainWindow::MEMUDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Memu, type, payload);
}
