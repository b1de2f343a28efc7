// SPDX-License-Identifier: MIT
// Frames on the line to what the window shows: through port, extraction, dispatch and decoder.
#include "support/boxanswerer.h"
#include "support/fixtures.h"

#include "app/display.h"
#include "app/textview.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLCDNumber>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QVector>

namespace {

constexpr char kGreen[] = "{background-color: rgb(91,215,97)}";
constexpr char kGrey[] = "{background-color: rgb(200,200,200)}";
constexpr char kRed[] = "{background-color: rgb(255,0,0)}";

QByteArray frame(int module, int type, const QByteArray &payload)
{
    return QByteArray::fromHex("A5C30000") + char(module) + char(type) + char(payload.size() >> 8)
        + char(payload.size()) + payload + QByteArray::fromHex("0000D4B2");
}

} // namespace

class TestPainting : public QObject
{
    Q_OBJECT

private:
    void send(int module, int type, const char *payload)
    {
        m_bench->line().write(frame(module, type, QByteArray::fromHex(payload)));
    }

    // "text{style}" or "[on]" of a widget.
    QString shown(const QString &name)
    {
        auto *widget = m_bench->window().findChild<QWidget *>(name);
        if (auto *group = qobject_cast<QGroupBox *>(widget))
            return group->isChecked() ? "[on]" : "[off]";
        if (auto *lcd = qobject_cast<QLCDNumber *>(widget))
            return QString::number(lcd->intValue());
        if (auto *spin = qobject_cast<QSpinBox *>(widget))
            return QString::number(spin->value());
        if (qobject_cast<QRadioButton *>(widget))
            return m_bench->text(qPrintable(name)).section(' ', -1);
        const QString style = widget->styleSheet();
        return m_bench->text(qPrintable(name)) + (style.isEmpty() ? QString() : '{' + style + '}');
    }

private slots:
    void initTestCase()
    {
        m_bench = std::make_unique<WindowFixture>();
        QTRY_VERIFY(m_bench->line().received().endsWith("get 0\r\n"));
    }

