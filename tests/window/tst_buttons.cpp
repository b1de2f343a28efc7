// SPDX-License-Identifier: MIT
// Every button sends its command line, to the byte; inputs are checked where they are to be.
#include "support/fakeclock.h"
#include "support/fixtures.h"
#include "support/wire.h"

#include <QComboBox>
#include <QGroupBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTest>

namespace {

constexpr char kBlock[] = "00112233445566778899AABBCCDDEEFF";

struct Sender {
    const char *button;
    const char *commands; // with all fields empty and all selectors at their first item
};

// clang-format off
constexpr Sender senders[] = {
    {"pushButton_F_ResetEsca", "resetEsca 1 1|"},
    {"pushButton_F_resetEsc_clear", "resetEsca 1 2|"},
    {"pushButton_F_resetEsc_set", "resetEsca 1 3 0|"},
    {"pushButton_D_ResetEsca", "resetEsca 2 1|"},
    {"pushButton_D_resetEsc_clear", "resetEsca 2 2|"},
    {"pushButton_D_resetEsc_set", "resetEsca 2 3 0|"},
    {"pushButton_CMU_update", "get 3|get 4|"},
    {"pushButton_cmustatus_get", "get 3|"},
    {"pushButton_cmuDefault", "cmu 15|"},
    {"pushButton_cmu_faultrecord_get", "cmu 16|"},
    {"pushButton_cmu_faultstatus_clear", "cmu 17|"},
    {"pushButton_PMC_getstatus", "get 6|"},
    {"pushButton_PMC_dafault", "pmc 5|"},
    {"pushButton_PMC_allSTest", "pmc 1|"},
    {"pushButton_PMC_FI_TempSensor", "inject 4 1|"},
    {"pushButton_PMC_FI_HVD", "inject 4 2|"},
    {"pushButton_PMC_FI_LVD", "inject 4 3|"},
    {"pushButton_PMC_FI_LVDSelfTest", "inject 4 4|"},
    {"pushButton_PMC_GetFault", "pmc 6|"},
    {"pushButton_PMC_ClearFault", "pmc 7|"},
    {"pushButton_PMC_PLLLVD_selftest", "pmc 2 7|"},
    {"pushButton_PMC_CORELVD_stest", "pmc 2 1|"},
    {"pushButton_PMC_CORELVD_stest_2", "pmc 2 2|"},
    {"pushButton_PMC_ADCELVD_stest", "pmc 2 6|"},
    {"pushButton_PMC_ADCHVD_stest", "pmc 2 9|"},
    {"pushButton_PMC_PMCLVD_stest", "pmc 2 4|"},
    {"pushButton_PMC_FlashLVD_stest", "pmc 2 5|"},
    {"pushButton_PMC_IOLVD_stest", "pmc 2 8|"},
    {"pushButton_pmc_allon", "pmc 3 10|"},
    {"pushButton_pmc_alloff", "pmc 4 10|"},
    {"pushButton_xbicUpdate", "get 11|"},
    {"pushButton_xbicDefault", "xbic 3|"},
    {"pushButton_xbic_faultrecord_get", "xbic 4|"},
    {"pushButton_xbic_faultstatus_clear", "xbic 5|"},
    {"pushButton_smpuUpdate", "get 5|"},
    {"pushButton_smpuDefault", "smpu 3|"},
    {"pushButton_smpuALLon", "smpu 1|"},
    {"pushButton_smpuALLoff", "smpu 2|"},
    {"pushButton_smpu_fault1", "inject 6 1|"},
    {"pushButton_smpu_fault2", "inject 6 2|"},
    {"pushButton_smpu_fault3", "inject 6 3|"},
    {"pushButton_smpu_fault4", "inject 6 4|"},
    {"pushButton_smpu_fault5", "inject 6 5|"},
    {"pushButton_smpu_fault6", "inject 6 6|"},
    {"pushButton_smpu_faultrecord_get", "smpu 4|"},
    {"pushButton_smpu_faultstatus_clear", "smpu 5|"},
    {"pushButton_memu_inject_5", "inject 9 7|"},
    {"pushButton_memu_faultrecord_get", "memu 1|"},
    {"pushButton_memu_faultstatus_clear", "memu 2|memu 3|"},
    {"pushButton_regUpdate", "get 8|"},
    {"pushButton_reg_softlockoff", "regP 1|"},
    {"pushButton_reg_hardlockoff", "inject 2|"},
    {"pushButton_reg_writedata", "regP 5 |"},
    {"pushButton_CRC_set", "crc 1 0 0|"},
    {"pushButton_swt_Default", "swt 5|"},
    {"pushButton_swt_Update", ""},
    {"pushButton_swt_allOn", "swt 3 4|"},
    {"pushButton_swt_allOff", "swt 4 4|"},
    {"pushButton_swt_timeout_2", "inject 3 1|"},
    {"pushButton_swt_Invalidacess_2", "inject 3 2|"},
    {"pushButton_intcm_update", "get 7|"},
    {"pushButton_intcm_edfault", "intcm 1|"},
    {"pushButton_intcm_inject_k4", "inject 8 1|"},
    {"pushButton_intcm_inject_k70", "inject 8 2|"},
    {"pushButton_intcm_inject_k71", "inject 8 3|"},
    {"pushButton_intcm_faultrecord_get", "intcm 2|"},
    {"pushButton_intcm_faultstatus_clear", "intcm 3|"},
    {"pushButton_INTCM_close", "intcm 4 0 0|"},
    {"pushButton_intcm_config", "intcm IACK 0 0  |get 7|"},
    {"pushButton_spt_oram", "inject 10 1|"},
    {"pushButton_spt_tram", "inject 10 2|"},
    {"pushButton_spt_faultrecord_get", "spt 1|"},
    {"pushButton_spt_faultstatus_clear", "spt 2|"},
    {"pushButton_cse_loadKey", "cse 1|"},
    {"pushButton_cse_Encryption1", "cse 2 1 |"},
    {"pushButton_cse_Encryption2", "cse 2 2 |"},
    {"pushButton_cse_Decryption1", "cse 3 1 |"},
    {"pushButton_cse_Decryption2", "cse 3 2 |"},
    {"pushButton_cse_Generation", "cse 4 |"},
    {"pushButton_cse_Pseudo", "cse 6 1|"},
    {"pushButton_cse_True_random", "cse 6 2|"},
};
// clang-format on

// On/off switches: what they send but for the number behind it.
struct Switch {
    const char *widget; // "%1" counts from 0
    const char *on;
    const char *off;
    int first, last; // number sent
};

// clang-format off
constexpr Switch switches[] = {
    {"radioButton_cmu%1_enable", "cmu 13", "cmu 14", 0, 12},
    {"radioButton_PMC_CORELVD_onoff", "pmc 3", "pmc 4", 1, 1},
    {"radioButton_PMC_COREHVD_onoff", "pmc 3", "pmc 4", 2, 2},
    {"radioButton_PMC_ADCHVD_onoff_2", "pmc 3", "pmc 4", 4, 4},
    {"radioButton_PMC_FlashLVD_onoff", "pmc 3", "pmc 4", 5, 5},
    {"radioButton_PMC_ADCELVD_onoff", "pmc 3", "pmc 4", 6, 6},
    {"radioButton_PMC_PLLLVD_onoff", "pmc 3", "pmc 4", 7, 7},
    {"radioButton_PMC_IOLVD_onoff", "pmc 3", "pmc 4", 8, 8},
    {"radioButton_PMC_ADCHVD_onoff", "pmc 3", "pmc 4", 9, 9},
    {"groupBox_XBIC%1", "xbic 1", "xbic 2", 0, 4},
    {"groupBox_swt0", "swt 3", "swt 4", 1, 1},
    {"groupBox_swt0_2", "swt 3", "swt 4", 2, 2},
    {"groupBox_swt0_3", "swt 3", "swt 4", 3, 3},
};
// clang-format on

QString nameOf(const Switch &row, int number)
{
    return QString::fromLatin1(row.widget).replace("%1", QString::number(number));
}

// Fault buttons that first show what they are about to do; a report of monitor 0 says 80 MHz, limits 70 and 90.
struct ClockFault {
    const char *button, *label, *text, *otherLabel, *otherText, *command;
};

// clang-format off
constexpr ClockFault clockFaults[] = {
    {"pushButton_cmu_fault1", "label_MCCLK_fvalue", "80", "label_MCCLK_fmin", "70", "inject 5 1|"},
    {"pushButton_cmu_fault2", "label_adcclk_fvalue", "160", "label_MCCLK_fmin", "70", "inject 5 2|"},
    {"pushButton_cmu_fault3", "label_cmu_spiloss", "SPI clock lost", "label_MCCLK_fmin", "70", "inject 5 3|"},
    {"pushButton_cmu_fault4", "label_MCCLK_fmin", "90", "label_MCCLK_fmax", "110", "inject 5 4|"},
    {"pushButton_cmu_fault5", "label_MCCLK_fmin", "50", "label_MCCLK_fmax", "70", "inject 5 5|"},
};
// clang-format on

// The path of a crossbar fault, and its look once the command has left.
struct CrossbarFault {
    const char *button, *group, *from, *to, *last, *command;
};

constexpr char kGreen[] = "background-color: rgb(91,215,97)";
constexpr char kTranslucent[] = "background-color: rgb(255,255,255,100)";

// clang-format off
constexpr CrossbarFault crossbarFaults[] = {
    {"pushButton_xbic_fault1", "groupBox_XBIC0", "label_xbic0_k4core0", "label_xbic0_PBRIDGE1", kGreen, "inject 7 1|"},
    {"pushButton_xbic_fault2", "groupBox_XBIC1", "label_xbic1_k4core0", "label_xbic1_Flash0", kGreen, "inject 7 2|"},
    {"pushButton_xbic_fault3", "groupBox_XBIC2", "label_xbic2_SRAM3", "label_xbic2_SRAM_BANK0", kGreen, "inject 7 3|"},
    {"pushButton_xbic_fault4", "groupBox_XBIC3", "label__xbic3_eDMA", "label_xbic3_M4", kTranslucent, "inject 7 4|"},
    {"pushButton_xbic_fault5", "groupBox_XBIC4", "label_xbic4_K7aTCM_3", "label_xbic4_s4_3", kTranslucent, "inject 7 5|"},
};
// clang-format on

// Need an input before they send anything, or send what was typed: see typedTextGoesOutAsTyped and the tests behind it.
const QStringList kButtonsWithInput = {
    "pushButton_memu_inject",    "pushButton_memu_inject_2",    "pushButton_memu_inject_3",
    "pushButton_swt_commandset", "pushButton_cse_Verification", "pushButton_cse_Extend",
    "pushButton_freqlim_set",    "pushButton_reg_turnonsoft1",  "pushButton_reg_turnonsoft2",
    "pushButton_reg_turnonhard",
};

struct Input {
    const char *field;
    QString value;
};
using Inputs = QVector<Input>;

} // namespace

