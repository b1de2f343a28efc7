// SPDX-License-Identifier: MIT
#include "modules/cmu.h"

#include "app/animations.h"
#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "app/messagebox.h"
#include "app/textview.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "protocol/frame.h"
#include "ui_mainwindow.h"

#include <algorithm>
#include <array>

namespace cmu = protocol::cmu;

namespace {

constexpr char kGreenStyle[] = "background-color: rgb(91,215,97);";
constexpr char kRedStyle[] = "background-color: rgb(255, 0, 0);";
constexpr char kGreyStyle[] = "background-color: rgb(200, 200, 200);";
constexpr char kBlueStyle[] = "background-color: rgb(85, 170, 255);";
constexpr char kLimitBlue[] = "rgb(85,170,255)";

using Form = Ui::MainWindow;

struct Row {
    QRadioButton *Form::*enable;
    QLabel *Form::*lower;
    QLabel *Form::*value;
    QLabel *Form::*upper;
};

// By monitor number. The labels of CMU5 say "least" where the clock is LFAST; the group of CMU8 is named LIN_CLK, while
// its loss indicator and its fault speak of the SPI clock: it watches both.
constexpr std::array rows = std::to_array<Row>({
    {&Form::radioButton_cmu0_enable, &Form::label_MCCLK_fmin, &Form::label_MCCLK_fvalue, &Form::label_MCCLK_fmax},
    {&Form::radioButton_cmu1_enable, &Form::label_core0clk_fmin, &Form::label_core0clk_fvalue,
     &Form::label_core0clk_fmax},
    {&Form::radioButton_cmu2_enable, &Form::label_canclk_fmin, &Form::label_canclk_fvalue, &Form::label_canclk_fmax},
    {&Form::radioButton_cmu3_enable, &Form::label_adcclk_fmin, &Form::label_adcclk_fvalue, &Form::label_adcclk_fmax},
    {&Form::radioButton_cmu4_enable, &Form::label_sysclk_fmin, &Form::label_sysclk_fvalue, &Form::label_sysclk_fmax},
    {&Form::radioButton_cmu5_enable, &Form::label_leastclk_fmin, &Form::label_leastclk_fvalue,
     &Form::label_leastclk_fmax},
    {&Form::radioButton_cmu6_enable, &Form::label_clkout0_fmin, &Form::label_clkout0_fvalue, &Form::label_clkout0_fmax},
    {&Form::radioButton_cmu7_enable, &Form::label_sptclk_fmin, &Form::label_sptclk_fvalue, &Form::label_sptclk_fmax},
    {&Form::radioButton_cmu8_enable, &Form::label_linclk_fmin, &Form::label_linclk_fvalue, &Form::label_linclk_fmax},
    {&Form::radioButton_cmu9_enable, &Form::label_core1clk_fmin, &Form::label_core1clk_fvalue,
     &Form::label_core1clk_fmax},
    {&Form::radioButton_cmu10_enable, &Form::label_core2clk_fmin, &Form::label_core2clk_fvalue,
     &Form::label_core2clk_fmax},
    {&Form::radioButton_cmu11_enable, &Form::label_pbridgeclk_fmin, &Form::label_pbridgeclk_fvalue,
     &Form::label_pbridgeclk_fmax},
    {&Form::radioButton_cmu12_enable, &Form::label_acqnclk_fmin, &Form::label_acqnclk_fvalue,
     &Form::label_acqnclk_fmax},
});
static_assert(rows.size() == cmu::kMonitorCount);

// How the limits flash before new ones are sent.
struct Flash {
    int rounds;
    int halfPeriodMs;
    int lastBlue;   // whose limits the last blue step colours
    bool upperOnly; // the lower limit stays as it is
};

constexpr Flash flashOf(int monitor)
{
    Flash flash = monitor <= 2 ? Flash{3, 100, monitor, false} : Flash{2, 150, monitor, false};
    // Three monitors flash in their own way: CMU3 and CMU10 end on their neighbour, CMU6 has one label.
    if (monitor == 3 || monitor == 10)
        flash.lastBlue = monitor - 1;
    if (monitor == 6)
        flash.upperOnly = true;
    return flash;
}

struct Generator {
    bool cmu::ClockStatus::*healthy;
    QLabel *Form::*label;
};

constexpr Generator generators[] = {
    {&cmu::ClockStatus::sdpll, &Form::label_cmu_sdpllstatus}, {&cmu::ClockStatus::pll1, &Form::label_cmu_pll1status},
    {&cmu::ClockStatus::pll0, &Form::label_cmu_pll0status},   {&cmu::ClockStatus::xosc, &Form::label_cmu_xoscstatus},
    {&cmu::ClockStatus::irc, &Form::label_cmu_ircstatus},
};

void showLost(QLabel *label, bool lost, const QString &green, const QString &red)
{
    indicator::state(label, lost ? QStringLiteral("lost") : QStringLiteral("not lost"), lost ? red : green);
}

void showOff(const Form &form, const Row &row, const QString &grey)
{
    display::text(form.*row.value, QStringLiteral("Off"));
    for (auto label : {row.lower, row.value, row.upper})
        indicator::paint(form.*label, grey);
}

void showMonitor(const Form &form, const Row &row, const cmu::CmuRecord &monitor)
{
    display::checked(form.*row.enable, monitor.enabled);
    if (!monitor.enabled) {
        showOff(form, row, indicator::background(indicator::kGrey));
        return;
    }
    display::text(form.*row.value, QString::number(monitor.value));
    display::text(form.*row.lower, QString::number(monitor.lower));
    display::text(form.*row.upper, QString::number(monitor.upper));
    indicator::paint(form.*row.value, indicator::kGreen);
    indicator::paint(form.*row.lower, kLimitBlue);
    indicator::paint(form.*row.upper, kLimitBlue);
    if (monitor.id == 0) {
        showLost(form.label_cmu_xoscloss, monitor.xoscLost, indicator::background(indicator::kGreen),
                 indicator::background(indicator::kRed));
    } else if (monitor.id == 8) {
        showLost(form.label_cmu_spiloss, monitor.spiLost, QString::fromLatin1(kGreenStyle),
                 QString::fromLatin1(kRedStyle));
    }
}

// A value out of its limits: red, green, red, and time to see it.
void showViolation(QLabel *label, const QString &text)
{
    display::text(label, text);
    indicator::paint(label, QString::fromLatin1(kRedStyle));
    delayMs(100);
    indicator::paint(label, QString::fromLatin1(kGreenStyle));
    delayMs(100);
    indicator::paint(label, QString::fromLatin1(kRedStyle));
    delayMs(2000);
}

const Row &rowOf(int monitor)
{
    return rows.at(static_cast<std::size_t>(monitor));
}

} // namespace

