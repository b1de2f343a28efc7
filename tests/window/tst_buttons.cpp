// SPDX-License-Identifier: MIT
// Every button sends its command line, to the byte; inputs are checked where they are to be.
#include "support/boxanswerer.h"
#include "support/fixtures.h"

#include "link/commandchannel.h"

#include <QComboBox>
#include <QGroupBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

namespace {

const QString kBlock = QStringLiteral("00112233445566778899AABBCCDDEEFF");

} // namespace

class TestButtons : public QObject
{
    Q_OBJECT

private:
    // What the window sends while `work` runs and until a marker behind it has come.
    template <class Work> QString sentBy(Work work)
    {
        m_bench->line().clear();
        work();
        sendCommand(QStringLiteral("end"));
        [this] { QTRY_VERIFY(m_bench->line().received().endsWith("end\r\n")); }();
        return m_bench->sent().chopped(4);
    }

    void press(const char *name) { m_bench->find<QPushButton>(name)->click(); }
    void type(const char *name, const QString &text)
    {
        if (auto *edit = m_bench->window().findChild<QPlainTextEdit *>(name))
            edit->setPlainText(text);
        else
            m_bench->find<QLineEdit>(name)->setText(text);
    }

private slots:
    void initTestCase()
    {
        m_bench = std::make_unique<WindowFixture>();
        QTRY_VERIFY(m_bench->line().received().endsWith("get 0\r\n"));
    }