    void reports_data()
    {
        QTest::addColumn<int>("module");
        QTest::addColumn<int>("type");
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<QStringList>("expected"); // widget=text{style}
        const auto row = [](const char *name, int module, int type, const char *payload, const QStringList &expected) {
            QTest::newRow(name) << module << type << QByteArray(payload) << expected;
        };
        const QString green = kGreen, grey = kGrey, red = kRed;
        const QString blue = "{background-color: rgb(85,170,255)}";
        row("escalation on, off", 13, 4, "05 00",
            {"spinBox_F_ResetEsca=5", "spinBox_D_ResetEsca=0",
             "pushButton_D_ResetEsca={background-color: rgb(200, 200, 200);}"});
        row("reset reasons", 13, 1, "00 21",
            {"textBrowser_ResetSource=" + QString::fromUtf8("JTAG ’functional’ reset event") + '\n' + QString(56, '-')
             + "\nsystem"});
        row("fccu fault", 12, 2, "00 3F800000",
            {"lineEdit_FCCUsource=TSENS_0/1    ", "textBrowser_fccu=On board temperature sensor out of range",
             "lineEdit_FCCUdetectime=1.00", "comboBox_FaultID=Fault ID 0"});
        row("fccu alarm", 12, 1, "02", {"label_FCCU_status=ALARM{background-color: rgb(255, 255, 00);}"});
        row("fccu fault state", 12, 1, "03", {"label_FCCU_status=FAULT" + red});
        row("fccu config, empty", 12, 1, "", {"label_FCCU_status=CONFIG{background-color: rgb(255,185,15)}"});
        row("fccu unknown state", 12, 1, "04", {"label_FCCU_status=CONFIG{background-color: rgb(255,185,15)}"});
        row("clock monitor on", 2, 1, "01 50 5A 46",
            {"radioButton_cmu0_enable=[on]", "label_MCCLK_fvalue=80" + green, "label_MCCLK_fmin=70" + blue,
             "label_MCCLK_fmax=90" + blue, "label_cmu_xoscloss=not lost" + green});
        row("clock monitor at its limit", 2, 1, "03 5A 5A 46",
            {"label_MCCLK_fvalue=90" + green, "label_cmu_xoscloss=lost" + red});
        row("clock monitor off", 2, 1, "00 50 5A 46",
            {"radioButton_cmu0_enable=[off]", "label_MCCLK_fvalue=Off" + grey, "label_MCCLK_fmin=70" + grey,
             "label_cmu_xoscloss=lost" + red});
        row("SPI clock lost", 2, 1, "85 50 5A 46", {"label_cmu_spiloss=lost{background-color: rgb(255, 0, 0);}"});
        row("clocks", 2, 4, "A0 0186A0",
            {"lineEdit_IPCValue=0.1", "lineEdit_sysClockSource=IRC_CLK",
             "label_cmu_sdpllstatus=SDPLL{background-color: rgb(91,215,97);}",
             "label_cmu_pll1status=PLL1{background-color: rgb(255, 0, 0);}"});
        row("clock text", 2, 0, "3C623E", {"textEdit_cmuFaultRecord=<b>"});
        row("core detector shared with the PLL", 10, 1, "00 01",
            {"radioButton_PMC_CORELVD_onoff=[on]", "radioButton_PMC_PLLLVD_onoff=[on]",
             "radioButton_PMC_ADCHVD_onoff_2=[off]", "label_PMC_PLLLVD=" + green, "label_PMC_IOLVD=" + grey});
        row("PMC detector", 10, 1, "00 80",
            {"radioButton_PMC_ADCHVD_onoff_2=[on]", "label_PMC_PMCLVD=" + green,
             "radioButton_PMC_CORELVD_onoff=[off]"});
        row("no detector", 10, 1, "00 20",
            {"radioButton_PMC_ADCHVD_onoff_2=[off]", "radioButton_PMC_IOLVD_onoff=[off]",
             "radioButton_PMC_FlashLVD_onoff=[off]"});
        row("self-test passed", 10, 4, "07 01",
            {"label_PMC_VDD_LV_PLL0_test_s=" + green, "label_PMC_CORELVD_test_s=" + grey});
        row("self-test cut", 10, 4, "07", {"label_PMC_VDD_LV_PLL0_test_s=" + red});
        row("all self-tests", 10, 4, "00 01",
            {"label_PMC_VDD_LV_PLL0_test_s=" + green, "label_PMC_ADCHVD_test_s=" + green});
        row("voltage faults", 10, 2, "02 01 02",
            {"textBrowser_PMC_allFaultRec=Fault Number: 2\n\nFault 1:HVD fault\n\nFault 2:LVD fault\n",
             "textBrowser_PMC_FaultRec=HVD fault"});
        row("voltage fault behind a count of 0", 10, 2, "00 03",
            {"textBrowser_PMC_allFaultRec=Fault Number: 0\n", "textBrowser_PMC_FaultRec=Self Test fault"});
        row("no voltage fault", 10, 2, "00", {"textBrowser_PMC_FaultRec="});
        row("power chip good", 14, 1, "00 00",
            {"label_vg5kstatus_spi=SPI/I2C" + green, "label_vg5kstatus_VLDO1=VLDO1" + green});
        row("power chip SPI", 14, 1, "00 80",
            {"label_vg5kstatus_spi=SPI/I2C" + grey, "label_vg5kstatus_VPRE=VPRE" + green});
        row("power chip regulators", 14, 1, "00 42",
            {"label_vg5kstatus_VPRE=VPRE" + grey, "label_vg5kstatus_VLDO2=VLDO2" + grey,
             "label_vg5kstatus_VLDO1=VLDO1" + green});
        row("fail-safe state", 14, 1, "01 01", {"lineEdit_vg5k_Fail=WAIT_ABIST2{background-color: rgb(72,61,139)}"});
        row("fail-safe state missing", 14, 1, "01", {"lineEdit_vg5k_Fail=Unknown" + grey});
        row("debug mode", 14, 1, "02 FF", {"lineEdit_vg5k_debug=In DEBUG mode" + grey});
        row("fault counter", 14, 1, "03 FF", {"lcdNumber_vg5k_Fault=255"});
        row("no such item", 14, 1, "80 01", {"lcdNumber_vg5k_Fault=255"});
        row("crossbars", 3, 1, "15",
            {"groupBox_XBIC0=[on]", "groupBox_XBIC1=[off]", "groupBox_XBIC2=[on]", "groupBox_XBIC3=[off]",
             "groupBox_XBIC4=[on]"});
        row("crossbar record", 3, 2, "00", {"textEdit_xbicFaultRecord=Fault Number: 0\n", "groupBox_XBIC0=[on]"});
        row("region 7", 4, 1, "7C F8 0000 4000 FFFF 4000",
            {"label_SMPU0=SMPU0" + green, "lineEdit_smpu0_Region1=Valid" + green,
             "lineEdit_smpu0_Startadress=0x40000000", "lineEdit_smpu0_Endaddress=0x4000FFFF",
             "lineEdit_smpu0_Core0ReadWrite=r:NO  w:NO", "lineEdit_smpu0_Core1ReadWrite=r:OK  w:OK",
             "lineEdit_smpu0_Cashe=Inhibit"});
        row("region 15", 4, 1, "F1 90 1234",
            {"lineEdit_smpu01_Region15=Not Valid" + grey, "lineEdit_smpu01_Startadress_4=0x00001234",
             "lineEdit_smpu01_Core1ReadWrite_4=r:OK  w:NO", "lineEdit_smpu01_Core2ReadWrite_4=r:NO  w:OK",
             "lineEdit_smpu01_Cashe_4=Enable"});
        row("region 0 and its suffix", 4, 1, "08 00 0001",
            {"lineEdit_smpu01_Startadress_2=0x00000001", "lineEdit_smpu01_Startadress=", "label_SMPU1=SMPU1" + green});
        row("memory record", 7, 2, "01 04 20000100",
            {"textEdit_memuFaultRecord=Fault Number: 1\n\nFault 1\nDescription: memu sram correctable error\nFault "
             "Address: 20000100\n"});
        row("register", 5, 1, "01 00010000 78563412 EFBEADDE",
            {"label_regp_hardlock_status=Lock" + green, "label_regp_softlock_status=Lock" + green,
             "lineEdit_reg_module_2=0x12345678", "lineEdit_reg_mirror_2=0xDEADBEEF"});
        row("register unlocked", 5, 1, "02",
            {"label_regp_hardlock_status=Unlock" + grey, "lineEdit_reg_mirror_2=0x00000000"});
        row("checksum", 6, 3, "00000001 31 0000004B 3FC00000",
            {"textBrowser_CRC_calResult=0x4B", "lineEdit_CRC_calTime=Calculate Time:1.500000",
             "label_CRC_status=Successful" + green,
             "textBrowser_CRC_calData=\nCRC calculate condition:\nCalculate Polynomials: CRC-8 VDA CAN\nCalculate "
             "Instance: CRC_1\nCalculate Channel: CRC_channel_0\nCRC calculate data size: 1 \nData:\n0x31h    "
             "\nCalculate Result:0x4B\nCalculate Time:1.500000"});
        row("watchdog", 11, 1, "58 00007D00 0000FA00",
            {"groupBox_swt0_2=[on]", "label_swt_onoff_1=On/Off" + green, "lineEdit_swt_1_mode=Keyed Service Sequence",
             "lineEdit_swt_timeout0_7=4ms", "lineEdit_swt_window0_7=2ms - 4ms"});
        row("watchdog empty", 11, 1, "",
            {"groupBox_swt0=[off]", "lineEdit_swt_0_mode=Fixed Service Sequence", "lineEdit_swt_timeout0_2=0ms",
             "lineEdit_swt_window0_2=0ms - 0ms"});
        row("watchdog selector 3 leaves the mode", 11, 1, "D8 00000000 00003E80",
            {"lineEdit_swt_0_mode=Fixed Service Sequence", "lineEdit_swt_timeout0_2=1ms"});
        row("interrupt channels, two of nine", 8, 1, "02 0202 01 012D 004E20 0004B0 0000 03 0001 000000 000007",
            {"label_intcm_mode1=IACK", "label_intcm_latency1=20000", "label_intcm_irq1=301", "label_intcm_onoff1=On",
             "label_intcm_timer2=7", "label_intcm_onoff2=Off", "label_intcm_mode2=IACK/EOI/SW",
             "label_intcm_latency3=0"});
        row("encrypted", 15, 4, "01 41C8CCCD 0002 AB0C",
            {"textBrowser_cse_Cyphertext_output=AB0C", "lineEdit_cse_proess=25.10 us"});
        row("decrypted", 15, 4, "02 00000000 0004 41420043", {"textBrowser_cse_Plaintext_output=AB"});
        row("cmac", 15, 4, "04 00000000 0001 FF 1A", {"textBrowser_cse_CMAC_output=1A"});
        row("verdict missing", 15, 4, "05 00000000 0000", {"label_indicator_cseSatus=Fail" + red});
        row("verdict", 15, 4, "05 00000000 0000 01", {"label_indicator_cseSatus=Pass" + green});
        row("random", 15, 4, "07 00000000 0001 1A", {"textBrowser_cse_output=1A"});
        row("other operation", 15, 4, "08 3F800000 0001 FF",
            {"lineEdit_cse_proess=1.00 us", "textBrowser_cse_output=1A"});
        row("radar frames", 16, 1, "00000100", {"lineEdit_spt=256"});
        row("radar record", 16, 2, "02 00000001 00000007",
            {"textEdit_sptFaultRecord=Fault number: 2\n\nFault 1\nFault code: 1\n\nFault 2\nFault code: 7\n"});
    }

