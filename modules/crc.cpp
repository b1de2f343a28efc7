// SPDX-License-Identifier: MIT
#include "modules/crc.h"

#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

namespace crc = protocol::crc;

CrcPage::CrcPage(const Ui::MainWindow &form) : m_form(form), m_log(form.textBrowser_CRC_calData) {}

void CrcPage::calculate()
{
    indicator::state(m_form.label_CRC_status, QStringLiteral("Wait"), indicator::background(indicator::kGrey));
    m_form.lineEdit_CRC_calTime->clear();
    m_form.textBrowser_CRC_calResult->clear();
    delayMs(300);
    sendCommand(crc::command(m_form.comboBox_CRC_polynomial->currentIndex(),
                             m_form.comboBox_CRC_instance->currentIndex(),
                             m_form.comboBox_CRC_channel->currentIndex()));
}

void CrcPage::show(const crc::Result &result)
{
    const crc::Condition condition = {
        m_form.comboBox_CRC_polynomial->currentIndex(), m_form.comboBox_CRC_polynomial->currentText(),
        m_form.comboBox_CRC_instance->currentText(), m_form.comboBox_CRC_channel->currentText()};
    // Appending lays out the preceding paragraph again; an empty one spares the long one of the data.
    const QStringList lines = crc::describe(result, condition);
    const int tail = lines.size() - 2;
    m_log.append(QStringList(lines.mid(0, tail)).join(QLatin1Char('\n')));
    m_log.append(QStringList(lines.mid(tail)).join(QLatin1Char('\n')));
    display::text(m_form.textBrowser_CRC_calResult, crc::valueText(result.value, condition.polynomial));
    display::text(m_form.lineEdit_CRC_calTime, crc::timeText(result.time));
    indicator::state(m_form.label_CRC_status, QStringLiteral("Successful"), indicator::background(indicator::kGreen));
}

void MainWindow::on_pushButton_CRC_set_clicked()
{
    m_pages->crc.calculate();
}

void MainWindow::CRCDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Crc, type, payload);
}
