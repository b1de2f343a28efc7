// SPDX-License-Identifier: MIT
#include "modules/cse.h"

#include "app/animations.h"
#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "app/messagebox.h"
#include "app/singleline.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

#include <utility>

namespace cse = protocol::cse;

namespace {

constexpr int kIdleAfterMs = 1200;

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

CsePage::CsePage(const Ui::MainWindow &form, QWidget &window) : m_form(form), m_window(window)
{
    count(form.plainTextEdit_cse_Plaintext_input, form.label_cse_Plaintext_count, QString());
    count(form.plainTextEdit_cse_Cyphertext_input, form.label_cse_Cyphertext_count, QStringLiteral(" / N*32"));
    count(form.plainTextEdit_cse_Message_input, form.label_cse_Message_count, QString());
    count(form.plainTextEdit_cse_CMAC_input, form.label_cse_CMAC_count, QStringLiteral(" / 32"));
    count(form.plainTextEdit_cse_Entropy_input, form.label_cse_Entropy_count, QStringLiteral(" / 32"));
}

/// Says which length the input needs, if it has another.
bool CsePage::hasLength(const QString &text, bool multiple)
{
    const int length = text.size();
    if (multiple ? length % cse::kBlockDigits == 0 : length == cse::kBlockDigits)
        return true;
    inform(&m_window, QStringLiteral("Please check"),
           QStringLiteral(u"Invalid input, current input legth is %1. It must be %2, format：HEX.")
               .arg(length)
               .arg(multiple ? QStringLiteral("N*32") : QStringLiteral("32")),
           QMessageBox::Ok);
    return false;
}

void CsePage::encrypt(QLatin1String command)
{
    sendCommand(command + m_form.plainTextEdit_cse_Plaintext_input->toPlainText());
}

bool CsePage::decrypt(QLatin1String command)
{
    const QString text = m_form.plainTextEdit_cse_Cyphertext_input->toPlainText();
    if (!hasLength(text, true))
        return false;
    sendCommand(command + text);
    return true;
}

// Only this way of decryption reminds of the format in the field itself.
void CsePage::decryptWithReminder()
{
    if (!decrypt(cse::kDecryptEcb))
        m_form.plainTextEdit_cse_Cyphertext_input->setPlaceholderText(
            QStringLiteral("Hex,range: 0-F, length: N*32, other is invalid"));
}

void CsePage::generate()
{
    sendCommand(cse::kGenerateCmac + m_form.plainTextEdit_cse_Message_input->toPlainText());
}

void CsePage::verify()
{
    const QString cmac = m_form.plainTextEdit_cse_CMAC_input->toPlainText();
    const QString message = m_form.plainTextEdit_cse_Message_input->toPlainText();
    if (hasLength(cmac, false))
        sendCommand(cse::kVerifyCmac + message + QLatin1Char(' ') + cmac);
}

void CsePage::extendSeed()
{
    const QString entropy = m_form.plainTextEdit_cse_Entropy_input->toPlainText();
    if (hasLength(entropy, false))
        sendCommand(cse::kExtendSeed + entropy);
}

void CsePage::showIdle()
{
    indicator::state(m_form.label_cse_status_all, QStringLiteral("IDLE"), indicator::background(indicator::kGrey));
}

void CsePage::show(const cse::Status &status)
{
    if (status.error == cse::NoError)
        showBusy();
    else
        showError(status.error);
}

// Ignores an error that is already on the screen or was shown for this arrival: otherwise each repeat would start another
// blink inside the first one's wait.
void CsePage::showError(quint8 code)
{
    if (m_errorsShown.contains(code))
        return;
    m_errorsShown.insert(code);
    animation::blink(m_form.label_cse_status_all, 100, indicator::background(indicator::kGrey),
                     indicator::background(indicator::kRed), 2);
    informOnce(&m_window, QStringLiteral("Error"), QStringLiteral("CSE error: ") + cse::errorText(code),
               QMessageBox::Yes);
    m_errorsAnswered.insert(code);
    display::afterArrival([this] { m_errorsShown -= std::exchange(m_errorsAnswered, {}); });
}

// Each report gets a timer of its own, which lives as long as the window (required); the first to end returns the label to
// idle.
void CsePage::showBusy()
{
    indicator::state(m_form.label_cse_status_all, QStringLiteral("Processing"),
                     indicator::background(indicator::kGreen));
    m_idleTimer = new QTimer(&m_window);
    m_idleTimer->setSingleShot(true);
    QObject::connect(m_idleTimer, &QTimer::timeout, &m_window, [this] { showIdle(); });
    m_idleTimer->start(kIdleAfterMs);
}

void CsePage::show(const cse::Result &result)
{
    display::text(m_form.lineEdit_cse_proess,
                  QString::number(static_cast<double>(result.time), 'f', 2) + QStringLiteral(" us"));
    switch (result.operation) {
    case cse::EncryptEcb:
    case cse::EncryptCbc:
        display::text(m_form.textBrowser_cse_Cyphertext_output, hex(result.bytes));
        break;
    case cse::DecryptEcb:
    case cse::DecryptCbc:
        display::text(m_form.textBrowser_cse_Plaintext_output, QString::fromUtf8(result.bytes.constData()));
        break;
    case cse::GenerateCmac:
        display::text(m_form.textBrowser_cse_CMAC_output, hex(result.bytes));
        break;
    case cse::VerifyCmac:
        indicator::state(m_form.label_indicator_cseSatus,
                         result.passed ? QStringLiteral("Pass") : QStringLiteral("Fail"),
                         indicator::background(result.passed ? indicator::kGreen : indicator::kRed));
        break;
    case cse::PseudoRandom:
    case cse::TrueRandom:
        display::text(m_form.textBrowser_cse_output, hex(result.bytes));
        break;
    default:
        break;
    }
}

// clang-format off
void MainWindow::on_pushButton_cse_loadKey_clicked() { sendCommand(cse::kLoadKeys); }
void MainWindow::on_pushButton_cse_Encryption1_clicked() { m_pages->cse.encrypt(cse::kEncryptEcb); }
void MainWindow::on_pushButton_cse_Encryption2_clicked() { m_pages->cse.encrypt(cse::kEncryptCbc); }
void MainWindow::on_pushButton_cse_Decryption1_clicked() { m_pages->cse.decryptWithReminder(); }
void MainWindow::on_pushButton_cse_Decryption2_clicked() { m_pages->cse.decrypt(cse::kDecryptCbc); }
void MainWindow::on_pushButton_cse_Generation_clicked() { m_pages->cse.generate(); }
void MainWindow::on_pushButton_cse_Verification_clicked() { m_pages->cse.verify(); }
void MainWindow::on_pushButton_cse_Pseudo_clicked() { sendCommand(cse::kPseudoRandom); }
void MainWindow::on_pushButton_cse_True_random_clicked() { sendCommand(cse::kTrueRandom); }
void MainWindow::on_pushButton_cse_Extend_clicked() { m_pages->cse.extendSeed(); }
void MainWindow::cseIdle() { m_pages->cse.showIdle(); }
// clang-format on

void MainWindow::CSEDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Cse, type, payload);
}
