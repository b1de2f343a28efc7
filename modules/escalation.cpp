// SPDX-License-Identifier: MIT
#include "modules/escalation.h"

#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

namespace reset = protocol::reset;
using reset::Kind;

namespace {

constexpr char kEnabledStyle[] =
    "QPushButton{background:qlineargradient(spread:pad, x1:0, y1:1, x2:0, y2:0, stop:0 rgb(46,139,87), "
    "stop:1 rgb(91,215,97));border-bottom: 1.5px solid gray;border-right: 1.5px solid gray;border-radius:5px; "
    "color:white;font: bold; }QPushButton:hover{ background:rgb(46,139,87);}";
constexpr char kDisabledStyle[] = "background-color: rgb(200, 200, 200);";

void paint(QPushButton *button, bool on)
{
    if (on)
        indicator::paint(button, QString::fromLatin1(kEnabledStyle));
    else
        indicator::paint(button, QString::fromLatin1(kDisabledStyle), QString(), indicator::kDarkInk);
}

} // namespace

QPushButton *EscalationPanel::button(Kind kind) const
{
    return kind == Kind::Functional ? m_form.pushButton_F_ResetEsca : m_form.pushButton_D_ResetEsca;
}

QSpinBox *EscalationPanel::threshold(Kind kind) const
{
    return kind == Kind::Functional ? m_form.spinBox_F_ResetEsca : m_form.spinBox_D_ResetEsca;
}

void EscalationPanel::toggle(Kind kind)
{
    paint(button(kind), false);
    sendCommand(reset::escalationCommand(kind, reset::Operation::Toggle));
}

void EscalationPanel::clearCounter(Kind kind)
{
    sendCommand(reset::escalationCommand(kind, reset::Operation::ClearCounter));
}

void EscalationPanel::setThreshold(Kind kind)
{
    sendCommand(reset::thresholdCommand(kind, threshold(kind)->value()));
}

void EscalationPanel::show(const reset::Escalation &thresholds)
{
    for (const auto &[kind, value] :
         {std::pair(Kind::Functional, thresholds.functional), std::pair(Kind::Destructive, thresholds.destructive)}) {
        paint(button(kind), value != 0);
        display::value(threshold(kind), value);
    }
}

// clang-format off
void MainWindow::on_pushButton_F_ResetEsca_clicked() { m_pages->escalation.toggle(Kind::Functional); }
void MainWindow::on_pushButton_F_resetEsc_clear_clicked() { m_pages->escalation.clearCounter(Kind::Functional); }
void MainWindow::on_pushButton_F_resetEsc_set_clicked() { m_pages->escalation.setThreshold(Kind::Functional); }
void MainWindow::on_pushButton_D_ResetEsca_clicked() { m_pages->escalation.toggle(Kind::Destructive); }
void MainWindow::on_pushButton_D_resetEsc_clear_clicked() { m_pages->escalation.clearCounter(Kind::Destructive); }
void MainWindow::on_pushButton_D_resetEsc_set_clicked() { m_pages->escalation.setThreshold(Kind::Destructive); }
// clang-format on
