// SPDX-License-Identifier: MIT
#include "modules/swt.h"

#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "modules/servicewindow.h"
#include "ui_mainwindow.h"

#include <QGridLayout>

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

// Below the fields of the watchdog, where it takes the room that is left.
ServiceWindow *addWindow(QGroupBox &group)
{
    auto *window = new ServiceWindow;
    window->setObjectName(QStringLiteral("serviceWindow_%1").arg(group.title()));
    window->setAccessibleName(QStringLiteral("Service window of %1").arg(group.title()));
    auto *layout = static_cast<QGridLayout *>(group.layout());
    layout->addWidget(window, layout->rowCount(), 0, 1, 2);
    layout->setRowStretch(layout->rowCount() - 1, 1);
    return window;
}

} // namespace

SwtPage::SwtPage(const Ui::MainWindow &form)
    : m_form(form),
      m_windows({addWindow(*form.groupBox_swt0), addWindow(*form.groupBox_swt0_2), addWindow(*form.groupBox_swt0_3)})
{
}

void SwtPage::switchWatchdog(int watchdog, bool on)
{
    sendCommand(swt::switchCommand(watchdog + 1, on));
    indicator::paint(m_form.*rows.at(static_cast<std::size_t>(watchdog)).onOff,
                     on ? indicator::kGreen : indicator::kGrey);
}

void SwtPage::configure()
{
    sendCommand(swt::configureCommand(m_form.comboBox_swt_mode->currentIndex(),
                                      m_form.comboBox_swt_core->currentIndex(), m_form.spinBox_swt_timeout->value()));
}

// Selector 3 updates the first watchdog, but not its mode.
void SwtPage::show(const swt::Status &status)
{
    const bool listed = status.selector < rows.size();
    const std::size_t watchdog = listed ? status.selector : 0;
    const Row &row = rows[watchdog];
    if (listed)
        display::text(m_form.*row.mode, swt::modeName(status.mode));
    display::checked(m_form.*row.group, status.on);
    indicator::paint(m_form.*row.onOff, status.on ? indicator::kGreen : indicator::kGrey);
    display::text(m_form.*row.timeout, QStringLiteral("%1ms").arg(status.timeout / swt::kCountsPerMs));
    display::text(m_form.*row.window,
                  QStringLiteral("%1ms - %2ms")
                      .arg(status.window / swt::kCountsPerMs)
                      .arg(status.window / (swt::kCountsPerMs / 2)));
    const ServiceWindow::Times times = {status.window / swt::kCountsPerMs, status.window / (swt::kCountsPerMs / 2),
                                        status.timeout / swt::kCountsPerMs};
    display::later(m_windows.at(watchdog), display::Aspect::Content,
                   [window = m_windows.at(watchdog), times, on = status.on] { window->show(times, on); });
}

// clang-format off
void MainWindow::on_groupBox_swt0_clicked(bool checked) { m_pages->swt.switchWatchdog(0, checked); }
void MainWindow::on_groupBox_swt0_2_clicked(bool checked) { m_pages->swt.switchWatchdog(1, checked); }
void MainWindow::on_groupBox_swt0_3_clicked(bool checked) { m_pages->swt.switchWatchdog(2, checked); }
void MainWindow::on_pushButton_swt_Default_clicked() { sendCommand(swt::kDefault); }
void MainWindow::on_pushButton_swt_Update_clicked() {} // deliberately sends nothing
void MainWindow::on_pushButton_swt_allOn_clicked() { sendCommand(swt::switchCommand(swt::kAll, true)); }
void MainWindow::on_pushButton_swt_allOff_clicked() { sendCommand(swt::switchCommand(swt::kAll, false)); }
void MainWindow::on_pushButton_swt_timeout_2_clicked() { sendCommand(swt::kInjectTimeout); }
void MainWindow::on_pushButton_swt_Invalidacess_2_clicked() { sendCommand(swt::kInjectAccess); }
void MainWindow::on_pushButton_swt_commandset_clicked() { m_pages->swt.configure(); }
// clang-format on

void MainWindow::SWTDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Swt, type, payload);
}
