// SPDX-License-Identifier: MIT
// From frames on the line to the window's widgets: through port, extraction, dispatch and decoder.
#include "support/fixtures.h"
#include "support/wire.h"

#include "app/textview.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLCDNumber>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QVector>

namespace {

constexpr char kGreen[] = "background-color: rgb(91,215,97)";
constexpr char kGrey[] = "background-color: rgb(200,200,200)";
constexpr char kRed[] = "background-color: rgb(255,0,0)";
constexpr char kBlue[] = "background-color: rgb(85,170,255)";

struct Report {
    int module = 0, type = 0;
    const char *payload = "";
};
using Reports = QVector<Report>;

struct Shown {
    const char *widget = "";
    QString text;
    const char *style = nullptr; // whatever it is
};
using Picture = QVector<Shown>;

// Monitors of clocks by number: the middle of their labels' names.
constexpr const char *clocks[] = {"MCCLK",  "core0clk", "canclk",   "adcclk",   "sysclk",     "leastclk", "clkout0",
                                  "sptclk", "linclk",   "core1clk", "core2clk", "pbridgeclk", "acqnclk"};

// Voltage detectors: bit of the report, code of the self-test.
struct Detector {
    int bit, code;
    const char *onOff, *status, *selfTest;
};

// clang-format off
constexpr Detector detectors[] = {
    {0, 1, "radioButton_PMC_CORELVD_onoff", "label_PMC_CORELVD", "label_PMC_CORELVD_test_s"},
    {0, 7, "radioButton_PMC_PLLLVD_onoff", "label_PMC_PLLLVD", "label_PMC_VDD_LV_PLL0_test_s"},
    {1, 2, "radioButton_PMC_COREHVD_onoff", "label_PMC_COREHVD", "label_PMC_COREHVD_test_s"},
    {2, 6, "radioButton_PMC_ADCELVD_onoff", "label_PMC_ADCELVD", "label_PMC_ADCELVD_test_s"},
    {3, 9, "radioButton_PMC_ADCHVD_onoff", "label_PMC_ADCHVD", "label_PMC_ADCHVD_test_s"},
    {4, 5, "radioButton_PMC_FlashLVD_onoff", "label_PMC_FlashLVD", "label_PMC_FlashLVD_test_s"},
    {6, 8, "radioButton_PMC_IOLVD_onoff", "label_PMC_IOLVD", "label_PMC_IOLVD_test_s"},
    {7, 4, "radioButton_PMC_ADCHVD_onoff_2", "label_PMC_PMCLVD", "label_PMC_PMCLVD_test_s"},
};
// clang-format on

// By bit of a status byte.
constexpr const char *regulators[] = {"label_vg5kstatus_VLDO1",  "label_vg5kstatus_VLDO2",  "label_vg5kstatus_VBuck3",
                                      "label_vg5kstatus_VBuck2", "label_vg5kstatus_VBuck1", "label_vg5kstatus_VBoost",
                                      "label_vg5kstatus_VPRE",   "label_vg5kstatus_spi"};
constexpr const char *generators[] = {nullptr,
                                      nullptr,
                                      nullptr,
                                      "label_cmu_ircstatus",
                                      "label_cmu_xoscstatus",
                                      "label_cmu_pll0status",
                                      "label_cmu_pll1status",
                                      "label_cmu_sdpllstatus"};

// Protection regions: how their fields are named.
struct Region {
    int selector;
    const char *unit, *valid, *prefix, *suffix;
};

// clang-format off
constexpr Region regions[] = {
    {0, "label_SMPU1", "lineEdit_smpu01_Region0", "lineEdit_smpu01_", "_2"},
    {1, "label_SMPU1", "lineEdit_smpu01_Region1", "lineEdit_smpu01_", ""},
    {4, "label_SMPU1", "lineEdit_smpu01_Region4", "lineEdit_smpu01_", "_3"},
    {7, "label_SMPU0", "lineEdit_smpu0_Region1", "lineEdit_smpu0_", ""},
    {15, "label_SMPU1", "lineEdit_smpu01_Region15", "lineEdit_smpu01_", "_4"},
};
// clang-format on

struct Watchdog {
    const char *group, *onOff, *mode, *timeout, *window;
};

// clang-format off
constexpr Watchdog watchdogs[] = {
    {"groupBox_swt0", "label_swt_onoff_0", "lineEdit_swt_0_mode", "lineEdit_swt_timeout0_2", "lineEdit_swt_window0_2"},
    {"groupBox_swt0_2", "label_swt_onoff_1", "lineEdit_swt_1_mode", "lineEdit_swt_timeout0_7", "lineEdit_swt_window0_7"},
    {"groupBox_swt0_3", "label_swt_onoff_2", "lineEdit_swt_2_mode", "lineEdit_swt_timeout0_8", "lineEdit_swt_window0_8"},
};
// clang-format on

QByteArray hex(qint64 value, int digits)
{
    return QByteArray::number(value, 16).rightJustified(digits, '0');
}

/// The style sheets that a widget gets while this lives.
class StyleHistory : public QObject
{
public:
    explicit StyleHistory(QWidget *widget) : m_widget(widget) { widget->installEventFilter(this); }
    QStringList seen;

private:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::StyleChange && (seen.isEmpty() || seen.last() != m_widget->styleSheet()))
            seen.append(m_widget->styleSheet());
        return false;
    }

    QWidget *m_widget;
};

} // namespace

