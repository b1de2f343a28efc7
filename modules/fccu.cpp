// SPDX-License-Identifier: MIT
// Fault collection and control unit: its state, the fault shown, the log and the history.
#include "protocol/fccu.h"

#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "app/textview.h"
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

void MainWindow::on_comboBox_FaultID_currentIndexChanged(int index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= m_fccu.fccuHistory.size())
        return;
    const FccuFaultRecord &record = m_fccu.fccuHistory[static_cast<std::size_t>(index)];
    display::text(ui->lineEdit_FCCUsource, record.source);
    display::text(ui->textBrowser_fccu, record.description);
    display::text(ui->lineEdit_FCCUdetectime, timeText(record.time));
}

void MainWindow::fccuRenew()
{
    display::text(ui->label_FCCU_status, QStringLiteral("NORMAL"));
    indicator::paint(ui->label_FCCU_status, indicator::kGreen);
}

void MainWindow::FCCUDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    if (type == fccu::StateReport)
        showFccuState(fccu::decodeState(payload));
    else if (type == fccu::FaultReport)
        showFault(payload);
}

void MainWindow::showFccuState(uint8_t state)
{
    if (state == fccu::Normal) {
        QTimer::singleShot(kNormalDelayMs, this, &MainWindow::fccuRenew);
        return;
    }
    for (const StateRow &row : stateRows) {
        if (row.state == state) {
            display::text(ui->label_FCCU_status, QString::fromLatin1(row.text));
            indicator::paint(ui->label_FCCU_status, QString::fromLatin1(row.style));
        }
    }
}

void MainWindow::showFault(const QByteArray &payload)
{
    const fccu::FaultEvent event = fccu::decodeFault(payload);
    m_fccu.log.append(fccu::describe(event).join(QLatin1Char('\n')));
    display::later(ui->textBrowser_fccurecord,
                   [this] { textview::append(*ui->textBrowser_fccurecord, std::exchange(m_fccu.log, {})); });

    const fccu::FaultText text = fccu::recordedText(event.id);
    m_fccu.fccuHistory.push_back({event.id, event.time, text.source, text.description});
    ui->comboBox_FaultID->addItem(fccu::titleOf(event.id));
    ui->comboBox_FaultID->setCurrentIndex(ui->comboBox_FaultID->count() - 1);
}
