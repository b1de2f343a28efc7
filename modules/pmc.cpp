// SPDX-License-Identifier: MIT
#include "modules/pmc.h"

#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "app/textview.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

#include <QSignalBlocker>

namespace pmc = protocol::pmc;

namespace {

using Form = Ui::MainWindow;

struct Row {
    pmc::Detector detector;
    std::size_t element; // of the detector report
    QRadioButton *Form::*onOff;
    QLabel *Form::*status;
    QLabel *Form::*selfTest;
};

// The PLL's detector has no bit of its own and follows the core's. The PMC's switch is named after the ADC's.
constexpr Row rows[] = {
    {pmc::CoreLvd, 1, &Form::radioButton_PMC_CORELVD_onoff, &Form::label_PMC_CORELVD, &Form::label_PMC_CORELVD_test_s},
    {pmc::PllLvd, 1, &Form::radioButton_PMC_PLLLVD_onoff, &Form::label_PMC_PLLLVD, &Form::label_PMC_VDD_LV_PLL0_test_s},
    {pmc::CoreHvd, 2, &Form::radioButton_PMC_COREHVD_onoff, &Form::label_PMC_COREHVD, &Form::label_PMC_COREHVD_test_s},
    {pmc::AdcLvd, 3, &Form::radioButton_PMC_ADCELVD_onoff, &Form::label_PMC_ADCELVD, &Form::label_PMC_ADCELVD_test_s},
    {pmc::AdcHvd, 4, &Form::radioButton_PMC_ADCHVD_onoff, &Form::label_PMC_ADCHVD, &Form::label_PMC_ADCHVD_test_s},
    {pmc::FlashLvd, 5, &Form::radioButton_PMC_FlashLVD_onoff, &Form::label_PMC_FlashLVD,
     &Form::label_PMC_FlashLVD_test_s},
    {pmc::IoLvd, 7, &Form::radioButton_PMC_IOLVD_onoff, &Form::label_PMC_IOLVD, &Form::label_PMC_IOLVD_test_s},
    {pmc::PmcLvd, 8, &Form::radioButton_PMC_ADCHVD_onoff_2, &Form::label_PMC_PMCLVD, &Form::label_PMC_PMCLVD_test_s},
};

} // namespace

PmcPage::PmcPage(const Ui::MainWindow &form) : m_form(form), pmcFaultRecords(new FaultList(form.comboBox_PMC_FaultRec))
{
    form.comboBox_PMC_FaultRec->setModel(pmcFaultRecords);
}

void PmcPage::show(const pmc::Detectors &detectors)
{
    pmcDetectorBits = detectors.bits;
    for (const Row &row : rows) {
        const bool on = pmcDetectorBits.at(row.element);
        display::checked(m_form.*row.onOff, on);
        indicator::paint(m_form.*row.status, on ? indicator::kGreen : indicator::kGrey);
    }
}

void PmcPage::show(const pmc::SelfTest &test)
{
    for (const Row &row : rows) {
        if (test.code == 0 || test.code == row.detector)
            indicator::paint(m_form.*row.selfTest, test.passed ? indicator::kGreen : indicator::kRed);
    }
}

void PmcPage::show(const pmc::FaultRecord &record)
{
    QStringList texts;
    for (const pmc::FaultCode &fault : record.faults)
        texts.append(pmc::faultText(fault.code));
    display::later(m_form.comboBox_PMC_FaultRec, display::Aspect::Content, [this, texts] {
        const QSignalBlocker quiet(m_form.comboBox_PMC_FaultRec); // the box beside it shows byte 1's code
        pmcFaultRecords->setTexts(texts);
    });
    textview::show(m_form.textBrowser_PMC_allFaultRec, pmc::describe(record));
    display::text(m_form.textBrowser_PMC_FaultRec, record.shown ? pmc::faultText(*record.shown) : QString());
}

void PmcPage::select(int row)
{
    if (row >= 0)
        display::text(m_form.textBrowser_PMC_FaultRec, pmcFaultRecords->text(row));
}

void PmcPage::reset()
{
    for (const Row &row : rows)
        indicator::paint(m_form.*row.selfTest, indicator::kGrey);
}

