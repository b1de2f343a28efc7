// SPDX-License-Identifier: MIT
// Memory errors: injection into three memories and the cache, and the record.
#include "protocol/memu.h"

#include "app/mainwindow.h"
#include "app/textview.h"
#include "link/commandchannel.h"
#include "ui_mainwindow.h"

namespace memu = protocol::memu;

namespace {

// What is typed goes out as typed; without a selection nothing goes out.
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

void MainWindow::on_pushButton_memu_inject_clicked()
{
    inject(memu::Memory::Flash, ui->comboBox_memu_1, ui->lineEdit_memu_1->text());
}

void MainWindow::on_pushButton_memu_inject_2_clicked()
{
    inject(memu::Memory::Pram, ui->comboBox_memu_2, offsetAndData(ui->lineEdit_memu_2, ui->lineEdit_memu_4));
}

void MainWindow::on_pushButton_memu_inject_3_clicked()
{
    inject(memu::Memory::Sram, ui->comboBox_memu_3, offsetAndData(ui->lineEdit_memu_3, ui->lineEdit_memu_5));
}

void MainWindow::on_pushButton_memu_inject_5_clicked()
{
    sendCommand(memu::kInjectCache);
}

void MainWindow::on_pushButton_memu_faultrecord_get_clicked()
{
    sendCommand(memu::kReadFaults);
}

void MainWindow::on_pushButton_memu_faultstatus_clear_clicked()
{
    sendCommand(memu::kClearFaults);
    delayMs(100);
    sendCommand(memu::kClearStatus);
}

void MainWindow::MEMUDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    if (type != memu::FaultRecordReport)
        return;
    m_memu.faults = memu::decodeFaults(payload);
    textview::show(ui->textEdit_memuFaultRecord, memu::describe(m_memu.faults));
}