    void plainButtons_data()
    {
        QTest::addColumn<QString>("commands");
        const struct {
            const char *button, *commands;
        } rows[] = {
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
        for (const auto &row : rows)
            QTest::newRow(row.button) << QString::fromLatin1(row.commands);
    }

    void plainButtons()
    {
        QFETCH(QString, commands);
        QCOMPARE(sentBy([this] { press(QTest::currentDataTag()); }), commands);
    }

    // On/off switches: the number sent for each, on and off.
    void switches_data()
    {
        QTest::addColumn<QString>("on");
        QTest::addColumn<QString>("off");
        for (int i = 0; i < 13; ++i)
            QTest::addRow("radioButton_cmu%d_enable", i)
                << QStringLiteral("cmu 13 %1|").arg(i) << QStringLiteral("cmu 14 %1|").arg(i);
        const struct {
            const char *name;
            int code;
        } detectors[] = {{"radioButton_PMC_CORELVD_onoff", 1},  {"radioButton_PMC_COREHVD_onoff", 2},
                         {"radioButton_PMC_ADCHVD_onoff_2", 4}, {"radioButton_PMC_FlashLVD_onoff", 5},
                         {"radioButton_PMC_ADCELVD_onoff", 6},  {"radioButton_PMC_PLLLVD_onoff", 7},
                         {"radioButton_PMC_IOLVD_onoff", 8},    {"radioButton_PMC_ADCHVD_onoff", 9}};
        for (const auto &row : detectors)
            QTest::newRow(row.name) << QStringLiteral("pmc 3 %1|").arg(row.code)
                                    << QStringLiteral("pmc 4 %1|").arg(row.code);
        for (int i = 0; i < 5; ++i)
            QTest::addRow("groupBox_XBIC%d", i)
                << QStringLiteral("xbic 1 %1|").arg(i) << QStringLiteral("xbic 2 %1|").arg(i);
        QTest::newRow("groupBox_swt0") << "swt 3 1|"
                                       << "swt 4 1|";
        QTest::newRow("groupBox_swt0_2") << "swt 3 2|"
                                         << "swt 4 2|";
        QTest::newRow("groupBox_swt0_3") << "swt 3 3|"
                                         << "swt 4 3|";
    }

    void switches()
    {
        QFETCH(QString, on);
        QFETCH(QString, off);
        auto *widget = m_bench->find<QWidget>(QTest::currentDataTag());
        const auto toggle = [widget] {
            if (auto *button = qobject_cast<QAbstractButton *>(widget))
                button->click();
            else
                emit qobject_cast<QGroupBox *>(widget)->clicked(!widget->property("checked").toBool());
            if (qobject_cast<QGroupBox *>(widget))
                widget->setProperty("checked", !widget->property("checked").toBool());
        };
        QCOMPARE(sentBy(toggle), on);
        QCOMPARE(sentBy(toggle), off);
    }

    void typedTextGoesOutAsTyped_data()
    {
        QTest::addColumn<QString>("fields");
        QTest::addColumn<QString>("commands");
        QTest::newRow("pushButton_memu_inject") << "comboBox_memu_1=1 lineEdit_memu_1=0x100"
                                                << "inject 9 2 0x100|";
        QTest::newRow("pushButton_memu_inject_2") << "comboBox_memu_2=0 lineEdit_memu_2=40 lineEdit_memu_4="
                                                  << "inject 9 3 40 |";
        QTest::newRow("pushButton_memu_inject_3") << "comboBox_memu_3=1 lineEdit_memu_3=10 lineEdit_memu_5=55"
                                                  << "inject 9 6 10 55|";
        QTest::newRow("pushButton_memu_inject ") << "comboBox_memu_1=-1"
                                                 << "";
        QTest::newRow("pushButton_reg_turnonsoft1") << "lineEdit_reg_turnonsoft1=1"
                                                    << "regP 2 1|";
        QTest::newRow("pushButton_reg_turnonsoft2") << "lineEdit_reg_turnonsoft2=2"
                                                    << "regP 3 2|";
        QTest::newRow("pushButton_reg_turnonhard") << "lineEdit_reg_turnonhard=%1"
                                                   << "regP 4 %1|";
        QTest::newRow("pushButton_CRC_set")
            << "comboBox_CRC_polynomial=2 comboBox_CRC_instance=1 comboBox_CRC_channel=1"
            << "crc 3 1 1|";
        QTest::newRow("pushButton_swt_commandset") << "comboBox_swt_mode=1 comboBox_swt_core=1 spinBox_swt_timeout=200"
                                                   << "swt 2 2 200|";
        QTest::newRow("pushButton_intcm_config")
            << "comboBox_intcm_mode=2 comboBox_intcm_core=2 comboBox_intcm_index=0 lineEdit_intcm1=150000 "
               "lineEdit_intcm1_2=303"
            << "intcm SW 2 0 150000 303|get 7|";
        QTest::newRow("pushButton_F_resetEsc_set") << "spinBox_F_ResetEsca=7"
                                                   << "resetEsca 1 3 7|";
        QTest::newRow("pushButton_cse_Encryption1") << "plainTextEdit_cse_Plaintext_input=%1"
                                                    << "cse 2 1 %1|";
        QTest::newRow("pushButton_cse_Decryption2")
            << "plainTextEdit_cse_Cyphertext_input=" + kBlock << "cse 3 2 " + kBlock + "|";
        QTest::newRow("pushButton_cse_Verification")
            << "plainTextEdit_cse_Message_input= plainTextEdit_cse_CMAC_input=" + kBlock << "cse 5  " + kBlock + "|";
        QTest::newRow("pushButton_cse_Extend")
            << "plainTextEdit_cse_Entropy_input=" + kBlock << "cse 7 " + kBlock + "|";
    }

    void typedTextGoesOutAsTyped()
    {
        QFETCH(QString, fields);
        QFETCH(QString, commands);
        const auto settings = fields.split(' ');
        for (const QString &setting : settings) {
            const QByteArray name = setting.section('=', 0, 0).toLatin1();
            const QString value = setting.section('=', 1);
            if (auto *box = m_bench->window().findChild<QComboBox *>(name))
                box->setCurrentIndex(value.toInt());
            else if (auto *spin = m_bench->window().findChild<QSpinBox *>(name))
                spin->setValue(value.toInt());
            else
                type(name, value);
        }
        QCOMPARE(sentBy([this] { press(QByteArray(QTest::currentDataTag()).trimmed()); }), commands);
    }

    void wrongLengthsAreToldAndNotSent_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("wanted");
        QTest::newRow("pushButton_cse_Decryption2") << "plainTextEdit_cse_Cyphertext_input"
                                                    << "N*32";
        QTest::newRow("pushButton_cse_Decryption1") << "plainTextEdit_cse_Cyphertext_input"
                                                    << "N*32";
        QTest::newRow("pushButton_cse_Verification") << "plainTextEdit_cse_CMAC_input"
                                                     << "32";
        QTest::newRow("pushButton_cse_Extend") << "plainTextEdit_cse_Entropy_input"
                                               << "32";
    }

    void wrongLengthsAreToldAndNotSent()
    {
        QFETCH(QString, input);
        QFETCH(QString, wanted);
        BoxAnswerer answers(QMessageBox::Ok);
        type(input.toLatin1(), QString(31, 'A'));
        QCOMPARE(sentBy([this] { press(QTest::currentDataTag()); }), QString());
        QCOMPARE(answers.seen(),
                 QStringList(QStringLiteral(
                                 u"Please check|Invalid input, current input legth is 31. It must be %1, format：HEX.")
                                 .arg(wanted)));
        const QString reminder = m_bench->find<QPlainTextEdit>("plainTextEdit_cse_Cyphertext_input")->placeholderText();
        m_reminded = m_reminded || QByteArray(QTest::currentDataTag()).endsWith("Decryption1"); // only this one reminds
        QCOMPARE(reminder, m_reminded ? QStringLiteral("Hex,range: 0-F, length: N*32, other is invalid") : QString());
    }

