// SPDX-License-Identifier: MIT
// The real window, a real pseudo-terminal and the virtual board: from the click to the screen.
#include "support/boxanswerer.h"
#include "support/fixtures.h"

#include "console/consoleform.h"
#include "help/introduce.h"
#include "link/commandchannel.h"
#include "link/serialline.h"

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

class TestEndToEnd : public QObject
{
    Q_OBJECT

private:
    void trigger(const char *action) { m_bench->window().findChild<QAction *>(QString::fromLatin1(action))->trigger(); }
    QString log() { return m_bench->text("textBrowser_fccurecord"); }
    bool isGreen(const char *name) { return m_bench->style(name).contains("91,215,97"); }
    bool turnedGreen(const char *name)
    {
        return QTest::qWaitFor([this, name] { return isGreen(name); });
    }

    void useConsole(consoleForm *console)
    {
        QVERIFY(!gSerialPort->isOpen());
        auto *screen = console->findChild<QTextEdit *>("textEdit");
        QTRY_VERIFY(m_bench->virtualBoard().line().isConnected());
        QTest::keyClicks(screen, "get 1");
        QTRY_COMPARE(screen->toPlainText(), QStringLiteral("get 1"));
        QTest::keyClick(screen, Qt::Key_Left);
        QTest::keyClick(screen, Qt::Key_Backspace);
        QTRY_COMPARE(screen->toPlainText(), QStringLiteral("> get1"));
        QTest::keyClick(screen, Qt::Key_Return);
        QTRY_VERIFY2(screen->toPlainText().endsWith("unknown command: get1\n> "), qPrintable(screen->toPlainText()));
        QTest::keyClicks(screen, "status");
        QTest::keyClick(screen, Qt::Key_Return);
        QTRY_VERIFY2(screen->toPlainText().contains("register 0x"), qPrintable(screen->toPlainText()));
    }

private slots:
    // Any order will do: only the start needs a board and a window of its own.
    void init()
    {
        if (qstrcmp(QTest::currentTestFunction(), "startUpShowsTheBoard") == 0)
            m_bench.reset();
        if (!m_bench)
            m_bench = std::make_unique<BoardFixture>();
    }

    void startUpShowsTheBoard()
    {
        QTRY_COMPARE(m_bench->commands.mid(0, 6), (QStringList{"get 3", "get 4", "get 1", "get 9", "get 10", "get 0"}));
        QTRY_COMPARE(m_bench->text("lineEdit_sysworkmode"), QStringLiteral("RUN0"));
        QTRY_COMPARE(m_bench->text("lineEdit_firewareVision"), QStringLiteral("Version:1.40  Release time:2026/11/2"));
        QTRY_VERIFY(m_bench->text("textBrowser_temp").contains("QM7D305"));
        QTRY_VERIFY(m_bench->text("textBrowser_ResetSource").startsWith("power-on reset"));
        QTRY_COMPARE(m_bench->text("label_FCCU_status"), QStringLiteral("NORMAL"));
        QVERIFY(isGreen("pushButton_F_ResetEsca") || m_bench->style("pushButton_F_ResetEsca").contains("46,139,87"));
    }

    // Each injection: the button, the fault that the collection unit reports, and the module's own record.
    void injections_data()
    {
        QTest::addColumn<int>("fault");
        QTest::addColumn<QString>("get");
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("words");
        const auto row = [](const char *button, int fault, const char *get, const char *box, const char *words) {
            QTest::newRow(button) << fault << get << box << words;
        };
        row("pushButton_cmu_fault3", 88, "pushButton_cmu_faultrecord_get", "textEdit_cmuFaultRecord",
            "CMU8 clock loss");
        row("pushButton_PMC_FI_HVD", 2, "pushButton_PMC_GetFault", "textBrowser_PMC_allFaultRec", "HVD fault");
        row("pushButton_xbic_fault1", 47, "", "textEdit_xbicFaultRecord", "Slave Port ID: S3");
        row("pushButton_smpu_fault1", 104, "", "textEdit_smpuFaultRecord", "Fault Address: 0x40000400");
        row("pushButton_memu_inject_3", 16, "pushButton_memu_faultrecord_get", "textEdit_memuFaultRecord",
            "Fault Address: 40000100");
        row("pushButton_memu_inject_5", 96, "", "textEdit_memuFaultRecord", "memu sram correctable error");
        row("pushButton_intcm_inject_k70", 78, "", "textEdit_intcmFaultRecord", "Core Channel: K7a(1)");
        row("pushButton_spt_oram", 121, "", "textEdit_sptFaultRecord", "Fault code: 1");
    }