    void reports()
    {
        QFETCH(int, module);
        QFETCH(int, type);
        QFETCH(QByteArray, payload);
        QFETCH(QStringList, expected);
        send(module, type, payload.constData());
        send(1, 1, "04"); // a frame behind it, to wait for
        m_bench->find<QLineEdit>("lineEdit_sysworkmode")->clear();
        QTRY_COMPARE(m_bench->text("lineEdit_sysworkmode"), QStringLiteral("RUN0"));
        for (const QString &line : std::as_const(expected)) {
            QString text = shown(line.section('=', 0, 0));
            if (line.endsWith("\nsystem")) // only the beginning counts
                text = text.left(line.section('=', 1).size() - 7) + "\nsystem";
            if (line.startsWith("comboBox_"))
                text = m_bench->find<QComboBox>(line.section('=', 0, 0).toLatin1())->currentText();
            QCOMPARE(text, line.section('=', 1));
        }
    }

    // A log that would grow taller than a layout can count keeps its text, and its newest part in view.
    void logsTallerThanALayout()
    {
        QTextEdit view;
        view.setStyleSheet("font-size: 1000px"); // each report wider than the view, and 8,000 of them too tall
        view.resize(300, 1400);
        view.show();
        QApplication::processEvents();
        for (int i = 0; i < 60; ++i)
            textview::append(view, QStringList(QVector<QString>(200, QString::number(i)).toList()));
        QCOMPARE(view.document()->blockCount(), 12000);
        QVERIFY(view.toPlainText().startsWith("0\n0\n"));
        QVERIFY(!view.document()->firstBlock().isVisible());
        QVERIFY(view.document()->lastBlock().isVisible());
        QVERIFY(view.verticalScrollBar()->maximum() > 3'000'000);
        QVERIFY(view.verticalScrollBar()->maximum() < 6'000'000);
        QCOMPARE(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
    }

    // Identifiers beyond the table: what the log says, what the panel and the history say.
    void oddFaultIdentifiers()
    {
        auto *log = m_bench->find<QTextEdit>("textBrowser_fccurecord");
        log->clear();
        for (const char *payload : {"80", "81 40000000", "FE"})
            m_bench->window().FCCUDataFrameUnpack(2, 0, QByteArray::fromHex(payload));
        QCOMPARE(
            log->toPlainText(),
            QStringLiteral(u"Fault ID 128\nSource Module： RESET\nFault Description：TSENS_0/1    \n\n\n"
                           "Fault ID 129\nSource Module： Invalid source ID\nFault Description： Invalid\n\n\n"
                           "Fault ID 254\nSource Module： Multi source\nFault Description： Multiple error reset\n\n"));
        auto *history = m_bench->find<QComboBox>("comboBox_FaultID");
        history->setCurrentIndex(history->count() - 2);
        QCOMPARE(m_bench->text("lineEdit_FCCUsource"), QStringLiteral("Invalid Source ID"));
        QCOMPARE(m_bench->text("textBrowser_fccu"), QStringLiteral("Invalid"));
        QCOMPARE(m_bench->text("lineEdit_FCCUdetectime"), QStringLiteral("2.00"));
    }

    // NORMAL comes late, whatever came meanwhile.
    void normalComesLate()
    {
        send(12, 1, "01");
        send(12, 1, "03");
        QTRY_COMPARE(m_bench->text("label_FCCU_status"), QStringLiteral("FAULT"));
        QTRY_COMPARE(shown("label_FCCU_status"), "NORMAL" + QString(kGreen));
        QCOMPARE(m_bench->find<QLabel>("label_FCCU_status")->accessibleDescription(), QStringLiteral("Green: NORMAL"));
    }

    // A thousand frames out of limits: stored all, one box, and the line goes on.
    void errorBoxesDoNotStack()
    {
        BoxAnswerer answers;
        answers.onBox([this] {
            for (int i = 0; i < 1000; ++i)
                send(2, 1, "41 5B 5A 46");
            send(2, 1, "41 45 5A 46");
            send(1, 1, "06");
            QTRY_COMPARE(m_bench->text("lineEdit_sysworkmode"), QStringLiteral("RUN2"));
        });
        send(2, 1, "41 5B 5A 46");
        QTRY_VERIFY(answers.seen().size() >= 2);
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QCOMPARE(answers.seen().mid(0, 2),
                 (QStringList{"Error|CMU4 frequency is high than maximum frequency, please check.",
                              "Error|CMU4 frequency is low than minimum frequency, please check."}));
        QVERIFY2(answers.seen().size() <= 4, qPrintable(answers.seen().join('\n')));
    }

    void engineErrorsBlinkAndTell()
    {
        BoxAnswerer answers;
        send(15, 1, "00");
        QTRY_COMPARE(shown("label_cse_status_all"), "Processing" + QString(kGreen));
        QTRY_COMPARE(shown("label_cse_status_all"), "IDLE" + QString(kGrey));
        send(15, 1, "09");
        send(15, 1, "09");
        QTRY_COMPARE(answers.seen(), QStringList("Error|CSE error: Random number seed not initialized"));
        QCOMPARE(shown("label_cse_status_all"), "IDLE" + QString(kGrey));
    }

    // Self-test results play only with the refresh after a restart, and are never taken back.
    void selfTestsPlayAfterARestart()
    {
        QByteArray payload(27, '\0');
        payload[2] = char(0x81);
        payload[26] = char(0x01);
        m_bench->line().write(frame(9, 1, payload));
        m_bench->line().write(frame(13, 1, QByteArray::fromHex("00002000")));
        send(10, 4, "00 01");
        QTRY_COMPARE(shown("label_PMC_IOLVD_test_s"), QString(kGreen));
        QVERIFY(!m_bench->style("label_LBIST_8").contains("91,215,97"));
        m_bench->line().clear();
        send(1, 5, "7F");
        QTRY_COMPARE(m_bench->style("label_LBIST_8"), QStringLiteral("background-color: rgb(91,215,97)"));
        QCOMPARE(m_bench->style("label_MBIST_1"), QStringLiteral("background-color: rgb(91,215,97)"));
        QVERIFY(!m_bench->style("label_LBIST_2").contains("91,215,97"));
        QCOMPARE(shown("label_PMC_IOLVD_test_s"), QString(kGrey)); // a destructive reset was seen
        QCOMPARE(m_bench->sent(), QStringLiteral("get 3|get 4|"));
        QCOMPARE(m_bench->text("textBrowser_fccurecord"), QString());
        QCOMPARE(shown("label_reset_stutas"), "Reset" + QString(kGreen));
    }

    void labelRuns()
    {
        QBitArray flags(8);
        flags.setBit(0);
        flags.setBit(2);
        m_bench->window().labelBitSet(8, "MBIST", "rgb(1,2,3)", flags, 0);
        m_bench->window().labelBitSet(-1, "LBIST", "rgb(1,2,3)", flags, 0);
        m_bench->window().labelBitSet(96, "NOSUCH", "rgb(1,2,3)", flags, 0);
        QCOMPARE(m_bench->style("label_MBIST_3"), QStringLiteral("background-color: rgb(1,2,3)"));
        QVERIFY(!m_bench->style("label_MBIST_2").contains("rgb(1,2,3)"));
        QVERIFY(!m_bench->style("label_LBIST_1").contains("rgb(1,2,3)"));
    }

    // Within a batch only the last of what a widget is told is shown, and a pause shows what waits.
    void batchesShowTheLatest()
    {
        auto *field = m_bench->find<QLineEdit>("lineEdit_spt");
        field->setText("before");
        {
            const display::Batch batch;
            display::text(field, "one");
            QCOMPARE(field->text(), QStringLiteral("before"));
            {
                const display::Pause pause;
                QCOMPARE(field->text(), QStringLiteral("one"));
                display::text(field, "two");
                QCOMPARE(field->text(), QStringLiteral("two"));
            }
            display::text(field, "three");
        }
        QCOMPARE(field->text(), QStringLiteral("three"));
    }

private:
    std::unique_ptr<WindowFixture> m_bench;
};

QTEST_MAIN(TestPainting)
#include "tst_painting.moc"