    void inputsHoldOneLine()
    {
        auto *edit = m_bench->find<QPlainTextEdit>("plainTextEdit_cse_Message_input");
        edit->clear();
        QTest::keyClicks(edit, "ab");
        QTest::keyClick(edit, Qt::Key_Return);
        QTest::keyClicks(edit, "c");
        edit->insertPlainText(QStringLiteral("d\r\ne\nf"));
        QCOMPARE(edit->toPlainText(), QStringLiteral("abcdef"));
        auto *field = m_bench->find<QLineEdit>("lineEdit_memu_2");
        field->clear();
        QTest::keyClicks(field, "1xg f");
        QCOMPARE(field->text(), QStringLiteral("1f"));
    }

    // Limits: a monitor that is off, a value at a limit, an answer of No, and the three that flash their own way.
    void limitsAreConfirmed()
    {
        BoxAnswerer answers(QMessageBox::Ok);
        m_bench->find<QComboBox>("comboBox_cmu_choice")->setCurrentIndex(6);
        m_bench->find<QSpinBox>("spinBox_cmu_fmax")->setValue(90);
        m_bench->find<QSpinBox>("spinBox_cmu_fmin")->setValue(70);
        const auto set = [this] { press("pushButton_freqlim_set"); };
        m_bench->find<QAbstractButton>("radioButton_cmu6_enable")->setChecked(false);
        QCOMPARE(sentBy(set), QString());
        QCOMPARE(answers.seen(), QStringList("Please check|CMU6 had been closed. Please open and try again."));

        m_bench->find<QAbstractButton>("radioButton_cmu6_enable")->setChecked(true);
        answers.clear();
        QCOMPARE(sentBy(set), QStringLiteral("cmu 6 90 70|")); // no record yet: nothing to compare
        QCOMPARE(answers.seen(), QStringList());
        for (char n = 0; n < 13; ++n)
            m_bench->window().CMUDataFrameUnpack(
                1, 4, QByteArray::fromHex("01 50 5A 46").replace(0, 1, QByteArray(1, char(n << 4 | 1))));
        m_bench->find<QSpinBox>("spinBox_cmu_fmax")->setValue(80);
        answers.setButton(QMessageBox::No);
        QCOMPARE(sentBy(set), QString());
        m_bench->find<QSpinBox>("spinBox_cmu_fmax")->setValue(81);
        m_bench->find<QSpinBox>("spinBox_cmu_fmin")->setValue(80);
        answers.setButton(QMessageBox::Yes);
        QCOMPARE(sentBy(set), QStringLiteral("cmu 6 81 80|"));
        const QString question = QStringLiteral("Please check|CMU6 frequency is %1 frequency.\r\nIf you input this "
                                                "frequency you will inject fault.\r\nAre you sure?");
        QCOMPARE(answers.seen(),
                 (QStringList{question.arg("higher than maximum"), question.arg("lower than minimum")}));
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
            m_bench->find<QLabel>(qPrintable(label))->setStyleSheet(greyStyle);
        m_bench->find<QLabel>("label_clkout0_fmin")->setStyleSheet("untouched");
        m_bench->window().modifycmuFreq(monitor);
        for (const QString &label : labels)
            QCOMPARE(m_bench->style(qPrintable(label)),
                     blue.contains(label) ? QStringLiteral("background-color: rgb(85, 170, 255);") : greyStyle);
        QCOMPARE(m_bench->style("label_clkout0_fmin"), QStringLiteral("untouched"));
    }

    void crossbarsThatAreOffRefuse()
    {
        BoxAnswerer answers(QMessageBox::Ok);
        m_bench->find<QGroupBox>("groupBox_XBIC3")->setChecked(false);
        QCOMPARE(sentBy([this] { press("pushButton_xbic_fault4"); }), QString());
        QCOMPARE(answers.seen(), QStringList("Please check|XBIC3 is disabled, can not inject fault to XBIC3."));
    }

private:
    std::unique_ptr<WindowFixture> m_bench;
    bool m_reminded = false;
};

QTEST_MAIN(TestButtons)
#include "tst_buttons.moc"