    void injections()
    {
        QFETCH(int, fault);
        QFETCH(QString, get);
        QFETCH(QString, box);
        QFETCH(QString, words);
        BoxAnswerer answers; // a clock out of its limits is reported at each turn to its page
        m_bench->find<QTextEdit>("textBrowser_fccurecord")->clear();
        m_bench->find<QLineEdit>("lineEdit_memu_3")->setText("100");
        m_bench->find<QLineEdit>("lineEdit_memu_5")->setText("AA");
        m_bench->turnTo(m_bench->find<QPushButton>(QTest::currentDataTag())); // asks the board for the page's state
        if (QByteArray(QTest::currentDataTag()).contains("xbic"))
            QTRY_VERIFY(m_bench->find<QGroupBox>("groupBox_XBIC4")->isChecked());
        m_bench->click(QTest::currentDataTag());
        QTRY_VERIFY2(log().startsWith(QStringLiteral("Fault ID %1\n").arg(fault)), qPrintable(log()));
        QCOMPARE(m_bench->find<QComboBox>("comboBox_FaultID")->currentText(), QStringLiteral("Fault ID %1").arg(fault));
        QVERIFY2(m_bench->text("lineEdit_FCCUdetectime").toDouble() > 0,
                 qPrintable(m_bench->text("lineEdit_FCCUdetectime")));
        if (!get.isEmpty())
            m_bench->click(get.toLatin1());
        QTRY_VERIFY2(m_bench->text(box.toLatin1()).contains(words), qPrintable(m_bench->text(box.toLatin1())));
    }

    void anInvalidAccessToAWatchdogEndsInAReset()
    {
        m_bench->find<QTextEdit>("textBrowser_fccurecord")->clear();
        m_bench->turnTo(m_bench->find<QPushButton>("pushButton_swt_Invalidacess_2"));
        m_bench->click("pushButton_swt_Invalidacess_2");
        QTRY_VERIFY2(log().startsWith(QStringLiteral("Fault ID 13\n")), qPrintable(log()));
        QTRY_VERIFY(m_bench->text("textBrowser_fccu").contains("Software Watchdog Timer 0"));
        QTRY_VERIFY(m_bench->text("textBrowser_ResetSource").startsWith("FCCU long"));
    }

    void aClearedModuleIsNormalAgain()
    {
        BoxAnswerer answers;
        for (const char *fault :
             {"inject 5 1", "inject 7 1", "inject 6 2", "inject 9 5 100 55", "inject 8 1", "inject 4 3", "inject 10 1"})
            sendCommand(QString::fromLatin1(fault));
        QTRY_COMPARE(m_bench->text("label_FCCU_status"), QStringLiteral("ALARM"));
        for (const char *button :
             {"pushButton_cmu_faultstatus_clear", "pushButton_PMC_ClearFault", "pushButton_xbic_faultstatus_clear",
              "pushButton_smpu_faultstatus_clear", "pushButton_memu_faultstatus_clear",
              "pushButton_intcm_faultstatus_clear", "pushButton_spt_faultstatus_clear"})
            m_bench->click(button);
        QTRY_COMPARE(m_bench->text("label_FCCU_status"), QStringLiteral("NORMAL"));
        QTRY_COMPARE(m_bench->text("textEdit_xbicFaultRecord"), QStringLiteral("Fault Number: 0\n"));
    }

