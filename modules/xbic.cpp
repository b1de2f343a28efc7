// SPDX-License-Identifier: MIT
#include "modules/xbic.h"

#include "app/animations.h"
#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "app/messagebox.h"
#include "app/textview.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

#include <array>

namespace xbic = protocol::xbic;

namespace {

using Form = Ui::MainWindow;

constexpr char kTranslucent[] = "rgb(255,255,255,100)";

struct Row {
    QGroupBox *Form::*group;
    QLabel *Form::*from;
    QLabel *Form::*to;
    const char *lastColour; // of the path's second label
};

// By checker. The path's end on the last two is no port with a colour of its own: it goes back to translucent white.
// The double underscore is the widget's name.
constexpr std::array rows = std::to_array<Row>({
    {&Form::groupBox_XBIC0, &Form::label_xbic0_k4core0, &Form::label_xbic0_PBRIDGE1, indicator::kGreen},
    {&Form::groupBox_XBIC1, &Form::label_xbic1_k4core0, &Form::label_xbic1_Flash0, indicator::kGreen},
    {&Form::groupBox_XBIC2, &Form::label_xbic2_SRAM3, &Form::label_xbic2_SRAM_BANK0, indicator::kGreen},
    {&Form::groupBox_XBIC3, &Form::label__xbic3_eDMA, &Form::label_xbic3_M4, kTranslucent},
    {&Form::groupBox_XBIC4, &Form::label_xbic4_K7aTCM_3, &Form::label_xbic4_s4_3, kTranslucent},
});
static_assert(rows.size() == xbic::kCheckerCount);

} // namespace

void XbicPage::inject(int checker)
{
    const Row &row = rows.at(static_cast<std::size_t>(checker));
    if (!(m_form.*row.group)->isChecked()) {
        inform(&m_window, QStringLiteral("Please check"),
               QStringLiteral("XBIC%1 is disabled, can not inject fault to XBIC%1.").arg(checker), QMessageBox::Ok);
        return;
    }
    QLabel *const from = m_form.*row.from;
    QLabel *const to = m_form.*row.to;
    animation::blink(from, to, 150, indicator::background(indicator::kRed), indicator::background(indicator::kGreen),
                     3);
    delayMs(2000);
    const QString meaning = QStringLiteral("path of the last injected fault");
    indicator::paint(from, indicator::kGreen, meaning);
    indicator::paint(to, row.lastColour, meaning);
    sendCommand(xbic::injectCommand(checker));
}

void XbicPage::show(const xbic::Enables &enables)
{
    m_enabled = static_cast<quint8>((m_enabled & ~xbic::kCheckerMask) | enables.mask);
    for (std::size_t n = 0; n < rows.size(); ++n)
        display::checked(m_form.*rows[n].group, m_enabled >> n & 1);
}

void XbicPage::show(const xbic::FaultRecord &record)
{
    m_faults = record;
    textview::show(m_form.textEdit_xbicFaultRecord, xbic::describe(m_faults));
}

// clang-format off
void MainWindow::on_pushButton_xbicUpdate_clicked() { sendCommand(xbic::kGetEnables); }
void MainWindow::on_pushButton_xbicDefault_clicked() { sendCommand(xbic::kDefault); }
void MainWindow::on_pushButton_xbic_faultrecord_get_clicked() { sendCommand(xbic::kReadFaults); }
void MainWindow::on_pushButton_xbic_faultstatus_clear_clicked() { sendCommand(xbic::kClearFaults); }
void MainWindow::on_groupBox_XBIC0_clicked(bool checked) { sendCommand(xbic::enableCommand(0, checked)); }
void MainWindow::on_groupBox_XBIC1_clicked(bool checked) { sendCommand(xbic::enableCommand(1, checked)); }
void MainWindow::on_groupBox_XBIC2_clicked(bool checked) { sendCommand(xbic::enableCommand(2, checked)); }
void MainWindow::on_groupBox_XBIC3_clicked(bool checked) { sendCommand(xbic::enableCommand(3, checked)); }
void MainWindow::on_groupBox_XBIC4_clicked(bool checked) { sendCommand(xbic::enableCommand(4, checked)); }
void MainWindow::on_pushButton_xbic_fault1_clicked() { m_pages->xbic.inject(0); }
void MainWindow::on_pushButton_xbic_fault2_clicked() { m_pages->xbic.inject(1); }
void MainWindow::on_pushButton_xbic_fault3_clicked() { m_pages->xbic.inject(2); }
void MainWindow::on_pushButton_xbic_fault4_clicked() { m_pages->xbic.inject(3); }
void MainWindow::on_pushButton_xbic_fault5_clicked() { m_pages->xbic.inject(4); }
// clang-format on

void MainWindow::XBICDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Xbic, type, payload);
}