Q_DECLARE_METATYPE(Report)
Q_DECLARE_METATYPE(Reports)
Q_DECLARE_METATYPE(Picture)

class TestPainting : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<WindowFixture> m_window;

    bool show(const Report &report) { return m_window->show(report.module, report.type, report.payload); }
    bool show(int module, int type, const QByteArray &payload)
    {
        return m_window->show(module, type, payload.constData());
    }

    // So that no row passes by the leftovers of another.
    void blank(const Shown &shown)
    {
        auto *widget = m_window->find<QWidget>(shown.widget);
        if (shown.style)
            widget->setStyleSheet(QString());
        if (auto *field = qobject_cast<QLineEdit *>(widget))
            field->setText(QStringLiteral("?"));
        else if (auto *box = qobject_cast<QTextEdit *>(widget))
            box->clear();
    }

    bool isOn(const QByteArray &name) { return m_window->text(name.constData()) == QLatin1String("[on]"); }
    QString text(const QByteArray &name) { return m_window->text(name.constData()); }
    QString style(const QByteArray &name) { return m_window->style(name.constData()); }

private slots:
    void initTestCase() { m_window = std::make_unique<WindowFixture>(); }

    void reports_data()
    {
        QTest::addColumn<Reports>("before");
        QTest::addColumn<Report>("report");
        QTest::addColumn<Picture>("picture");
        const auto row = [](const char *sentence, const Reports &before, const Report &report, const Picture &picture) {
            QTest::newRow(sentence) << before << report << picture;
        };
        // clang-format off
        row("a threshold and none", {}, {13, 4, "05 00"},
            {{"spinBox_F_ResetEsca", "5"},
             {"spinBox_D_ResetEsca", "0"},
             {"pushButton_D_ResetEsca", "", "background-color: rgb(200, 200, 200);"}});
        row("two reset reasons", {}, {13, 1, "00 21"},
            {{"textBrowser_ResetSource",
              QStringLiteral(u"JTAG ’functional’ reset event\n%1\nSTCU offline selftest and STCU Critical Fault "
                             "'destructive' reset\n%1").arg(QString(56, '-'))}});
        row("a fault", {}, {12, 2, "00 3F800000"},
            {{"lineEdit_FCCUsource", "TSENS_0/1    "},
             {"textBrowser_fccu", "On board temperature sensor out of range"},
             {"lineEdit_FCCUdetectime", "1.00"},
             {"comboBox_FaultID", "Fault ID 0"}});
        row("alarm", {}, {12, 1, "02"},
            {{"label_FCCU_status", "ALARM", "background-color: rgb(255, 255, 00);"}});
        row("fault state", {}, {12, 1, "03"},
            {{"label_FCCU_status", "FAULT", kRed}});
        row("a state without a byte is CONFIG", {}, {12, 1, ""},
            {{"label_FCCU_status", "CONFIG", "background-color: rgb(255,185,15)"}});
        row("an unknown state changes nothing", {{12, 1, ""}}, {12, 1, "04"},
            {{"label_FCCU_status", "CONFIG", "background-color: rgb(255,185,15)"}});
        row("a clock within its limits", {}, {2, 1, "01 50 5A 46"},
            {{"radioButton_cmu0_enable", "[on]"},
             {"label_MCCLK_fvalue", "80", kGreen},
             {"label_MCCLK_fmin", "70", kBlue},
             {"label_MCCLK_fmax", "90", kBlue},
             {"label_cmu_xoscloss", "not lost", kGreen}});
        row("a clock at its limit, its source lost", {}, {2, 1, "03 5A 5A 46"},
            {{"label_MCCLK_fvalue", "90", kGreen},
             {"label_cmu_xoscloss", "lost", kRed}});
        row("a monitor that is off keeps what it showed", {{2, 1, "03 50 5A 46"}}, {2, 1, "00 50 5A 46"},
            {{"radioButton_cmu0_enable", "[off]"},
             {"label_MCCLK_fvalue", "Off", kGrey},
             {"label_MCCLK_fmin", "70", kGrey},
             {"label_cmu_xoscloss", "lost", kRed}});
        row("the SPI clock is lost", {}, {2, 1, "85 50 5A 46"},
            {{"label_cmu_spiloss", "lost", "background-color: rgb(255, 0, 0);"}});
        row("two of five clock generators are well", {}, {2, 4, "A0 0186A0"},
            {{"lineEdit_IPCValue", "0.1"},
             {"lineEdit_sysClockSource", "IRC_CLK"},
             {"label_cmu_sdpllstatus", "SDPLL", "background-color: rgb(91,215,97);"},
             {"label_cmu_pll1status", "PLL1", "background-color: rgb(255, 0, 0);"}});
        row("markup is a text like any other", {}, {2, 0, "3C623E"},
            {{"textEdit_cmuFaultRecord", "<b>"}});
        row("one self-test passed", {{10, 4, "00 00"}}, {10, 4, "07 01"},
            {{"label_PMC_VDD_LV_PLL0_test_s", "", kGreen},
             {"label_PMC_CORELVD_test_s", "", kRed}});
        row("a self-test without a result failed", {}, {10, 4, "07"},
            {{"label_PMC_VDD_LV_PLL0_test_s", "", kRed}});
        row("all self-tests passed", {}, {10, 4, "00 01"},
            {{"label_PMC_VDD_LV_PLL0_test_s", "", kGreen},
             {"label_PMC_ADCHVD_test_s", "", kGreen}});
        row("two voltage faults", {}, {10, 2, "02 01 02"},
            {{"textBrowser_PMC_allFaultRec", "Fault Number: 2\n\nFault 1:HVD fault\n\nFault 2:LVD fault\n"},
             {"textBrowser_PMC_FaultRec", "HVD fault"}});
        row("a voltage fault behind a count of 0", {}, {10, 2, "00 03"},
            {{"textBrowser_PMC_allFaultRec", "Fault Number: 0\n"},
             {"textBrowser_PMC_FaultRec", "Self Test fault"}});
        row("no voltage fault", {}, {10, 2, "00"},
            {{"textBrowser_PMC_FaultRec", ""}});
        row("a fail-safe state", {}, {14, 1, "01 01"},
            {{"lineEdit_vg5k_Fail", "WAIT_ABIST2", "background-color: rgb(72,61,139)"}});
        row("no fail-safe state", {}, {14, 1, "01"},
            {{"lineEdit_vg5k_Fail", "Unknown", kGrey}});
        row("debug mode", {}, {14, 1, "02 FF"},
            {{"lineEdit_vg5k_debug", "In DEBUG mode", kGrey}});
        row("the fault counter", {}, {14, 1, "03 FF"},
            {{"lcdNumber_vg5k_Fault", "255"}});
        row("an item that the power chip lacks", {{14, 1, "03 FF"}}, {14, 1, "80 01"},
            {{"lcdNumber_vg5k_Fault", "255"}});
        row("an empty crossbar record leaves the checkers", {{3, 1, "15"}}, {3, 2, "00"},
            {{"textEdit_xbicFaultRecord", "Fault Number: 0\n"},
             {"groupBox_XBIC0", "[on]"}});
        row("region 7 of the first unit", {}, {4, 1, "7C F8 0000 4000 FFFF 4000"},
            {{"label_SMPU0", "SMPU0", kGreen},
             {"lineEdit_smpu0_Region1", "Valid", kGreen},
             {"lineEdit_smpu0_Startadress", "0x40000000"},
             {"lineEdit_smpu0_Endaddress", "0x4000FFFF"},
             {"lineEdit_smpu0_Core0ReadWrite", "r:NO  w:NO"},
             {"lineEdit_smpu0_Core1ReadWrite", "r:OK  w:OK"},
             {"lineEdit_smpu0_Cashe", "Inhibit"}});
        row("region 15, cut", {}, {4, 1, "F1 90 1234"},
            {{"lineEdit_smpu01_Region15", "Not Valid", kGrey},
             {"lineEdit_smpu01_Startadress_4", "0x00001234"},
             {"lineEdit_smpu01_Core1ReadWrite_4", "r:OK  w:NO"},
             {"lineEdit_smpu01_Core2ReadWrite_4", "r:NO  w:OK"},
             {"lineEdit_smpu01_Cashe_4", "Enable"}});
        row("region 0 of the second unit", {{4, 1, "18 00 0002"}}, {4, 1, "08 00 0001"},
            {{"lineEdit_smpu01_Startadress_2", "0x00000001"},
             {"lineEdit_smpu01_Startadress", "0x00000002"},
             {"label_SMPU1", "SMPU1", kGreen}});
        row("a memory error", {}, {7, 2, "01 04 20000100"},
            {{"textEdit_memuFaultRecord", "Fault Number: 1\n\nFault 1\nDescription: memu sram correctable error\nFault Address: 20000100\n"}});
        row("a locked register", {}, {5, 1, "01 00010000 78563412 EFBEADDE"},
            {{"label_regp_hardlock_status", "Lock", kGreen},
             {"label_regp_softlock_status", "Lock", kGreen},
             {"lineEdit_reg_module_2", "0x12345678"},
             {"lineEdit_reg_mirror_2", "0xDEADBEEF"}});
        row("an unlocked register", {}, {5, 1, "02"},
            {{"label_regp_hardlock_status", "Unlock", kGrey},
             {"lineEdit_reg_mirror_2", "0x00000000"}});
        row("a checksum", {}, {6, 3, "00000001 31 0000004B 3FC00000"},
            {{"textBrowser_CRC_calResult", "0x4B"},
             {"lineEdit_CRC_calTime", "Calculate Time:1.500000"},
             {"label_CRC_status", "Successful", kGreen},
             {"textBrowser_CRC_calData", "\nCRC calculate condition:\nCalculate Polynomials: CRC-8 VDA CAN\nCalculate Instance: CRC_1\nCalculate Channel: CRC_channel_0\nCRC calculate data size: 1 \nData:\n0x31h    \nCalculate Result:0x4B\nCalculate Time:1.500000"}});
        row("a watchdog that is on", {}, {11, 1, "58 00007D00 0000FA00"},
            {{"groupBox_swt0_2", "[on]"},
             {"label_swt_onoff_1", "On/Off", kGreen},
             {"lineEdit_swt_1_mode", "Keyed Service Sequence"},
             {"lineEdit_swt_timeout0_7", "4ms"},
             {"lineEdit_swt_window0_7", "2ms - 4ms"}});
        row("a watchdog report without a byte", {}, {11, 1, ""},
            {{"groupBox_swt0", "[off]"},
             {"lineEdit_swt_0_mode", "Fixed Service Sequence"},
             {"lineEdit_swt_timeout0_2", "0ms"},
             {"lineEdit_swt_window0_2", "0ms - 0ms"}});
        row("a fourth watchdog is the first one without its mode", {{11, 1, ""}}, {11, 1, "D8 00000000 00003E80"},
            {{"lineEdit_swt_0_mode", "Fixed Service Sequence"},
             {"lineEdit_swt_timeout0_2", "1ms"}});
        row("encrypted", {}, {15, 4, "01 41C8CCCD 0002 AB0C"},
            {{"textBrowser_cse_Cyphertext_output", "AB0C"},
             {"lineEdit_cse_proess", "25.10 us"}});
        row("decrypted", {}, {15, 4, "02 00000000 0004 41420043"},
            {{"textBrowser_cse_Plaintext_output", "AB"}});
        row("an authentication code", {}, {15, 4, "04 00000000 0001 FF 1A"},
            {{"textBrowser_cse_CMAC_output", "1A"}});
        row("no verdict", {}, {15, 4, "05 00000000 0000"},
            {{"label_indicator_cseSatus", "Fail", kRed}});
        row("a verdict", {}, {15, 4, "05 00000000 0000 01"},
            {{"label_indicator_cseSatus", "Pass", kGreen}});
        row("a random number", {}, {15, 4, "07 00000000 0001 1A"},
            {{"textBrowser_cse_output", "1A"}});
        row("another operation leaves the results", {{15, 4, "07 00000000 0001 1A"}}, {15, 4, "08 3F800000 0001 FF"},
            {{"lineEdit_cse_proess", "1.00 us"},
             {"textBrowser_cse_output", "1A"}});
        row("a number of radar frames", {}, {16, 1, "00000100"},
            {{"lineEdit_spt", "256"}});
        row("two radar faults", {}, {16, 2, "02 00000001 00000007"},
            {{"textEdit_sptFaultRecord", "Fault number: 2\n\nFault 1\nFault code: 1\n\nFault 2\nFault code: 7\n"}});
        // clang-format on
    }

    void reports()
    {
        QFETCH(Reports, before);
        QFETCH(Report, report);
        QFETCH(Picture, picture);
        for (const Shown &shown : picture)
            blank(shown);
        for (const Report &earlier : before)
            QVERIFY(show(earlier));
        QVERIFY(show(report));
        for (const Shown &shown : picture) {
            const auto *widget = m_window->find<QWidget>(shown.widget);
            QCOMPARE(driver::textOf(widget), shown.text);
            if (shown.style)
                QCOMPARE(widget->styleSheet(), QString::fromLatin1(shown.style));
        }
    }

    void everyClockMonitorHasItsLabels()
    {
        const int count = static_cast<int>(std::size(clocks));
        for (int n = 0; n < count; ++n)
            QVERIFY(show(2, 1, hex(n << 4 | 1, 2) + hex(50 + n, 2) + hex(90 + n, 2) + hex(20 + n, 2)));
        for (int n = 0; n < count; ++n) {
            const QByteArray label = QByteArray("label_") + clocks[n];
            QVERIFY(isOn("radioButton_cmu" + QByteArray::number(n) + "_enable"));
            QCOMPARE(text(label + "_fvalue"), QString::number(50 + n));
            QCOMPARE(text(label + "_fmax"), QString::number(90 + n));
            QCOMPARE(text(label + "_fmin"), QString::number(20 + n));
            QCOMPARE(style(label + "_fvalue"), QString(kGreen));
        }
        for (int off = 0; off < count; ++off) {
            QVERIFY(show(2, 1, hex(off << 4, 2) + "325A14"));
            for (int n = 0; n < count; ++n) {
                QCOMPARE(isOn("radioButton_cmu" + QByteArray::number(n) + "_enable"), n > off);
                QCOMPARE(text(QByteArray("label_") + clocks[n] + "_fvalue"),
                         n > off ? QString::number(50 + n) : QStringLiteral("Off"));
            }
        }
    }

    void everyInterruptChannelHasItsLabels()
    {
        constexpr int channels = 9;
        QByteArray payload = hex(channels, 2);
        for (int n = 0; n < channels; ++n) // core, channel, mode, interrupt, latency allowed, time taken
            payload += hex(n / 3, 2) + hex(n % 3, 2) + hex(n / 3 + 1, 2) + hex(300 + n, 4)
                + hex(n % 2 ? 0 : 1000 + n, 6) + hex(70 + n, 6);
        QVERIFY(show(8, 1, payload));
        for (int n = 0; n < channels; ++n) {
            const QByteArray number = QByteArray::number(n + 1);
            QCOMPARE(text("label_intcm_latency" + number), QString::number(n % 2 ? 0 : 1000 + n));
            QCOMPARE(text("label_intcm_timer" + number), QString::number(70 + n));
            QCOMPARE(text("label_intcm_irq" + number), QString::number(300 + n));
            QCOMPARE(text("label_intcm_onoff" + number), n % 2 ? QStringLiteral("Off") : QStringLiteral("On"));
        }
        QCOMPARE(text("label_intcm_mode1"), QStringLiteral("IACK"));
        QCOMPARE(text("label_intcm_mode2"), QStringLiteral("EOI"));
        QCOMPARE(text("label_intcm_mode3"), QStringLiteral("SW"));
        QVERIFY(show(8, 1, "01 0000 02 0007 000008 000009")); // of one channel: the others stay
        QCOMPARE(text("label_intcm_irq1"), QStringLiteral("7"));
        QCOMPARE(text("label_intcm_irq2"), QStringLiteral("301"));
        QCOMPARE(text("label_intcm_mode1"), QStringLiteral("EOI"));
        QCOMPARE(text("label_intcm_mode2"), QStringLiteral("EOI"));
    }

    void everyDetectorHasItsSwitchAndLabels()
    {
        for (int bit = 0; bit < 8; ++bit) {
            QVERIFY(show(10, 1, "00" + hex(1U << bit, 2)));
            for (const Detector &detector : detectors) {
                QCOMPARE(isOn(detector.onOff), detector.bit == bit);
                QCOMPARE(style(detector.status), QString(detector.bit == bit ? kGreen : kGrey));
            }
        }
        for (int code = 1; code < 10; ++code) {
            QVERIFY(show(10, 4, "00 00"));
            QVERIFY(show(10, 4, hex(code, 2) + "01"));
            for (const Detector &detector : detectors)
                QCOMPARE(style(detector.selfTest), QString(detector.code == code ? kGreen : kRed));
        }
    }

    void everyBitHasItsLabel()
    {
        for (int set = 0; set < 8; ++set) {
            QVERIFY(show(14, 1, "00" + hex(1U << set, 2)));
            QVERIFY(show(2, 4, hex(1U << set, 2) + "000000"));
            for (int bit = 0; bit < 8; ++bit) {
                QCOMPARE(style(regulators[bit]), QString(bit == set ? kGrey : kGreen));
                if (generators[bit])
                    QCOMPARE(style(generators[bit]),
                             bit == set ? QString(kGreen) + ';' : QStringLiteral("background-color: rgb(255, 0, 0);"));
            }
        }
        for (int set = 0; set < 5; ++set) {
            QVERIFY(show(3, 1, hex(1U << set, 2)));
            for (int n = 0; n < 5; ++n)
                QCOMPARE(isOn("groupBox_XBIC" + QByteArray::number(n)), n == set);
        }
    }

    void everyRegionHasItsFields()
    {
        for (const Region &region : regions) // valid, all may read and write, at addresses of its own
            QVERIFY(show(4, 1,
                         hex(region.selector << 4 | 8, 2) + "80" + hex(region.selector, 2) + "000000" + "FF0000"
                             + hex(region.selector, 2)));
        for (const Region &region : regions) {
            const auto field = [&](const char *name) { return region.prefix + QByteArray(name) + region.suffix; };
            const QString number = QString::number(region.selector, 16).toUpper().rightJustified(2, '0');
            QCOMPARE(text(field("Startadress")), "0x0000" + number + "00");
            QCOMPARE(text(field("Endaddress")), "0x00" + number + "FF00");
        }
    }

    void everyWatchdogHasItsFields()
    {
        for (int n = 0; n < 3; ++n) { // on, in turn with keys and without, n + 1 ms and twice that
            const qint64 window = 8000 * qint64{n + 1};
            QVERIFY(show(11, 1, hex(n << 6 | 8 | (n % 2) << 4, 2) + hex(window, 8) + hex(2 * window, 8)));
        }
        for (int n = 0; n < 3; ++n) {
            QVERIFY(isOn(watchdogs[n].group));
            QCOMPARE(style(watchdogs[n].onOff), QString(kGreen));
            QCOMPARE(text(watchdogs[n].mode),
                     n % 2 ? QStringLiteral("Keyed Service Sequence") : QStringLiteral("Fixed Service Sequence"));
            QCOMPARE(text(watchdogs[n].timeout), QStringLiteral("%1ms").arg(n + 1));
        }
    }

    void eachVoltageFaultCanBeLookedAt()
    {
        QVERIFY(show(10, 2, "02 01 02"));
        auto *selector = m_window->find<QComboBox>("comboBox_PMC_FaultRec");
        selector->setCurrentIndex(1);
        QCOMPARE(text("textBrowser_PMC_FaultRec"), QStringLiteral("LVD fault"));
        selector->setCurrentIndex(0);
        QCOMPARE(text("textBrowser_PMC_FaultRec"), QStringLiteral("HVD fault"));
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

    // Identifiers beyond the table, in log, panel and history: the panel spells one of them differently.
    void oddFaultIdentifiers()
    {
        QVERIFY(show(12, 2, "81 40000000"));
        QVERIFY(text("textBrowser_fccurecord")
                    .contains("Source Module： Invalid source ID\nFault Description： Invalid\n"));
        QVERIFY(show(12, 2, "FE"));
        auto *history = m_window->find<QComboBox>("comboBox_FaultID");
        history->setCurrentIndex(history->count() - 2);
        QCOMPARE(text("lineEdit_FCCUsource"), QStringLiteral("Invalid Source ID"));
        QCOMPARE(text("textBrowser_fccu"), QStringLiteral("Invalid"));
        QCOMPARE(text("lineEdit_FCCUdetectime"), QStringLiteral("2.00"));
    }

    // Frames out of limits, many of one kind: a box for each kind, and the line goes on.
    void errorBoxesDoNotStack()
    {
        BoxAnswerer answers;
        answers.onBox([this] {
            for (int i = 0; i < 100; ++i)
                m_window->send(2, 1, "41 5B 5A 46");
            QVERIFY(show(2, 1, "41 45 5A 46"));
        });
        m_window->send(2, 1, "41 5B 5A 46");
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
        auto *status = m_window->find<QLabel>("label_cse_status_all");
        m_window->turnTo(status);
        m_window->send(15, 1, "00");
        QTRY_COMPARE(status->text(), QStringLiteral("Processing"));
        QCOMPARE(status->styleSheet(), QString(kGreen));
        QTRY_COMPARE(status->text(), QStringLiteral("IDLE"));
        QCOMPARE(status->styleSheet(), QString(kGrey));
        const StyleHistory history(status);
        m_window->send(15, 1, "09");
        m_window->send(15, 1, "09");
        QTRY_COMPARE(answers.seen(), QStringList("Error|CSE error: Random number seed not initialized"));
        QCOMPARE(history.seen, (QStringList{kRed, kGrey, kRed, kGrey}));
    }

    // Self-test results play only with the refresh after a restart, and are never taken back.
    void selfTestsPlayAfterARestart()
    {
        QByteArray payload(27, '\0');
        payload[2] = char(0x81);
        payload[26] = char(0x01);
        m_window->line().write(wire::frame(9, 1, payload));
        m_window->line().write(wire::frame(13, 1, QByteArray::fromHex("00002000")));
        m_window->send(10, 4, "00 01");
        QTRY_COMPARE(m_window->style("label_PMC_IOLVD_test_s"), QString(kGreen));
        QVERIFY(!m_window->style("label_LBIST_8").contains("91,215,97"));
        m_window->line().clear();
        m_window->send(1, 5, "7F");
        QTRY_COMPARE(m_window->style("label_LBIST_8"), QStringLiteral("background-color: rgb(91,215,97)"));
        QCOMPARE(m_window->style("label_MBIST_1"), QStringLiteral("background-color: rgb(91,215,97)"));
        QVERIFY(!m_window->style("label_LBIST_2").contains("91,215,97"));
        QCOMPARE(m_window->style("label_PMC_IOLVD_test_s"), QString(kGrey)); // a destructive reset was seen
        QCOMPARE(m_window->sent(), QStringLiteral("get 3|get 4|"));
        QCOMPARE(m_window->text("textBrowser_fccurecord"), QString());
        QCOMPARE(m_window->style("label_reset_stutas"), QString(kGreen));
    }

    void labelRuns()
    {
        QBitArray flags(8);
        flags.setBit(0);
        flags.setBit(2);
        m_window->window().labelBitSet(8, "MBIST", "rgb(1,2,3)", flags, 0);
        m_window->window().labelBitSet(-1, "LBIST", "rgb(1,2,3)", flags, 0);
        m_window->window().labelBitSet(96, "NOSUCH", "rgb(1,2,3)", flags, 0);
        QCOMPARE(m_window->style("label_MBIST_3"), QStringLiteral("background-color: rgb(1,2,3)"));
        QVERIFY(!m_window->style("label_MBIST_2").contains("rgb(1,2,3)"));
        QVERIFY(!m_window->style("label_LBIST_1").contains("rgb(1,2,3)"));
    }
};

QTEST_MAIN(TestPainting)
#include "tst_painting.moc"
