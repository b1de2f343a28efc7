// SPDX-License-Identifier: MIT
// Signal processing accelerator: frame counter, its two memory checks, fault record.
#include "protocol/spt.h"

#include "app/display.h"
#include "app/mainwindow.h"
#include "app/textview.h"
#include "link/commandchannel.h"
#include "ui_mainwindow.h"

namespace spt = protocol::spt;

// clang-format off
void MainWindow::on_pushButton_spt_oram_clicked() { sendCommand(spt::kInjectOram); }
void MainWindow::on_pushButton_spt_tram_clicked() { sendCommand(spt::kInjectTram); }
void MainWindow::on_pushButton_spt_faultrecord_get_clicked() { sendCommand(spt::kReadFaults); }
void MainWindow::on_pushButton_spt_faultstatus_clear_clicked() { sendCommand(spt::kClearFaults); }
// clang-format on

void MainWindow::SPTDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    if (type == spt::FrameCountReport)
        display::text(ui->lineEdit_spt, QString::number(spt::decodeFrameCount(payload)));
    else if (type == spt::FaultRecordReport)
        textview::show(ui->textEdit_sptFaultRecord, spt::describe(spt::decodeFaultRecord(payload)));
}