void CmuPage::switchMonitor(int monitor, bool on)
{
    const Row &row = rowOf(monitor);
    sendCommand(cmu::enableCommand(monitor, on));
    if (!on) {
        showOff(m_form, row, QString::fromLatin1(kGreyStyle));
        return;
    }
    indicator::paint(m_form.*row.value, QString::fromLatin1(kGreenStyle));
    indicator::paint(m_form.*row.lower, QString::fromLatin1(kBlueStyle));
    indicator::paint(m_form.*row.upper, QString::fromLatin1(kBlueStyle));
}

/// A value at or beyond a new limit is a fault in the making: the user is asked. Before the monitor has reported there is
/// no value to compare.
bool CmuPage::confirmLimits(int monitor)
{
    if (static_cast<std::size_t>(monitor) >= m_records.size())
        return true;
    const int value = m_records[static_cast<std::size_t>(monitor)].value;
    const bool high = value >= m_form.spinBox_cmu_fmax->value();
    if (!high && value > m_form.spinBox_cmu_fmin->value())
        return true;
    const QString text = QStringLiteral("CMU%1 frequency is %2 than %3 frequency.\r\n"
                                        "If you input this frequency you will inject fault.\r\nAre you sure?")
                             .arg(monitor)
                             .arg(high ? QStringLiteral("higher") : QStringLiteral("lower"),
                                  high ? QStringLiteral("maximum") : QStringLiteral("minimum"));
    return ask(&m_window, QStringLiteral("Please check"), text);
}

