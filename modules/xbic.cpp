// SPDX-License-Identifier: MIT
#include "modules/xbic.h"

#include "app/animations.h"
#include "app/display.h"
#include "app/faultlayer.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "app/messagebox.h"
#include "app/textview.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

#include <algorithm>
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
    QLabel *Form::*bar;     // the switch between the two
    quint8 master, slave;   // as the fault record numbers them
};

// By checker. The path's end on the last two is no port with a colour of its own: it goes back to translucent white.
// The double underscore is the widget's name.
constexpr std::array rows = std::to_array<Row>({
    {&Form::groupBox_XBIC0, &Form::label_xbic0_k4core0, &Form::label_xbic0_PBRIDGE1, indicator::kGreen,
     &Form::label_xbic0_bar, 0, 3},
    {&Form::groupBox_XBIC1, &Form::label_xbic1_k4core0, &Form::label_xbic1_Flash0, indicator::kGreen,
     &Form::label_xbic1_bar, 0, 0},
    {&Form::groupBox_XBIC2, &Form::label_xbic2_SRAM3, &Form::label_xbic2_SRAM_BANK0, indicator::kGreen,
     &Form::label_xbic2_bar, 3, 0},
    {&Form::groupBox_XBIC3, &Form::label__xbic3_eDMA, &Form::label_xbic3_M4, kTranslucent, &Form::label_xbic3_bar, 4,
     4},
    {&Form::groupBox_XBIC4, &Form::label_xbic4_K7aTCM_3, &Form::label_xbic4_s4_3, kTranslucent, &Form::label_xbic4_bar,
     4, 6},
});
static_assert(rows.size() == xbic::kCheckerCount);

// From the master down to the switch, along it, down to the slave; on XBIC4 the first label is the upper one, too.
FaultMark pathOf(const FaultLayer &layer, const Form &form, const Row &row)
{
    const bool down = layer.place(*(form.*row.from)).top() < layer.place(*(form.*row.to)).top();
    const QRectF upper = layer.place(*(form.*(down ? row.from : row.to)));
    const QRectF lower = layer.place(*(form.*(down ? row.to : row.from)));
    const double middle = layer.place(*(form.*row.bar)).center().y();
    const QPolygonF way(QVector<QPointF>{{upper.center().x(), upper.bottom()},
                                         {upper.center().x(), middle},
                                         {lower.center().x(), middle},
                                         {lower.center().x(), lower.top()}});
    return {{}, way, QStringLiteral("M%1 \u2192 S%2").arg(row.master).arg(row.slave)};
}

FaultMark outlineOf(const FaultLayer &layer, const QLabel &label)
{
    return {layer.place(label), {}, {}};
}

} // namespace

XbicPage::XbicPage(const Form &form, QWidget &window)
    : m_form(form),
      m_window(window),
      m_layer(new FaultLayer(*form.tabWidgetPage2))
{
}

void XbicPage::clearFaults()
{
    m_injected = 0;
    m_faults = {};
    showPaths();
    sendCommand(xbic::kClearFaults);
}

// Of the faults that the record names, and of those just injected.
void XbicPage::showPaths()
{
    std::vector<const Row *> shown;
    for (std::size_t checker = 0; checker < rows.size(); ++checker) {
        const Row &row = rows[checker];
        const bool recorded =
            std::any_of(m_faults.faults.begin(), m_faults.faults.end(), [&](const xbic::Fault &fault) {
                return fault.master == row.master && fault.slave == row.slave;
            });
        if (recorded || m_injected >> checker & 1)
            shown.push_back(&row);
    }
    if (shown.empty())
        return m_layer->show(nullptr);
    m_layer->show([this, shown] {
        FaultLayer::Marks marks;
        for (const Row *row : shown) {
            marks.push_back(outlineOf(*m_layer, *(m_form.*row->from)));
            marks.push_back(outlineOf(*m_layer, *(m_form.*row->to)));
            marks.push_back(pathOf(*m_layer, m_form, *row));
        }
        return marks;
    });
}

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
    m_injected = static_cast<quint8>(m_injected | 1U << checker);
    showPaths();
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
    showPaths();
}

// clang-format off
void MainWindow::on_pushButton_xbicUpdate_clicked() { sendCommand(xbic::kGetEnables); }
void MainWindow::on_pushButton_xbicDefault_clicked() { sendCommand(xbic::kDefault); }
void MainWindow::on_pushButton_xbic_faultrecord_get_clicked() { sendCommand(xbic::kReadFaults); }
void MainWindow::on_pushButton_xbic_faultstatus_clear_clicked() { m_pages->xbic.clearFaults(); }
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