    void switchesAndSelfTests()
    {
        m_bench->click("radioButton_PMC_IOLVD_onoff");
        QTRY_VERIFY(!isGreen("label_PMC_IOLVD"));
        m_bench->click("pushButton_PMC_allSTest");
        QTRY_VERIFY(m_bench->style("label_PMC_IOLVD_test_s").contains("255,0,0"));
        QVERIFY(turnedGreen("label_PMC_PMCLVD_test_s"));
        m_bench->click("pushButton_PMC_dafault");
        QVERIFY(turnedGreen("label_PMC_IOLVD"));
        m_bench->click("radioButton_cmu5_enable");
        QTRY_VERIFY(m_bench->commands.contains("cmu 14 5"));
        QTRY_COMPARE(m_bench->text("label_leastclk_fvalue"), QStringLiteral("Off"));
    }

    void theLocksHold()
    {
        const auto write = [this](const char *what, const char *value) {
            m_bench->find<QLineEdit>(QByteArray("lineEdit_reg_") + what)->setText(QString::fromLatin1(value));
            m_bench->click(QByteArray("pushButton_reg_") + what);
        };
        write("turnonsoft1", "12345678");
        QTRY_COMPARE(m_bench->text("lineEdit_reg_module_2"), QStringLiteral("0x12345678"));
        QTRY_COMPARE(m_bench->text("label_regp_softlock_status"), QStringLiteral("Lock"));
        write("writedata", "99");
        QTRY_VERIFY(m_bench->text("textBrowser_temp").contains("the register is locked"));
        QCOMPARE(m_bench->text("lineEdit_reg_module_2"), QStringLiteral("0x12345678"));
        m_bench->click("pushButton_reg_softlockoff");
        QTRY_COMPARE(m_bench->text("label_regp_softlock_status"), QStringLiteral("Unlock"));
        write("turnonhard", "1");
        QTRY_COMPARE(m_bench->text("label_regp_hardlock_status"), QStringLiteral("Lock"));
    }

    // Published vectors: FIPS 197 C.1, RFC 4493 example 2.
    void publishedVectors()
    {
        const auto type = [this](const char *input, const char *text) {
            m_bench->find<QPlainTextEdit>(input)->setPlainText(text);
        };
        m_bench->click("pushButton_cse_loadKey");
        QTRY_COMPARE(m_bench->text("label_cse_status_all"), QStringLiteral("Processing"));
        type("plainTextEdit_cse_Plaintext_input", "00112233445566778899AABBCCDDEEFF");
        m_bench->click("pushButton_cse_Encryption1");
        QTRY_COMPARE(m_bench->text("textBrowser_cse_Cyphertext_output"),
                     QStringLiteral("69C4E0D86A7B0430D8CDB78070B4C55A"));
        type("plainTextEdit_cse_Message_input", "6bc1bee22e409f96e93d7e117393172a");
        m_bench->click("pushButton_cse_Generation");
        QTRY_COMPARE(m_bench->text("textBrowser_cse_CMAC_output"), QStringLiteral("070A16B46B4D4144F79BDD9DD04A287C"));
        type("plainTextEdit_cse_CMAC_input", "070A16B46B4D4144F79BDD9DD04A287D");
        m_bench->click("pushButton_cse_Verification");
        QTRY_COMPARE(m_bench->text("label_indicator_cseSatus"), QStringLiteral("Fail"));
        type("plainTextEdit_cse_CMAC_input", "070A16B46B4D4144F79BDD9DD04A287C");
        m_bench->click("pushButton_cse_Verification");
        QTRY_COMPARE(m_bench->text("label_indicator_cseSatus"), QStringLiteral("Pass"));
        BoxAnswerer answers;
        m_bench->click("pushButton_cse_Pseudo");
        QTRY_COMPARE(answers.seen(), QStringList("Error|CSE error: Random number seed not initialized"));
        m_bench->click("pushButton_cse_True_random");
        QTRY_COMPARE(m_bench->text("textBrowser_cse_output").size(), 32);
    }

