// SPDX-License-Identifier: MIT
// Reset escalation: the two switches, their thresholds and counters.
#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "link/commandchannel.h"
#include "protocol/reset.h"
#include "ui_mainwindow.h"

using protocol::reset::Kind;
using protocol::reset::Operation;

namespace {

constexpr char kEnabledStyle[] =
    "QPushButton{background:qlineargradient(spread:pad, x1:0, y1:1, x2:0, y2:0, stop:0 rgb(46,139,87), "
    "stop:1 rgb(91,215,97));border-bottom: 1.5px solid gray;border-right: 1.5px solid gray;border-radius:5px; "
    "color:white;font: bold; }QPushButton:hover{ background:rgb(46,139,87);}";
constexpr char kDisabledStyle[] = "background-color: rgb(200, 200, 200);";

void paintOff(QPushButton *button)
{
    indicator::paint(button, QString::fromLatin1(kDisabledStyle), QString(), indicator::kDarkInk);
}

void toggle(QPushButton *button, Kind kind)
{
    paintOff(button);
    sendCommand(protocol::reset::escalationCommand(kind, Operation::Toggle));
}

void showThreshold(QPushButton *button, QSpinBox *threshold, int value)
{
    if (value != 0)
        indicator::paint(button, QString::fromLatin1(kEnabledStyle));
    else
        paintOff(button);
    display::later(threshold, [threshold, value] { threshold->setValue(value); });
}

} // namespace

void MainWindow::on_pushButton_F_ResetEsca_clicked()
{
    toggle(ui->pushButton_F_ResetEsca, Kind::Functional);
}

void MainWindow::on_pushButton_F_resetEsc_clear_clicked()
{
    sendCommand(protocol::reset::escalationCommand(Kind::Functional, Operation::ClearCounter));
}

void MainWindow::on_pushButton_F_resetEsc_set_clicked()
{
    sendCommand(protocol::reset::thresholdCommand(Kind::Functional, ui->spinBox_F_ResetEsca->value()));
}

void MainWindow::on_pushButton_D_ResetEsca_clicked()
{
    toggle(ui->pushButton_D_ResetEsca, Kind::Destructive);
}

void MainWindow::on_pushButton_D_resetEsc_clear_clicked()
{
    sendCommand(protocol::reset::escalationCommand(Kind::Destructive, Operation::ClearCounter));
}

void MainWindow::on_pushButton_D_resetEsc_set_clicked()
{
    sendCommand(protocol::reset::thresholdCommand(Kind::Destructive, ui->spinBox_D_ResetEsca->value()));
}

void MainWindow::showEscalation(const QByteArray &payload)
{
    const protocol::reset::Escalation thresholds = protocol::reset::decodeEscalation(payload);
    showThreshold(ui->pushButton_F_ResetEsca, ui->spinBox_F_ResetEsca, thresholds.functional);
    showThreshold(ui->pushButton_D_ResetEsca, ui->spinBox_D_ResetEsca, thresholds.destructive);
}
