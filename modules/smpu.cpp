// SPDX-License-Identifier: MIT
#include "modules/smpu.h"

#include "app/display.h"
#include "app/faultlayer.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "app/textview.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "protocol/hextext.h"
#include "ui_mainwindow.h"

#include <array>

namespace smpu = protocol::smpu;

namespace {

using Form = Ui::MainWindow;

struct Row {
    quint8 selector;
    QLabel *Form::*unit;
    QLineEdit *Form::*valid;
    QLineEdit *Form::*start;
    QLineEdit *Form::*end;
    std::array<QLineEdit * Form::*, smpu::kCoreCount> rights;
    QLineEdit *Form::*cache;
};

// Region 7's field is named after a region 1.
constexpr Row rows[] = {
    {0,
     &Form::label_SMPU1,
     &Form::lineEdit_smpu01_Region0,
     &Form::lineEdit_smpu01_Startadress_2,
     &Form::lineEdit_smpu01_Endaddress_2,
     {&Form::lineEdit_smpu01_Core0ReadWrite_2, &Form::lineEdit_smpu01_Core1ReadWrite_2,
      &Form::lineEdit_smpu01_Core2ReadWrite_2},
     &Form::lineEdit_smpu01_Cashe_2},
    {1,
     &Form::label_SMPU1,
     &Form::lineEdit_smpu01_Region1,
     &Form::lineEdit_smpu01_Startadress,
     &Form::lineEdit_smpu01_Endaddress,
     {&Form::lineEdit_smpu01_Core0ReadWrite, &Form::lineEdit_smpu01_Core1ReadWrite,
      &Form::lineEdit_smpu01_Core2ReadWrite},
     &Form::lineEdit_smpu01_Cashe},
    {4,
     &Form::label_SMPU1,
     &Form::lineEdit_smpu01_Region4,
     &Form::lineEdit_smpu01_Startadress_3,
     &Form::lineEdit_smpu01_Endaddress_3,
     {&Form::lineEdit_smpu01_Core0ReadWrite_3, &Form::lineEdit_smpu01_Core1ReadWrite_3,
      &Form::lineEdit_smpu01_Core2ReadWrite_3},
     &Form::lineEdit_smpu01_Cashe_3},
    {7,
     &Form::label_SMPU0,
     &Form::lineEdit_smpu0_Region1,
     &Form::lineEdit_smpu0_Startadress,
     &Form::lineEdit_smpu0_Endaddress,
     {&Form::lineEdit_smpu0_Core0ReadWrite, &Form::lineEdit_smpu0_Core1ReadWrite, &Form::lineEdit_smpu0_Core2ReadWrite},
     &Form::lineEdit_smpu0_Cashe},
    {15,
     &Form::label_SMPU1,
     &Form::lineEdit_smpu01_Region15,
     &Form::lineEdit_smpu01_Startadress_4,
     &Form::lineEdit_smpu01_Endaddress_4,
     {&Form::lineEdit_smpu01_Core0ReadWrite_4, &Form::lineEdit_smpu01_Core1ReadWrite_4,
      &Form::lineEdit_smpu01_Core2ReadWrite_4},
     &Form::lineEdit_smpu01_Cashe_4},
};

void showRow(const Form &form, const Row &row, const smpu::Region &region)
{
    display::text(form.*row.start, protocol::hexText(region.start, 8));
    display::text(form.*row.end, protocol::hexText(region.end, 8));
    indicator::paint(form.*row.unit, region.unitOn ? indicator::kGreen : indicator::kGrey);
    indicator::state(form.*row.valid, region.valid ? QStringLiteral("Valid") : QStringLiteral("Not Valid"),
                     indicator::background(region.valid ? indicator::kGreen : indicator::kGrey));
    for (std::size_t core = 0; core < row.rights.size(); ++core)
        display::text(form.*row.rights[core], smpu::rightsText(region.rights[core]));
    display::text(form.*row.cache, region.cacheInhibit ? QStringLiteral("Inhibit") : QStringLiteral("Enable"));
}

bool forbids(const smpu::Region &region, const smpu::Fault &fault)
{
    const int needed = fault.write ? smpu::WriteOnly : smpu::ReadOnly;
    return fault.master < smpu::kCoreCount && region.start <= fault.address && fault.address <= region.end
        && !(region.rights[fault.master] & needed);
}

// The right that is missing, and the region's limits.
void markRow(FaultLayer::Marks &marks, const FaultLayer &layer, const Form &form, const Row &row,
             const smpu::Fault &fault, int number)
{
    const QRectF limits = layer.place(*(form.*row.start)).united(layer.place(*(form.*row.end)));
    const QRectF right = layer.place(*(form.*row.rights[fault.master]));
    marks.push_back({limits, {}, {}});
    marks.push_back({right, {}, QString::number(number)});
}

} // namespace

SmpuPage::SmpuPage(const Form &form) : m_form(form), m_layer(new FaultLayer(*form.tabWidgetPage3)) {}

void SmpuPage::show(const smpu::Region &region)
{
    for (const Row &row : rows) {
        if (row.selector != region.selector)
            continue;
        showRow(m_form, row, region);
        m_regions[region.selector] = region;
        markFaults();
    }
}

void SmpuPage::show(const smpu::FaultRecord &record)
{
    textview::show(m_form.textEdit_smpuFaultRecord, smpu::describe(record));
    m_faults = record;
    markFaults();
}

void SmpuPage::markFaults()
{
    if (m_faults.faults.empty())
        return m_layer->show(nullptr);
    m_layer->show([this] {
        FaultLayer::Marks marks;
        int number = 0;
        for (const smpu::Fault &fault : m_faults.faults) {
            ++number;
            for (const Row &row : rows) {
                const auto region = m_regions.find(row.selector);
                if (region != m_regions.end() && forbids(region->second, fault))
                    markRow(marks, *m_layer, m_form, row, fault, number);
            }
        }
        return marks;
    });
}

// clang-format off
void MainWindow::on_pushButton_smpuUpdate_clicked() { sendCommand(smpu::kGetRegions); }
void MainWindow::on_pushButton_smpuDefault_clicked() { sendCommand(smpu::kDefault); }
void MainWindow::on_pushButton_smpuALLon_clicked() { sendCommand(smpu::kAllOn); }
void MainWindow::on_pushButton_smpuALLoff_clicked() { sendCommand(smpu::kAllOff); }
void MainWindow::on_pushButton_smpu_fault1_clicked() { sendCommand(smpu::injectCommand(1)); }
void MainWindow::on_pushButton_smpu_fault2_clicked() { sendCommand(smpu::injectCommand(2)); }
void MainWindow::on_pushButton_smpu_fault3_clicked() { sendCommand(smpu::injectCommand(3)); }
void MainWindow::on_pushButton_smpu_fault4_clicked() { sendCommand(smpu::injectCommand(4)); }
void MainWindow::on_pushButton_smpu_fault5_clicked() { sendCommand(smpu::injectCommand(5)); }
void MainWindow::on_pushButton_smpu_fault6_clicked() { sendCommand(smpu::injectCommand(6)); }
void MainWindow::on_pushButton_smpu_faultrecord_get_clicked() { sendCommand(smpu::kReadFaults); }
void MainWindow::on_pushButton_smpu_faultstatus_clear_clicked() { sendCommand(smpu::kClearFaults); }
// clang-format on

void MainWindow::SMPUDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Smpu, type, payload);
}