void CmuPage::setLimits()
{
    const int monitor = m_form.comboBox_cmu_choice->currentIndex();
    if (monitor < 0)
        return;
    if (!(m_form.*rowOf(monitor).enable)->isChecked()) {
        inform(&m_window, QStringLiteral("Please check"),
               QStringLiteral("CMU%1 had been closed. Please open and try again.").arg(monitor), QMessageBox::Ok);
        return;
    }
    // Sends the limits that the question was about, even if others are chosen while they flash.
    const QString command = cmu::limitCommand(m_form.comboBox_cmu_choice->currentText(),
                                              m_form.spinBox_cmu_fmax->value(), m_form.spinBox_cmu_fmin->value());
    if (!confirmLimits(monitor))
        return;
    flashLimits(monitor);
    sendCommand(command);
}

void CmuPage::flashLimits(int monitor)
{
    if (monitor < 0 || monitor >= cmu::kMonitorCount)
        return;
    const Flash how = flashOf(monitor);
    const auto colour = [&](int whose, const char *style) {
        const Row &row = rowOf(whose);
        if (!how.upperOnly)
            indicator::paint(m_form.*row.lower, QString::fromLatin1(style));
        indicator::paint(m_form.*row.upper, QString::fromLatin1(style));
    };
    for (int round = 1; round <= how.rounds; ++round) {
        delayMs(how.halfPeriodMs);
        colour(monitor, kGreyStyle);
        delayMs(how.halfPeriodMs);
        colour(round == how.rounds ? how.lastBlue : monitor, kBlueStyle);
    }
}

void CmuPage::clearFaults()
{
    sendCommand(cmu::kClearFaults);
    m_form.textEdit_cmuFaultRecord->clear();
}

void CmuPage::injectSlowClock()
{
    display::text(m_form.label_MCCLK_fvalue, QStringLiteral("80"));
    animation::blink(m_form.label_MCCLK_fvalue, 150, QString::fromLatin1(kRedStyle),
                     QStringLiteral("background-color: rgb(200,200,200);"), 3);
    delayMs(2000);
    sendCommand(cmu::injectCommand(1));
}

void CmuPage::injectFastClock()
{
    showViolation(m_form.label_adcclk_fvalue, QStringLiteral("160"));
    sendCommand(cmu::injectCommand(2));
}

void CmuPage::injectLostClock()
{
    showViolation(m_form.label_cmu_spiloss, QStringLiteral("SPI clock lost"));
    sendCommand(cmu::injectCommand(3));
}

/// Shows MC_CLK's limits moved past its value: the first record's, where there is one.
void CmuPage::injectLimits(int fault, int lower, int upper)
{
    if (!m_records.empty()) {
        display::text(m_form.label_MCCLK_fmin, QString::number(lower));
        display::text(m_form.label_MCCLK_fmax, QString::number(upper));
    }
    animation::blink(m_form.label_MCCLK_fmin, m_form.label_MCCLK_fmax, 150, indicator::background(indicator::kRed),
                     indicator::background(kLimitBlue), 4);
    animation::blink(m_form.label_MCCLK_fvalue, 150, indicator::background(indicator::kRed),
                     indicator::background(indicator::kGreen), 3);
    delayMs(1500);
    sendCommand(cmu::injectCommand(fault));
}

void CmuPage::injectHighLimits()
{
    const int upper = m_records.empty() ? 0 : m_records.front().upper;
    injectLimits(4, upper, upper + 20);
}

void CmuPage::injectLowLimits()
{
    const int lower = m_records.empty() ? 0 : m_records.front().lower;
    injectLimits(5, lower - 20, lower);
}

void CmuPage::store(const cmu::CmuRecord &monitor)
{
    if (m_records.size() < cmu::kMonitorCount)
        m_records.push_back(monitor);
    else if (monitor.id < cmu::kMonitorCount)
        m_records[monitor.id] = monitor;
}

void CmuPage::show(const cmu::CmuRecord &monitor)
{
    store(monitor);
    if (monitor.value > monitor.upper || monitor.value < monitor.lower) {
        const QString text = monitor.value > monitor.upper
            ? QStringLiteral("CMU%1 frequency is high than maximum frequency, please check.")
            : QStringLiteral("CMU%1 frequency is low than minimum frequency, please check.");
        informOnce(&m_window, QStringLiteral("Error"), text.arg(monitor.id), QMessageBox::Yes);
    } else if (monitor.id < cmu::kMonitorCount) {
        showMonitor(m_form, rows[monitor.id], monitor);
    }
}