// clang-format off
void MainWindow::on_pushButton_PMC_getstatus_clicked() { sendCommand(pmc::kGetStatus); }
void MainWindow::on_pushButton_PMC_dafault_clicked() { sendCommand(pmc::kDefault); }
void MainWindow::on_pushButton_PMC_allSTest_clicked() { sendCommand(pmc::kAllSelfTests); }
void MainWindow::on_pushButton_PMC_FI_TempSensor_clicked() { sendCommand(pmc::injectCommand(1)); }
void MainWindow::on_pushButton_PMC_FI_HVD_clicked() { sendCommand(pmc::injectCommand(2)); }
void MainWindow::on_pushButton_PMC_FI_LVD_clicked() { sendCommand(pmc::injectCommand(3)); }
void MainWindow::on_pushButton_PMC_FI_LVDSelfTest_clicked() { sendCommand(pmc::injectCommand(4)); }
void MainWindow::on_pushButton_PMC_GetFault_clicked() { sendCommand(pmc::kReadFaults); }
void MainWindow::on_pushButton_PMC_ClearFault_clicked() { sendCommand(pmc::kClearFaults); }
void MainWindow::on_pushButton_PMC_PLLLVD_selftest_clicked() { sendCommand(pmc::selfTestCommand(pmc::PllLvd)); }
void MainWindow::on_pushButton_PMC_CORELVD_stest_clicked() { sendCommand(pmc::selfTestCommand(pmc::CoreLvd)); }
void MainWindow::on_pushButton_PMC_CORELVD_stest_2_clicked() { sendCommand(pmc::selfTestCommand(pmc::CoreHvd)); }
void MainWindow::on_pushButton_PMC_ADCELVD_stest_clicked() { sendCommand(pmc::selfTestCommand(pmc::AdcLvd)); }
void MainWindow::on_pushButton_PMC_ADCHVD_stest_clicked() { sendCommand(pmc::selfTestCommand(pmc::AdcHvd)); }
void MainWindow::on_pushButton_PMC_PMCLVD_stest_clicked() { sendCommand(pmc::selfTestCommand(pmc::PmcLvd)); }
void MainWindow::on_pushButton_PMC_FlashLVD_stest_clicked() { sendCommand(pmc::selfTestCommand(pmc::FlashLvd)); }
void MainWindow::on_pushButton_PMC_IOLVD_stest_clicked() { sendCommand(pmc::selfTestCommand(pmc::IoLvd)); }
void MainWindow::on_radioButton_PMC_PLLLVD_onoff_clicked(bool checked) { sendCommand(pmc::switchCommand(pmc::PllLvd, checked)); }
void MainWindow::on_radioButton_PMC_CORELVD_onoff_clicked(bool checked) { sendCommand(pmc::switchCommand(pmc::CoreLvd, checked)); }
void MainWindow::on_radioButton_PMC_COREHVD_onoff_clicked(bool checked) { sendCommand(pmc::switchCommand(pmc::CoreHvd, checked)); }
void MainWindow::on_radioButton_PMC_ADCELVD_onoff_clicked(bool checked) { sendCommand(pmc::switchCommand(pmc::AdcLvd, checked)); }
void MainWindow::on_radioButton_PMC_ADCHVD_onoff_clicked(bool checked) { sendCommand(pmc::switchCommand(pmc::AdcHvd, checked)); }
void MainWindow::on_radioButton_PMC_ADCHVD_onoff_2_clicked(bool checked) { sendCommand(pmc::switchCommand(pmc::PmcLvd, checked)); }
void MainWindow::on_radioButton_PMC_FlashLVD_onoff_clicked(bool checked) { sendCommand(pmc::switchCommand(pmc::FlashLvd, checked)); }
void MainWindow::on_radioButton_PMC_IOLVD_onoff_clicked(bool checked) { sendCommand(pmc::switchCommand(pmc::IoLvd, checked)); }
void MainWindow::on_pushButton_pmc_allon_clicked() { sendCommand(pmc::switchCommand(pmc::AllDetectors, true)); }
void MainWindow::on_pushButton_pmc_alloff_clicked() { sendCommand(pmc::switchCommand(pmc::AllDetectors, false)); }
void MainWindow::on_comboBox_PMC_FaultRec_currentIndexChanged(int index) { m_pages->pmc.select(index); }
void MainWindow::PMC_Status_Reset() { m_pages->pmc.reset(); }
// clang-format on

void MainWindow::PMCDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Pmc, type, payload);
}
