// SPDX-License-Identifier: MIT
#include "modules/vg5k.h"

#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

namespace vg5k = protocol::vg5k;

namespace {

using Form = Ui::MainWindow;

// By bit of the status byte; a set bit means not good and is grey.
constexpr QLabel *Form::*regulators[] = {
    &Form::label_vg5kstatus_VLDO1,  &Form::label_vg5kstatus_VLDO2,  &Form::label_vg5kstatus_VBuck3,
    &Form::label_vg5kstatus_VBuck2, &Form::label_vg5kstatus_VBuck1, &Form::label_vg5kstatus_VBoost,
    &Form::label_vg5kstatus_VPRE,   &Form::label_vg5kstatus_spi,
};
static_assert(std::size(regulators) == 8);

struct StateRow {
    const char *text = nullptr;
    const char *colour = nullptr;
    const char *ink = indicator::kNoInk; // black
};

constexpr StateRow states[] = {
    {"INIT_FS", "rgb(0,0,0)", indicator::kWhiteInk},
    {"WAIT_ABIST2", "rgb(72,61,139)", indicator::kWhiteInk},
    {"ABIST2", "rgb(30,144,255)"},
    {"ASSERT_FS0B", "rgb(218,165,32)"},
    {"NORMAL_FS", "rgb(91,215,97)"},
};
static_assert(std::size(states) == vg5k::NormalFs + 1);

constexpr StateRow unknownState = {"Unknown", "rgb(200,200,200)"};

} // namespace

void Vg5kPage::showRegulators(quint8 bits)
{
    for (std::size_t bit = 0; bit < std::size(regulators); ++bit)
        indicator::paint(m_form.*regulators[bit], bits >> bit & 1 ? indicator::kGrey : indicator::kGreen);
}

void Vg5kPage::showState(const vg5k::Report &report)
{
    const StateRow &row = report.hasValue && report.value < std::size(states) ? states[report.value] : unknownState;
    indicator::state(m_form.lineEdit_vg5k_Fail, QString::fromLatin1(row.text), indicator::background(row.colour),
                     row.ink);
}

void Vg5kPage::showDebug(bool debug)
{
    indicator::state(m_form.lineEdit_vg5k_debug,
                     debug ? QStringLiteral("In DEBUG mode") : QStringLiteral("NOT in DEBUG mode"),
                     indicator::background(debug ? indicator::kGrey : indicator::kGreen));
}

void Vg5kPage::show(const vg5k::Report &report)
{
    switch (report.item) {
    case vg5k::Regulators:
        showRegulators(report.value);
        break;
    case vg5k::FailSafeState:
        showState(report);
        break;
    case vg5k::DebugMode:
        showDebug(report.value & 1);
        break;
    case vg5k::FaultCounter:
        display::value(m_form.lcdNumber_vg5k_Fault, report.value);
        break;
    default:
        break;
    }
}

void MainWindow::VG5kDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Vg5k, type, payload);
}