void CmuPage::show(const cmu::ClockStatus &clock)
{
    clockStatus = clock;
    for (const Generator &generator : generators)
        indicator::paint(m_form.*generator.label,
                         QString::fromLatin1(clock.*generator.healthy ? kGreenStyle : kRedStyle));
    display::text(m_form.lineEdit_IPCValue, QString::number(static_cast<double>(clock.ircMHz), 'g', 6));
    display::text(m_form.lineEdit_sysClockSource, cmu::clockSourceName(clock.source));
}

void CmuPage::show(const cmu::FaultRecord &record)
{
    textview::show(m_form.textEdit_cmuFaultRecord, cmu::describe(record));
}

void CmuPage::show(const cmu::Text &message)
{
    display::text(m_form.textEdit_cmuFaultRecord, message.text);
}

void MainWindow::on_pushButton_CMU_update_clicked()
{
    sendCommand(cmu::kGetClock);
    blockdelay(100);
    sendCommand(cmu::kGetMonitors);
}

// clang-format off
void MainWindow::on_pushButton_cmustatus_get_clicked() { sendCommand(cmu::kGetClock); }
void MainWindow::on_radioButton_cmu0_enable_clicked(bool checked) { m_pages->cmu.switchMonitor(0, checked); }
void MainWindow::on_radioButton_cmu1_enable_clicked(bool checked) { m_pages->cmu.switchMonitor(1, checked); }
void MainWindow::on_radioButton_cmu2_enable_clicked(bool checked) { m_pages->cmu.switchMonitor(2, checked); }
void MainWindow::on_radioButton_cmu3_enable_clicked(bool checked) { m_pages->cmu.switchMonitor(3, checked); }
void MainWindow::on_radioButton_cmu4_enable_clicked(bool checked) { m_pages->cmu.switchMonitor(4, checked); }
void MainWindow::on_radioButton_cmu5_enable_clicked(bool checked) { m_pages->cmu.switchMonitor(5, checked); }
void MainWindow::on_radioButton_cmu6_enable_clicked(bool checked) { m_pages->cmu.switchMonitor(6, checked); }
void MainWindow::on_radioButton_cmu7_enable_clicked(bool checked) { m_pages->cmu.switchMonitor(7, checked); }
void MainWindow::on_radioButton_cmu8_enable_clicked(bool checked) { m_pages->cmu.switchMonitor(8, checked); }
void MainWindow::on_radioButton_cmu9_enable_clicked(bool checked) { m_pages->cmu.switchMonitor(9, checked); }
void MainWindow::on_radioButton_cmu10_enable_clicked(bool checked) { m_pages->cmu.switchMonitor(10, checked); }
void MainWindow::on_radioButton_cmu11_enable_clicked(bool checked) { m_pages->cmu.switchMonitor(11, checked); }
void MainWindow::on_radioButton_cmu12_enable_clicked(bool checked) { m_pages->cmu.switchMonitor(12, checked); }
void MainWindow::on_pushButton_freqlim_set_clicked() { m_pages->cmu.setLimits(); }
void MainWindow::on_pushButton_cmuDefault_clicked() { sendCommand(cmu::kDefault); }
void MainWindow::on_pushButton_cmu_faultrecord_get_clicked() { sendCommand(cmu::kReadFaults); }
void MainWindow::on_pushButton_cmu_faultstatus_clear_clicked() { m_pages->cmu.clearFaults(); }
void MainWindow::on_pushButton_cmu_fault1_clicked() { m_pages->cmu.injectSlowClock(); }
void MainWindow::on_pushButton_cmu_fault2_clicked() { m_pages->cmu.injectFastClock(); }
void MainWindow::on_pushButton_cmu_fault3_clicked() { m_pages->cmu.injectLostClock(); }
void MainWindow::on_pushButton_cmu_fault4_clicked() { m_pages->cmu.injectHighLimits(); }
void MainWindow::on_pushButton_cmu_fault5_clicked() { m_pages->cmu.injectLowLimits(); }
void MainWindow::modifycmuFreq(int index) { m_pages->cmu.flashLimits(index); }
// clang-format on

// The entries of a fault record are counted by the announced length.
void MainWindow::CMUDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload)
{
    const bool record = type == cmu::FaultRecordReport;
    const int size = static_cast<int>(std::min<uint32_t>(length, protocol::kMaxPayloadSize));
    m_pages->show(protocol::ModuleId::Cmu, type, record ? payload.leftJustified(size, '\0', true) : payload);
}