Q_DECLARE_METATYPE(Inputs)

class TestButtons : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<WindowFixture> m_window;

    QString sentByPressing(const QByteArray &name)
    {
        return m_window->sentBy([&] {
            fakeclock::setSpeed(100); // animations before a command
            m_window->find<QPushButton>(name.constData())->click();
            fakeclock::setSpeed(10);
        });
    }
    void enter(const Inputs &inputs)
    {
        for (const Input &input : inputs)
            QVERIFY2(driver::enter(m_window->find<QWidget>(input.field), input.value), input.field);
    }

private slots:
    void initTestCase() { m_window = std::make_unique<WindowFixture>(); }

    // No row leaves anything to the next one.
    void init()
    {
        const auto widgets = m_window->window().centralWidget()->findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            if (auto *field = qobject_cast<QLineEdit *>(widget); field && !field->isReadOnly())
                field->clear();
            else if (auto *edit = qobject_cast<QPlainTextEdit *>(widget))
                edit->clear();
            else if (auto *spin = qobject_cast<QSpinBox *>(widget))
                spin->setValue(spin->minimum());
            else if (auto *box = qobject_cast<QComboBox *>(widget))
                box->setCurrentIndex(0);
        }
    }

    void aPressSendsItsCommands_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QByteArray>("commands");
        for (const Sender &row : senders)
            QTest::addRow("%s sends \"%s\"", row.button, row.commands)
                << QByteArray(row.button) << QByteArray(row.commands);
    }

    void aPressSendsItsCommands()
    {
        QFETCH(QByteArray, button);
        QFETCH(QByteArray, commands);
        QCOMPARE(sentByPressing(button), QString::fromLatin1(commands));
    }

    void aSwitchSendsOnAndOff_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("on");
        QTest::addColumn<QByteArray>("off");
        for (const Switch &row : switches) {
            for (int number = row.first; number <= row.last; ++number) {
                const QByteArray name = nameOf(row, number).toLatin1(), end = ' ' + QByteArray::number(number) + '|';
                QTest::newRow(name) << name << row.on + end << row.off + end;
            }
        }
    }

    void aSwitchSendsOnAndOff()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, on);
        QFETCH(QByteArray, off);
        auto *widget = m_window->find<QWidget>(name.constData());
        const auto turn = [widget](bool on) {
            if (auto *group = qobject_cast<QGroupBox *>(widget))
                emit group->clicked(on);
            else if (auto *button = qobject_cast<QAbstractButton *>(widget); button->isChecked() != on)
                button->click();
        };
        widget->setProperty("checked", false);
        QCOMPARE(m_window->sentBy([&] { turn(true); }), QString::fromLatin1(on));
        QCOMPARE(m_window->sentBy([&] { turn(false); }), QString::fromLatin1(off));
    }

    void noButtonIsForgotten()
    {
        QStringList known = kButtonsWithInput;
        for (const Sender &row : senders)
            known.append(row.button);
        for (const Switch &row : switches) {
            for (int number = row.first; number <= row.last; ++number)
                known.append(nameOf(row, number));
        }
        for (const ClockFault &row : clockFaults)
            known.append(row.button);
        for (const CrossbarFault &row : crossbarFaults)
            known.append(row.button);
        const auto buttons = m_window->window().centralWidget()->findChildren<QAbstractButton *>();
        for (const QAbstractButton *button : buttons) {
            const bool pressed =
                qobject_cast<const QPushButton *>(button) || qobject_cast<const QRadioButton *>(button);
            if (pressed && button->isVisibleTo(button->parentWidget()))
                QVERIFY2(known.contains(button->objectName()), qPrintable(button->objectName()));
        }
    }

    void clockFaultsAreShownThenInjected_data()
    {
        QTest::addColumn<int>("fault");
        for (std::size_t i = 0; i < std::size(clockFaults); ++i)
            QTest::addRow("clock fault %d", static_cast<int>(i) + 1) << static_cast<int>(i);
    }

    void clockFaultsAreShownThenInjected()
    {
        QFETCH(int, fault);
        const ClockFault &row = clockFaults[fault];
        QVERIFY(m_window->show(2, 1, "01 50 5A 46"));
        QCOMPARE(sentByPressing(row.button), QString::fromLatin1(row.command));
        QCOMPARE(m_window->text(row.label), QString::fromLatin1(row.text));
        QCOMPARE(m_window->text(row.otherLabel), QString::fromLatin1(row.otherText));
    }

    void crossbarFaultsBlinkThenGoOut_data()
    {
        QTest::addColumn<int>("checker");
        for (std::size_t i = 0; i < std::size(crossbarFaults); ++i)
            QTest::addRow("crossbar checker %d", static_cast<int>(i)) << static_cast<int>(i);
    }

    void crossbarFaultsBlinkThenGoOut()
    {
        QFETCH(int, checker);
        const CrossbarFault &row = crossbarFaults[checker];
        QVERIFY(m_window->show(3, 1, "1F"));
        QCOMPARE(sentByPressing(row.button), QString::fromLatin1(row.command));
        QCOMPARE(m_window->style(row.from), QString::fromLatin1(kGreen));
        QCOMPARE(m_window->style(row.to), QString::fromLatin1(row.last));

        BoxAnswerer answers(QMessageBox::Ok);
        m_window->find<QGroupBox>(row.group)->setChecked(false);
        QCOMPARE(sentByPressing(row.button), QString());
        QCOMPARE(answers.seen(),
                 QStringList(
                     QStringLiteral("Please check|XBIC%1 is disabled, can not inject fault to XBIC%1.").arg(checker)));
    }

    void typedTextGoesOutAsTyped_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<Inputs>("inputs");
        QTest::addColumn<QString>("commands");
        const auto row = [](const char *sentence, const char *button, const Inputs &inputs, const QString &commands) {
            QTest::newRow(sentence) << QByteArray(button) << inputs << commands;
        };
        const QString block = kBlock;
        row("an offset in the flash", "pushButton_memu_inject",
            {{"comboBox_memu_1", "2 Bit"}, {"lineEdit_memu_1", "0x100"}}, "inject 9 2 0x100|");
        row("an offset without data", "pushButton_memu_inject_2",
            {{"comboBox_memu_2", "1 Bit"}, {"lineEdit_memu_2", "40"}, {"lineEdit_memu_4", ""}}, "inject 9 3 40 |");
        row("an offset and data", "pushButton_memu_inject_3",
            {{"comboBox_memu_3", "2 Bit"}, {"lineEdit_memu_3", "10"}, {"lineEdit_memu_5", "55"}}, "inject 9 6 10 55|");
        row("a value for the first soft lock", "pushButton_reg_turnonsoft1", {{"lineEdit_reg_turnonsoft1", "1"}},
            "regP 2 1|");
        row("a value for the second soft lock", "pushButton_reg_turnonsoft2", {{"lineEdit_reg_turnonsoft2", "2"}},
            "regP 3 2|");
        row("a place holder is no place holder", "pushButton_reg_turnonhard", {{"lineEdit_reg_turnonhard", "%1"}},
            "regP 4 %1|");
        row("a value for the register", "pushButton_reg_writedata", {{"lineEdit_reg_writedata", "12AB"}},
            "regP 5 12AB|");
        row("another polynomial on another channel", "pushButton_CRC_set",
            {{"comboBox_CRC_polynomial", "CRC-32 ITU-T V.42"},
             {"comboBox_CRC_instance", "CRC_2"},
             {"comboBox_CRC_channel", "CRC_channel_1"}},
            "crc 3 1 1|");
        row("a watchdog's mode and time", "pushButton_swt_commandset",
            {{"comboBox_swt_mode", "Keyed Service Sequence"},
             {"comboBox_swt_core", "K7a_SWT1"},
             {"spinBox_swt_timeout", "200"}},
            "swt 2 2 200|");
        row("an interrupt to watch", "pushButton_intcm_config",
            {{"comboBox_intcm_mode", "SW"},
             {"comboBox_intcm_core", "K7b(2)"},
             {"lineEdit_intcm1", "150000"},
             {"lineEdit_intcm1_2", "303"}},
            "intcm SW 2 0 150000 303|get 7|");
        row("a channel to close", "pushButton_INTCM_close",
            {{"comboBox_intcm_core", "K7a(1)"}, {"comboBox_intcm_index", "2"}}, "intcm 4 1 2|");
        row("a threshold for functional resets", "pushButton_F_resetEsc_set", {{"spinBox_F_ResetEsca", "7"}},
            "resetEsca 1 3 7|");
        row("a threshold for destructive resets", "pushButton_D_resetEsc_set", {{"spinBox_D_ResetEsca", "9"}},
            "resetEsca 2 3 9|");
        row("a plaintext, block by block", "pushButton_cse_Encryption1", {{"plainTextEdit_cse_Plaintext_input", "%1"}},
            "cse 2 1 %1|");
        row("a plaintext, chained", "pushButton_cse_Encryption2", {{"plainTextEdit_cse_Plaintext_input", block}},
            "cse 2 2 " + block + "|");
        row("a cyphertext, block by block", "pushButton_cse_Decryption1",
            {{"plainTextEdit_cse_Cyphertext_input", block}}, "cse 3 1 " + block + "|");
        row("a cyphertext, chained", "pushButton_cse_Decryption2", {{"plainTextEdit_cse_Cyphertext_input", block}},
            "cse 3 2 " + block + "|");
        row("a message to authenticate", "pushButton_cse_Generation", {{"plainTextEdit_cse_Message_input", "AB"}},
            "cse 4 AB|");
        row("an authentication code of no message", "pushButton_cse_Verification",
            {{"plainTextEdit_cse_Message_input", ""}, {"plainTextEdit_cse_CMAC_input", block}},
            "cse 5  " + block + "|");
        row("entropy", "pushButton_cse_Extend", {{"plainTextEdit_cse_Entropy_input", block}}, "cse 7 " + block + "|");
    }

    void typedTextGoesOutAsTyped()
    {
        QFETCH(QByteArray, button);
        QFETCH(Inputs, inputs);
        enter(inputs);
        QTEST(sentByPressing(button), "commands");
    }

    void nothingIsSentWithoutASelection()
    {
        for (const char *box : {"comboBox_memu_1", "comboBox_memu_2", "comboBox_memu_3", "comboBox_cmu_choice"})
            m_window->find<QComboBox>(box)->setCurrentIndex(-1);
        for (const char *button : {"pushButton_memu_inject", "pushButton_memu_inject_2", "pushButton_memu_inject_3",
                                   "pushButton_freqlim_set"})
            QCOMPARE(sentByPressing(button), QString());
    }

    void wrongLengthsAreToldAndNotSent_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QByteArray>("field");
        QTest::addColumn<QByteArray>("wanted");
        QTest::addColumn<bool>("reminds"); // in the cyphertext's field
        const auto row = [](const char *sentence, const char *button, const char *field, const char *wanted,
                            bool reminds = false) {
            QTest::newRow(sentence) << QByteArray(button) << QByteArray(field) << QByteArray(wanted) << reminds;
        };
        row("a cyphertext, block by block", "pushButton_cse_Decryption1", "plainTextEdit_cse_Cyphertext_input", "N*32",
            true);
        row("a cyphertext, chained", "pushButton_cse_Decryption2", "plainTextEdit_cse_Cyphertext_input", "N*32");
        row("an authentication code", "pushButton_cse_Verification", "plainTextEdit_cse_CMAC_input", "32");
        row("entropy", "pushButton_cse_Extend", "plainTextEdit_cse_Entropy_input", "32");
    }

    void wrongLengthsAreToldAndNotSent()
    {
        QFETCH(QByteArray, button);
        QFETCH(QByteArray, field);
        QFETCH(QByteArray, wanted);
        BoxAnswerer answers(QMessageBox::Ok);
        auto *cyphertext = m_window->find<QPlainTextEdit>("plainTextEdit_cse_Cyphertext_input");
        cyphertext->setPlaceholderText(QString());
        m_window->find<QPlainTextEdit>(field.constData())->setPlainText(QString(31, 'A'));
        QCOMPARE(sentByPressing(button), QString());
        const QString words =
            QStringLiteral(u"Please check|Invalid input, current input legth is 31. It must be %1, format：HEX.");
        QCOMPARE(answers.seen(), QStringList(words.arg(QString::fromLatin1(wanted))));
        QFETCH(bool, reminds);
        QCOMPARE(cyphertext->placeholderText(),
                 reminds ? QStringLiteral("Hex,range: 0-F, length: N*32, other is invalid") : QString());
    }

    void inputsHoldOneLine()
    {
        auto *edit = m_window->find<QPlainTextEdit>("plainTextEdit_cse_Message_input");
        QTest::keyClicks(edit, "ab");
        QTest::keyClick(edit, Qt::Key_Return);
        QTest::keyClicks(edit, "c");
        edit->insertPlainText(QStringLiteral("d\r\ne\nf"));
        QCOMPARE(edit->toPlainText(), QStringLiteral("abcdef"));
    }

    void fieldsTakeWhatTheBoardReads_data()
    {
        QTest::addColumn<QByteArray>("field");
        QTest::addColumn<QString>("kept"); // of "1xg 2A"
        for (const char *field : {"lineEdit_memu_1", "lineEdit_memu_2", "lineEdit_memu_3", "lineEdit_memu_4",
                                  "lineEdit_memu_5", "lineEdit_reg_writedata", "lineEdit_reg_turnonsoft1",
                                  "lineEdit_reg_turnonsoft2", "lineEdit_reg_turnonhard"})
            QTest::addRow("%s takes hexadecimal digits", field) << QByteArray(field) << "12A";
        for (const char *field : {"lineEdit_intcm1", "lineEdit_intcm1_2"})
            QTest::addRow("%s takes decimal digits", field) << QByteArray(field) << "12";
    }

    void fieldsTakeWhatTheBoardReads()
    {
        QFETCH(QByteArray, field);
        auto *widget = m_window->find<QLineEdit>(field.constData());
        QTest::keyClicks(widget, "1xg 2A");
        QTEST(widget->text(), "kept");
    }

    // Limits: a monitor that is off, one without a record, and a value at either limit, which asks first.
    void limitsAreConfirmed()
    {
        m_window.reset(); // there is one line
        m_window = std::make_unique<WindowFixture>();
        WindowFixture &fresh = *m_window;
        const auto set = [&fresh] { fresh.find<QPushButton>("pushButton_freqlim_set")->click(); };
        const auto limits = [&fresh](int lower, int upper) {
            fresh.find<QSpinBox>("spinBox_cmu_fmin")->setValue(lower);
            fresh.find<QSpinBox>("spinBox_cmu_fmax")->setValue(upper);
        };
        BoxAnswerer answers(QMessageBox::Ok);
        fresh.find<QComboBox>("comboBox_cmu_choice")->setCurrentIndex(6);
        limits(70, 90);
        fresh.find<QAbstractButton>("radioButton_cmu6_enable")->setChecked(false);
        QCOMPARE(fresh.sentBy(set), QString());
        QCOMPARE(answers.seen(), QStringList("Please check|CMU6 had been closed. Please open and try again."));

        fresh.find<QAbstractButton>("radioButton_cmu6_enable")->setChecked(true);
        answers.clear();
        QCOMPARE(fresh.sentBy(set), QStringLiteral("cmu 6 90 70|")); // no record yet: nothing to compare
        QCOMPARE(answers.seen(), QStringList());
        QByteArray records; // of all monitors: only the sixth is at 80 MHz
        for (char n = 0; n < 13; ++n)
            records += wire::frame(2, 1, QByteArray(1, char(n << 4 | 1)) + (n == 6 ? "\x50\x5A\x46" : "\x28\x5A\x14"));
        QVERIFY(fresh.show(records));
        limits(79, 81);
        QCOMPARE(fresh.sentBy(set), QStringLiteral("cmu 6 81 79|")); // between the limits: no question
        QCOMPARE(answers.seen(), QStringList());
        limits(70, 80);
        answers.setButton(QMessageBox::No);
        QCOMPARE(fresh.sentBy(set), QString());
        limits(80, 81);
        answers.setButton(QMessageBox::Yes);
        QCOMPARE(fresh.sentBy(set), QStringLiteral("cmu 6 81 80|"));
        const QString question = QStringLiteral("Please check|CMU6 frequency is %1 frequency.\r\nIf you input this "
                                                "frequency you will inject fault.\r\nAre you sure?");
        QCOMPARE(answers.seen(),
                 (QStringList{question.arg("higher than maximum"), question.arg("lower than minimum")}));
        QCOMPARE(answers.defaults(), (QStringList{"&No", "&No"}));
    }

    void limitFlashesOfTheirOwn_data()
    {
        QTest::addColumn<int>("monitor");
        QTest::addColumn<QString>("blue");
        QTest::addColumn<QString>("grey");
        QTest::newRow("regular") << 4 << "label_sysclk_fmin label_sysclk_fmax"
                                 << "";
        QTest::newRow("ends on its neighbour") << 3 << "label_canclk_fmin label_canclk_fmax"
                                               << "label_adcclk_fmin label_adcclk_fmax";
        QTest::newRow("ends on its neighbour too") << 10 << "label_core1clk_fmin label_core1clk_fmax"
                                                   << "label_core2clk_fmin label_core2clk_fmax";
        QTest::newRow("one label") << 6 << "label_clkout0_fmax"
                                   << "label_canclk_fvalue";
    }

    void limitFlashesOfTheirOwn()
    {
        QFETCH(int, monitor);
        QFETCH(QString, blue);
        QFETCH(QString, grey);
        const QString greyStyle = QStringLiteral("background-color: rgb(200, 200, 200);");
        const auto labels = (blue + ' ' + grey).simplified().split(' ');
        for (const QString &label : labels)
            m_window->find<QLabel>(qPrintable(label))->setStyleSheet(greyStyle);
        m_window->find<QLabel>("label_clkout0_fmin")->setStyleSheet("untouched");
        m_window->window().modifycmuFreq(monitor);
        for (const QString &label : labels)
            QCOMPARE(m_window->style(qPrintable(label)),
                     blue.contains(label) ? QStringLiteral("background-color: rgb(85, 170, 255);") : greyStyle);
        QCOMPARE(m_window->style("label_clkout0_fmin"), QStringLiteral("untouched"));
    }
};

QTEST_MAIN(TestButtons)
#include "tst_buttons.moc"
