// SPDX-License-Identifier: MIT
#include "modules/intcm.h"

#include "app/display.h"
#include "app/mainwindow.h"
#include "app/textview.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

#include <array>

namespace intcm = protocol::intcm;

namespace {

using Form = Ui::MainWindow;

struct Row {
    QLabel *Form::*latency;
    QLabel *Form::*timer;
    QLabel *Form::*irq;
    QLabel *Form::*onOff;
};

// By position in the status report, whatever core and index its records name.
constexpr std::array rows = std::to_array<Row>({
    {&Form::label_intcm_latency1, &Form::label_intcm_timer1, &Form::label_intcm_irq1, &Form::label_intcm_onoff1},
    {&Form::label_intcm_latency2, &Form::label_intcm_timer2, &Form::label_intcm_irq2, &Form::label_intcm_onoff2},
    {&Form::label_intcm_latency3, &Form::label_intcm_timer3, &Form::label_intcm_irq3, &Form::label_intcm_onoff3},
    {&Form::label_intcm_latency4, &Form::label_intcm_timer4, &Form::label_intcm_irq4, &Form::label_intcm_onoff4},
    {&Form::label_intcm_latency5, &Form::label_intcm_timer5, &Form::label_intcm_irq5, &Form::label_intcm_onoff5},
    {&Form::label_intcm_latency6, &Form::label_intcm_timer6, &Form::label_intcm_irq6, &Form::label_intcm_onoff6},
    {&Form::label_intcm_latency7, &Form::label_intcm_timer7, &Form::label_intcm_irq7, &Form::label_intcm_onoff7},
    {&Form::label_intcm_latency8, &Form::label_intcm_timer8, &Form::label_intcm_irq8, &Form::label_intcm_onoff8},
    {&Form::label_intcm_latency9, &Form::label_intcm_timer9, &Form::label_intcm_irq9, &Form::label_intcm_onoff9},
});
static_assert(rows.size() == intcm::kMonitorCount);

// A core's mode is that of its first channel.
constexpr QLabel *Form::*modes[] = {&Form::label_intcm_mode1, &Form::label_intcm_mode2, &Form::label_intcm_mode3};
static_assert(std::size(modes) == intcm::kCoreCount);

void showRow(const Form &form, const Row &row, const intcm::Channel &channel)
{
    display::text(form.*row.latency, QString::number(channel.latency));
    display::text(form.*row.timer, QString::number(channel.timer));
    display::text(form.*row.irq, QString::number(channel.irq));
    display::text(form.*row.onOff, channel.latency == 0 ? QStringLiteral("Off") : QStringLiteral("On"));
}

void showGrid(const Form &form, const std::vector<intcm::Channel> &channels)
{
    for (std::size_t core = 0; core < std::size(modes) && core * intcm::kMonitorsPerCore < channels.size(); ++core)
        display::text(form.*modes[core], intcm::modeName(channels[core * intcm::kMonitorsPerCore].mode));
    for (std::size_t k = 0; k < rows.size() && k < channels.size(); ++k)
        showRow(form, rows[k], channels[k]);
}

} // namespace

void IntcmPage::closeChannel()
{
    sendCommand(
        intcm::closeCommand(m_form.comboBox_intcm_core->currentIndex(), m_form.comboBox_intcm_index->currentIndex()));
}

void IntcmPage::configure()
{
    sendCommand(intcm::configureCommand(
        m_form.comboBox_intcm_mode->currentText(), m_form.comboBox_intcm_core->currentIndex(),
        m_form.comboBox_intcm_index->currentIndex(), m_form.lineEdit_intcm1->text(), m_form.lineEdit_intcm1_2->text()));
    delayMs(200);
    sendCommand(intcm::kGetStatus);
}

void IntcmPage::show(const intcm::Status &status)
{
    m_status = status;
    showGrid(m_form, m_status.channels);
}

void IntcmPage::show(const intcm::FaultRecord &record)
{
    m_faults = record;
    textview::show(m_form.textEdit_intcmFaultRecord, intcm::describe(m_faults));
}

// clang-format off
void MainWindow::on_pushButton_intcm_update_clicked() { sendCommand(intcm::kGetStatus); }
void MainWindow::on_pushButton_intcm_edfault_clicked() { sendCommand(intcm::kDefault); }
void MainWindow::on_pushButton_intcm_inject_k4_clicked() { sendCommand(intcm::injectCommand(0)); }
void MainWindow::on_pushButton_intcm_inject_k70_clicked() { sendCommand(intcm::injectCommand(1)); }
void MainWindow::on_pushButton_intcm_inject_k71_clicked() { sendCommand(intcm::injectCommand(2)); }
void MainWindow::on_pushButton_intcm_faultrecord_get_clicked() { sendCommand(intcm::kReadFaults); }
void MainWindow::on_pushButton_intcm_faultstatus_clear_clicked() { sendCommand(intcm::kClearFaults); }
void MainWindow::on_pushButton_INTCM_close_clicked() { m_pages->intcm.closeChannel(); }
void MainWindow::on_pushButton_intcm_config_clicked() { m_pages->intcm.configure(); }
// clang-format on

void MainWindow::INTCMDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Intcm, type, payload);
}
