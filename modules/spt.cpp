// SPDX-License-Identifier: MIT
#include "modules/spt.h"

#include "app/display.h"
#include "app/mainwindow.h"
#include "app/textview.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

namespace spt = protocol::spt;

void SptPage::show(const spt::FrameCount &frames)
{
    display::text(m_form.lineEdit_spt, QString::number(frames.count));
}

void SptPage::show(const spt::FaultRecord &record)
{
    textview::show(m_form.textEdit_sptFaultRecord, spt::describe(record));
}

// clang-format off
void MainWindow::on_pushButton_spt_oram_clicked() { sendCommand(spt::kInjectOram); }
void MainWindow::on_pushButton_spt_tram_clicked() { sendCommand(spt::kInjectTram); }
void MainWindow::on_pushButton_spt_faultrecord_get_clicked() { sendCommand(spt::kReadFaults); }
void MainWindow::on_pushButton_spt_faultstatus_clear_clicked() { sendCommand(spt::kClearFaults); }
// clang-format on

void MainWindow::SPTDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Spt, type, payload);
}
