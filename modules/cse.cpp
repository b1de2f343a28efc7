// SPDX-License-Identifier: MIT
// Cryptographic services engine: commands built from the inputs, engine state, results.
#include "protocol/cse.h"

#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "app/messagebox.h"
#include "app/singleline.h"
#include "link/commandchannel.h"
#include "ui_mainwindow.h"

namespace cse = protocol::cse;

namespace {

constexpr int kIdleAfterMs = 1200;

void send(QLatin1String command, const QString &text = QString())
{
    sendCommand(command + text);
}

// Tells what the length must be where it is not.
bool hasLength(QWidget *parent, const QString &text, bool multiple)
{
    const int length = text.size();
    if (multiple ? length % cse::kBlockDigits == 0 : length == cse::kBlockDigits)
        return true;
    inform(parent, MainWindow::tr("Please check"),
           QStringLiteral(u"Invalid input, current input legth is %1. It must be %2, format：HEX.")
               .arg(length)
               .arg(multiple ? QStringLiteral("N*32") : QStringLiteral("32")),
           QMessageBox::Ok);
    return false;
}

// Shows how many characters `input` holds, beside it.
void count(QPlainTextEdit *input, QLabel *label, const QString &wanted)
{
    keepToOneLine(input);
    const auto show = [input, label, wanted] { label->setText(QString::number(input->toPlainText().size()) + wanted); };
    QObject::connect(input, &QPlainTextEdit::textChanged, label, show);
    show();
}

QString hex(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex().toUpper());
}

} // namespace

void MainWindow::prepareCse()
{
    count(ui->plainTextEdit_cse_Plaintext_input, ui->label_cse_Plaintext_count, QString());
    count(ui->plainTextEdit_cse_Cyphertext_input, ui->label_cse_Cyphertext_count, QStringLiteral(" / N*32"));
    count(ui->plainTextEdit_cse_Message_input, ui->label_cse_Message_count, QString());
    count(ui->plainTextEdit_cse_CMAC_input, ui->label_cse_CMAC_count, QStringLiteral(" / 32"));
    count(ui->plainTextEdit_cse_Entropy_input, ui->label_cse_Entropy_count, QStringLiteral(" / 32"));
}

void MainWindow::on_pushButton_cse_loadKey_clicked()
{
    send(cse::kLoadKeys);
}

void MainWindow::on_pushButton_cse_Encryption1_clicked()
{
    send(cse::kEncryptEcb, ui->plainTextEdit_cse_Plaintext_input->toPlainText());
}

void MainWindow::on_pushButton_cse_Encryption2_clicked()
{
    send(cse::kEncryptCbc, ui->plainTextEdit_cse_Plaintext_input->toPlainText());
}

// Only this way of decryption reminds of the format in the field itself.
void MainWindow::on_pushButton_cse_Decryption1_clicked()
{
    const QString text = ui->plainTextEdit_cse_Cyphertext_input->toPlainText();
    if (hasLength(this, text, true))
        send(cse::kDecryptEcb, text);
    else
        ui->plainTextEdit_cse_Cyphertext_input->setPlaceholderText(
            QStringLiteral("Hex,range: 0-F, length: N*32, other is invalid"));
}

void MainWindow::on_pushButton_cse_Decryption2_clicked()
{
    const QString text = ui->plainTextEdit_cse_Cyphertext_input->toPlainText();
    if (hasLength(this, text, true))
        send(cse::kDecryptCbc, text);
}

void MainWindow::on_pushButton_cse_Generation_clicked()
{
    send(cse::kGenerateCmac, ui->plainTextEdit_cse_Message_input->toPlainText());
}

void MainWindow::on_pushButton_cse_Verification_clicked()
{
    const QString cmac = ui->plainTextEdit_cse_CMAC_input->toPlainText();
    const QString message = ui->plainTextEdit_cse_Message_input->toPlainText();
    if (hasLength(this, cmac, false))
        send(cse::kVerifyCmac, message + QLatin1Char(' ') + cmac);
}

void MainWindow::on_pushButton_cse_Pseudo_clicked()
{
    send(cse::kPseudoRandom);
}

void MainWindow::on_pushButton_cse_True_random_clicked()
{
    send(cse::kTrueRandom);
}

void MainWindow::on_pushButton_cse_Extend_clicked()
{
    const QString entropy = ui->plainTextEdit_cse_Entropy_input->toPlainText();
    if (hasLength(this, entropy, false))
        send(cse::kExtendSeed, entropy);
}

void MainWindow::cseIdle()
{
    indicator::paint(ui->label_cse_status_all, indicator::kGrey);
    display::text(ui->label_cse_status_all, QStringLiteral("IDLE"));
}

// Reports of an error that is just being shown are passed over, each would blink inside the wait of the one before; so
// are those of the same arrival.
void MainWindow::showEngineError(uint8_t code)
{
    if (m_cse.errorsShown.contains(code))
        return;
    m_cse.errorsShown.insert(code);
    labeltwinkle(ui->label_cse_status_all, 100, indicator::background(indicator::kGrey),
                 indicator::background(indicator::kRed), 2);
    informOnce(this, tr("Error"), QStringLiteral("CSE error: ") + cse::errorText(code), QMessageBox::Yes);
    m_cse.errorsAnswered.insert(code);
    display::later(&m_cse, [this] { m_cse.errorsShown -= std::exchange(m_cse.errorsAnswered, {}); });
}

// Each report gets a timer of its own, which lives as long as the window; the first to end returns the label to idle.
void MainWindow::showEngineBusy()
{
    display::text(ui->label_cse_status_all, QStringLiteral("Processing"));
    indicator::paint(ui->label_cse_status_all, indicator::kGreen);
    m_cse.idleTimer = new QTimer(this);
    m_cse.idleTimer->setSingleShot(true);
    connect(m_cse.idleTimer, &QTimer::timeout, this, &MainWindow::cseIdle);
    m_cse.idleTimer->start(kIdleAfterMs);
}

void MainWindow::showEngineResult(const QByteArray &payload)
{
    const cse::Result result = cse::decodeResult(payload);
    display::text(ui->lineEdit_cse_proess,
                  QString::number(static_cast<double>(result.time), 'f', 2) + QStringLiteral(" us"));
    switch (result.operation) {
    case cse::EncryptEcb:
    case cse::EncryptCbc:
        display::text(ui->textBrowser_cse_Cyphertext_output, hex(result.bytes));
        break;
    case cse::DecryptEcb:
    case cse::DecryptCbc:
        display::text(ui->textBrowser_cse_Plaintext_output, QString::fromUtf8(result.bytes.constData()));
        break;
    case cse::GenerateCmac:
        display::text(ui->textBrowser_cse_CMAC_output, hex(result.bytes));
        break;
    case cse::VerifyCmac:
        indicator::paint(ui->label_indicator_cseSatus, result.passed ? indicator::kGreen : indicator::kRed);
        display::text(ui->label_indicator_cseSatus, result.passed ? QStringLiteral("Pass") : QStringLiteral("Fail"));
        break;
    case cse::PseudoRandom:
    case cse::TrueRandom:
        display::text(ui->textBrowser_cse_output, hex(result.bytes));
        break;
    default:
        break;
    }
}

void MainWindow::CSEDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    if (type == cse::ResultReport) {
        showEngineResult(payload);
    } else if (type == cse::StatusReport) {
        const quint8 code = cse::decodeStatus(payload);
        if (code == cse::NoError)
            showEngineBusy();
        else
            showEngineError(code);
    }
}