    void checksumOfTheBoard()
    {
        m_bench->find<QComboBox>("comboBox_CRC_polynomial")->setCurrentIndex(2);
        m_bench->click("pushButton_CRC_set");
        QCOMPARE(m_bench->text("label_CRC_status"), QStringLiteral("Wait"));
        QTRY_COMPARE(m_bench->text("textBrowser_CRC_calResult"), QStringLiteral("0xCBF43926"));
        QTRY_COMPARE(m_bench->text("label_CRC_status"), QStringLiteral("Successful"));
    }

    void resetsAndEscalation()
    {
        trigger("actionFunctional_Reset");
        QTRY_VERIFY(m_bench->text("textBrowser_ResetSource")
                        .startsWith(QString::fromUtf8("software ‘functional’ reset event")));
        QVERIFY(turnedGreen("label_LBIST_8"));
        QVERIFY(isGreen("label_MBIST_92"));
        QCOMPARE(log(), QString()); // emptied by the reset

        m_bench->find<QSpinBox>("spinBox_F_ResetEsca")->setValue(1);
        m_bench->click("pushButton_F_resetEsc_set");
        QTRY_VERIFY(m_bench->commands.contains("resetEsca 1 3 1"));
        m_bench->click("pushButton_D_ResetEsca");
        QTRY_COMPARE(m_bench->find<QSpinBox>("spinBox_D_ResetEsca")->value(), 15);
        m_bench->click("pushButton_D_resetEsc_clear");
        trigger("actionFunctional_Reset");
        QTRY_VERIFY(m_bench->text("textBrowser_ResetSource")
                        .startsWith(QString::fromUtf8("‘functional’ reset escalation  'destructive' reset")));
        QTRY_COMPARE(m_bench->text("lineEdit_vg5k_Fail"), QStringLiteral("NORMAL_FS"));
        m_bench->click("pushButton_regUpdate");
        QTRY_COMPARE(m_bench->text("label_regp_hardlock_status"), QStringLiteral("Unlock")); // taken off by the reset

        m_bench->find<QSpinBox>("spinBox_D_ResetEsca")->setValue(1);
        m_bench->click("pushButton_D_resetEsc_set");
        QTRY_VERIFY(m_bench->commands.contains("resetEsca 2 3 1"));
        trigger("actionDestructive_Reset");
        QTRY_VERIFY(m_bench->board().isHeld());
        m_bench->board().powerCycle();
        QTRY_VERIFY(m_bench->text("textBrowser_ResetSource").startsWith("power-on reset"));
    }

    // The console takes the line over, shows what the board prints, and hands the line back.
    void consoleThereAndBack()
    {
        QTimer::singleShot(0, this, [this] {
            auto *console = driver::topLevel<consoleForm>();
            useConsole(console);
            console->close();
        });
        trigger("actionconsole"); // returns when the console is closed
        QVERIFY(gSerialPort->isOpen());
        m_bench->find<QLineEdit>("lineEdit_sysworkmode")->clear();
        trigger("actionGet_Status");
        QTRY_COMPARE(m_bench->text("lineEdit_sysworkmode"), QStringLiteral("RUN0"));
    }

    void helpBoxesAreInForm()
    {
        BoxAnswerer answers(QMessageBox::Close);
        trigger("actionabout");
        trigger("actionLicense");
        QVERIFY(answers.seen()[0].startsWith("About GUI|")
                && answers.seen()[0].contains("(V1.0)\r\n\nBuilt on Oct 2019\r\n\n"));
        QVERIFY(answers.seen()[1].startsWith("License|"));
        trigger("actionIntroduce");
        QWidget *introduction = driver::topLevel<introduce>();
        QVERIFY(introduction && introduction->windowTitle() == "Introduction"
                && introduction->size() == QSize(1280, 768));
        introduction->close();
    }

private:
    std::unique_ptr<BoardFixture> m_bench;
};

QTEST_MAIN(TestEndToEnd)
#include "tst_endtoend.moc"
