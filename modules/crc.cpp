// SPDX-License-Identifier: MIT
// Checksum unit: a request, and the log of results.
#include "protocol/crc.h"

#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "app/textview.h"
#include "link/commandchannel.h"
#include "ui_mainwindow.h"

#include <utility>

namespace crc = protocol::crc;

void MainWindow::on_pushButton_CRC_set_clicked()
{
    ui->label_CRC_status->setText(QStringLiteral("Wait"));
    indicator::paint(ui->label_CRC_status, indicator::kGrey);
    ui->lineEdit_CRC_calTime->clear();
    ui->textBrowser_CRC_calResult->clear();
    delayMs(300);
    const QString command =
        crc::command(ui->comboBox_CRC_polynomial->currentIndex(), ui->comboBox_CRC_instance->currentIndex(),
                     ui->comboBox_CRC_channel->currentIndex());
    sendCommand(command);
}

// The condition logged and the width of the result follow the selectors as they stand now, not as they stood then.
void MainWindow::CRCDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    if (type != crc::ResultReport)
        return;
    const crc::Result result = crc::decodeResult(payload);
    const crc::Condition condition = {
        ui->comboBox_CRC_polynomial->currentIndex(), ui->comboBox_CRC_polynomial->currentText(),
        ui->comboBox_CRC_instance->currentText(), ui->comboBox_CRC_channel->currentText()};
    m_crcLog << crc::describe(result, condition).join(QLatin1Char('\n'));
    display::later(ui->textBrowser_CRC_calData,
                   [this] { textview::append(*ui->textBrowser_CRC_calData, std::exchange(m_crcLog, {})); });
    display::text(ui->textBrowser_CRC_calResult, crc::valueText(result.value, condition.polynomial));
    display::text(ui->lineEdit_CRC_calTime, crc::timeText(result.time));
    display::text(ui->label_CRC_status, QStringLiteral("Successful"));
    indicator::paint(ui->label_CRC_status, indicator::kGreen);
}
