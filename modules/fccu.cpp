// SPDX-License-Identifier: MIT
#include "modules/fccu.h"

#include "app/accessibility.h"
#include "app/display.h"
#include "app/frameflash.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

#include <QTimer>

#include <utility>

namespace fccu = protocol::fccu;

namespace {

constexpr int kNormalDelayMs = 800;

struct StateRow {
    fccu::State state;
    const char *text;
    const char *style;
};

// NORMAL is missing: it is shown late, by a timer.
constexpr StateRow stateRows[] = {
    {fccu::Config, "CONFIG", "background-color: rgb(255,185,15)"},
    {fccu::Alarm, "ALARM", "background-color: rgb(255, 255, 00);"},
    {fccu::Fault, "FAULT", "background-color: rgb(255,0,0)"},
};

QString timeText(float time)
{
    return QString::number(static_cast<double>(time), 'f', 2);
}

} // namespace

FccuPage::FccuPage(const Ui::MainWindow &form, QWidget &window)
    : m_form(form),
      m_window(window),
      m_flash(new FrameFlash(*form.groupBox_FCCU)),
      m_log(form.textBrowser_fccurecord),
      m_history(new FaultHistory(form.comboBox_FaultID))
{
    form.comboBox_FaultID->setModel(m_history);
}

void FccuPage::showNormal()
{
    indicator::state(m_form.label_FCCU_status, QStringLiteral("NORMAL"), indicator::background(indicator::kGreen));
    announce();
}

// When it is shown, and once for each new state.
void FccuPage::announce()
{
    display::later(m_form.label_FCCU_status, display::Aspect::State, [this] {
        if (std::exchange(m_announced, m_form.label_FCCU_status->text()) != m_form.label_FCCU_status->text())
            accessibility::alert(m_form.label_FCCU_status);
    });
}

// Each NORMAL gets a timer of its own; none is stopped.
void FccuPage::show(const fccu::UnitState &unit)
{
    if (unit.state == fccu::Normal) {
        auto *timer = new QTimer(&m_window);
        timer->setSingleShot(true);
        QObject::connect(timer, &QTimer::timeout, timer, [this, timer] {
            showNormal();
            timer->deleteLater();
        });
        timer->start(kNormalDelayMs);
        return;
    }
    for (const StateRow &row : stateRows) {
        if (row.state == unit.state)
            indicator::state(m_form.label_FCCU_status, QString::fromLatin1(row.text), QString::fromLatin1(row.style));
    }
    announce();
}

void FccuPage::show(const fccu::FaultEvent &fault)
{
    m_log.append(fccu::describe(fault).join(QLatin1Char('\n')));
    const fccu::FaultText text = fccu::recordedText(fault.id);
    m_newFaults.push_back({fault.id, fault.time, text.source, text.description});
    display::later(m_form.comboBox_FaultID, display::Aspect::Content, [this] { addFaults(); });
}

// The selection shows the record.
void FccuPage::addFaults()
{
    m_history->append(std::exchange(m_newFaults, {}));
    m_form.comboBox_FaultID->setCurrentIndex(m_history->rowCount() - 1);
    m_flash->flash();
}

void FccuPage::select(int row)
{
    if (row < 0 || row >= m_history->rowCount())
        return;
    const FccuFaultRecord &record = m_history->at(row);
    display::text(m_form.lineEdit_FCCUsource, record.source);
    display::text(m_form.textBrowser_fccu, record.description);
    display::text(m_form.lineEdit_FCCUdetectime, timeText(record.time));
}

void FccuPage::clearLog()
{
    m_log.clear();
}

// clang-format off
void MainWindow::on_comboBox_FaultID_currentIndexChanged(int index) { m_pages->fccu.select(index); }
void MainWindow::fccuRenew() { m_pages->fccu.showNormal(); }
// clang-format on

void MainWindow::FCCUDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Fccu, type, payload);
}
