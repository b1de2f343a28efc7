// SPDX-License-Identifier: MIT
// Software watchdogs: one a core, from one table.
#include "protocol/swt.h"

#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "link/commandchannel.h"
#include "ui_mainwindow.h"

#include <array>

namespace swt = protocol::swt;

namespace {

using Form = Ui::MainWindow;

struct Row {
    QGroupBox *Form::*group;
    QLabel *Form::*onOff;
    QLineEdit *Form::*mode;
    QLineEdit *Form::*timeout;
    QLineEdit *Form::*window;
};

constexpr std::array rows = std::to_array<Row>({
    {&Form::groupBox_swt0, &Form::label_swt_onoff_0, &Form::lineEdit_swt_0_mode, &Form::lineEdit_swt_timeout0_2,
     &Form::lineEdit_swt_window0_2},
    {&Form::groupBox_swt0_2, &Form::label_swt_onoff_1, &Form::lineEdit_swt_1_mode, &Form::lineEdit_swt_timeout0_7,
     &Form::lineEdit_swt_window0_7},
    {&Form::groupBox_swt0_3, &Form::label_swt_onoff_2, &Form::lineEdit_swt_2_mode, &Form::lineEdit_swt_timeout0_8,
     &Form::lineEdit_swt_window0_8},
});
static_assert(rows.size() == swt::kWatchdogCount);

// A selector beyond the watchdogs speaks of the first one, with a mode that means nothing.
void showStatus(const Form &form, const swt::Status &status)
{
    const bool listed = status.selector < rows.size();
    const Row &row = rows[listed ? status.selector : 0];
    if (listed)
        display::text(form.*row.mode, swt::modeName(status.mode));
    display::later(form.*row.group, [group = form.*row.group, on = status.on] { group->setChecked(on); });
    indicator::paint(form.*row.onOff, status.on ? indicator::kGreen : indicator::kGrey);
    display::text(form.*row.timeout, QStringLiteral("%1ms").arg(status.timeout / swt::kCountsPerMs));
    display::text(form.*row.window,
                  QStringLiteral("%1ms - %2ms")
                      .arg(status.window / swt::kCountsPerMs)
                      .arg(status.window / (swt::kCountsPerMs / 2)));
}

} // namespace

void MainWindow::switchWatchdog(int watchdog, bool on)
{
    sendCommand(swt::switchCommand(watchdog + 1, on));
    indicator::paint(ui.get()->*rows.at(static_cast<std::size_t>(watchdog)).onOff,
                     on ? indicator::kGreen : indicator::kGrey);
}

// clang-format off
void MainWindow::on_groupBox_swt0_clicked(bool checked) { switchWatchdog(0, checked); }
void MainWindow::on_groupBox_swt0_2_clicked(bool checked) { switchWatchdog(1, checked); }
void MainWindow::on_groupBox_swt0_3_clicked(bool checked) { switchWatchdog(2, checked); }
void MainWindow::on_pushButton_swt_Default_clicked() { sendCommand(swt::kDefault); }
void MainWindow::on_pushButton_swt_Update_clicked() {} // asks for nothing, and is to stay so
void MainWindow::on_pushButton_swt_allOn_clicked() { sendCommand(swt::switchCommand(swt::kAll, true)); }
void MainWindow::on_pushButton_swt_allOff_clicked() { sendCommand(swt::switchCommand(swt::kAll, false)); }
void MainWindow::on_pushButton_swt_timeout_2_clicked() { sendCommand(swt::kInjectTimeout); }
void MainWindow::on_pushButton_swt_Invalidacess_2_clicked() { sendCommand(swt::kInjectAccess); }
// clang-format on

void MainWindow::on_pushButton_swt_commandset_clicked()
{
    sendCommand(swt::configureCommand(ui->comboBox_swt_mode->currentIndex(), ui->comboBox_swt_core->currentIndex(),
                                      ui->spinBox_swt_timeout->value()));
}

void MainWindow::SWTDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    if (type == swt::StatusReport)
        showStatus(*ui, swt::decodeStatus(payload));
}
