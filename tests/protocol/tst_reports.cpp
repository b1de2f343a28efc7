// SPDX-License-Identifier: MIT
// Every report from literal bytes to named fields, and what holds for all reports whatever their bytes are. The bytes are
// such that a wrong offset, width or order shows: no two are equal, and none is spare.
#include "protocol/frame.h"
#include "protocol/report.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace protocol;

namespace {

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

// "id=8 spi_lost=true faults=[master=3 write=false; master=4 write=true]"
QString told(const QVector<Field> &fields)
{
    QStringList words;
    for (const Field &field : fields) {
        QStringList records;
        for (const QVector<Field> &record : field.records)
            records.append(told(record));
        words.append(field.name + '=' + (field.isRecords ? '[' + records.join("; ") + ']' : valueText(field)));
    }
    return words.join(' ');
}

QSet<QString> namesOf(const QVector<FieldInfo> &infos)
{
    QSet<QString> names;
    for (const FieldInfo &info : infos)
        names.insert(info.name);
    return names;
}

// True where bytes that the payload does not have are 0: not so where its size counts.
bool endsInZeros(const QVector<FieldInfo> &infos)
{
    for (const FieldInfo &info : infos) {
        switch (info.place.coding) {
        case Coding::Signed:
        case Coding::Optional:
        case Coding::Present:
        case Coding::Latin1:
        case Coding::Utf8:
        case Coding::Data:
        case Coding::Tail:
        case Coding::Whole:
            return false;
        default:
            break;
        }
    }
    return true;
}

// Every kind of bytes that a firmware, a cable or a stranger may send.
QVector<QByteArray> payloads()
{
    QByteArray counting;
    for (int i = 0; i < 60; ++i)
        counting.append(static_cast<char>(i * 7 + 1));
    QVector<QByteArray> all;
    for (int size = 0; size <= counting.size(); ++size)
        all.append(counting.left(size));
    for (const char byte : {'\x00', '\x7F', '\xFF'}) {
        for (const int size : {1, 13, 27, kMaxPayloadSize})
            all.append(QByteArray(size, byte));
    }
    return all;
}

} // namespace

class TestReports : public QObject
{
    Q_OBJECT

private slots:
    void fields_data()
    {
        QTest::addColumn<int>("module");
        QTest::addColumn<int>("type");
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, int module, int type, const char *bytes, const QString &expected) {
            QTest::newRow(name) << module << type << hex(bytes) << expected;
        };
        // clang-format off
        row("text", 0, 0, "61 62 63 E9 00 64", QStringLiteral("text=abcé"));
        row("text of any type", 0, 77, "61", "text=a");
        row("operating mode", 1, 1, "08 09", "mode=8 (HALT0)");
        row("operating mode beyond the table", 1, 1, "0C", "mode=12 (ERROR/UNKNOW)");
        row("firmware", 1, 4, "40200000 07E4 0C 1F", "version=2.5 year=2020 month=12 day=31");
        row("restart by its first byte", 1, 5, "7F 00", "restarted=true");
        row("restart by its second byte", 1, 5, "00 FE", "restarted=true");
        row("no restart", 1, 5, "FE 7F", "restarted=false");
        row("clock text", 2, 0, "4F C3A9 00 4B", QStringLiteral("text=Oé"));
        row("clock monitor", 2, 1, "C4 50 5A 46",
            "id=12 spi_lost=true xosc_lost=false enabled=false value=80 MHz upper=90 MHz lower=70 MHz");
        row("clock monitor, crystal", 2, 1, "02", "id=0 spi_lost=false xosc_lost=true enabled=false value=0 MHz upper=0 MHz lower=0 MHz");
        row("clock monitor, on", 2, 1, "31", "id=3 spi_lost=false xosc_lost=false enabled=true value=0 MHz upper=0 MHz lower=0 MHz");
        row("clock faults", 2, 2, "05 31 82 C0 1F",
            "count=5 faults=[monitor=3 kind=1 (too low); monitor=8 kind=2 (clock loss); monitor=12 kind=0 (too high); monitor=1 kind=15]");
        row("clock status", 2, 4, "AC F42400",
            "sdpll=true pll1=false pll0=true xosc=false irc=true source=4 (PLL1_PHI_CLK) irc_frequency=16 MHz");
        row("clock status, others", 2, 4, "52 0186A0",
            "sdpll=false pll1=true pll0=false xosc=true irc=false source=2 (PLL0_PHI_CLK) irc_frequency=0.1 MHz");
        row("crossbar checkers", 3, 1, "ED", "mask=13 enabled=0 2 3 (XBIC0; XBIC2; XBIC3)");
        row("crossbar faults", 3, 2, "02 09 04 03 0A 78563412 05 06",
            "count=2 faults=[index=9 master=4 slave=3 syndrome=10 address=305419896 (0x12345678); "
            "index=5 master=6 slave=0 syndrome=0 address=0 (0x00000000)]");
        row("region", 4, 1, "7C B8 0123 4567 89AB CDEF",
            "selector=7 unit_on=true valid=true core0_rights=0 (r:NO  w:NO) core1_rights=2 (r:OK  w:NO) "
            "core2_rights=3 (r:OK  w:OK) cache_inhibit=true start=1164378403 (0x45670123) end=3455027627 (0xCDEF89AB)");
        row("region, others", 4, 1, "F1 10 1234",
            "selector=15 unit_on=false valid=false core0_rights=1 (r:NO  w:OK) core1_rights=0 (r:NO  w:NO) "
            "core2_rights=1 (r:NO  w:OK) cache_inhibit=false start=4660 (0x00001234) end=0 (0x00000000)");
        row("region's unit", 4, 1, "08 40", "selector=0 unit_on=true valid=false core0_rights=0 (r:NO  w:NO) core1_rights=1 (r:NO  w:OK) "
            "core2_rights=0 (r:NO  w:NO) cache_inhibit=false start=0 (0x00000000) end=0 (0x00000000)");
        row("protection faults", 4, 2, "12 78563412 01 0DF0ADBA",
            "faults=[master=2 write=true address=305419896 (0x12345678); master=1 write=false address=3131961357 (0xBAADF00D)]");
        row("protection faults with a tail", 4, 2, "F3 01020304 12 05", "faults=[master=3 write=true address=67305985 (0x04030201)]");
        row("register", 5, 1, "01 00010000 78563412 EFBEADDE",
            "hard_locked=true soft_locked=true module_space=305419896 (0x12345678) mirror_space=3735928559 (0xDEADBEEF)");
        row("register, unlocked", 5, 1, "02 00000000 01", "hard_locked=false soft_locked=false module_space=1 (0x00000001) mirror_space=0 (0x00000000)");
        row("checksum", 6, 3, "00000002 31 35 000029B1 3FC00000",
            "size=2 bytes data=31 35 value=10673 (0x000029B1) time=1.5 us");
        row("checksum of nothing", 6, 3, "00000000 01020304 40200000", "size=0 bytes data= value=16909060 (0x01020304) time=2.5 us");
        row("checksum that lies", 6, 3, "00000103 31 35", "size=259 bytes data=31 35 value=0 (0x00000000) time=0 us");
        row("memory faults", 7, 2, "02 04 20345678 05 12",
            "count=2 faults=[type=4 (memu sram correctable error) address=540300920 (0x20345678); "
            "type=5 (memu sram uncorrectable error) address=301989888 (0x12000000)]");
        row("interrupt channels", 8, 1, "02 01 02 03 012D 004E20 0004B0 00 01 02 0203 040506 070809",
            "count=2 channels=[core=1 (K7a(1)) index=2 mode=3 (SW) irq=301 latency=20000 counts (166 us) timer=1200 counts (10 us); "
            "core=0 (K4(0)) index=1 mode=2 (EOI) irq=515 latency=263430 counts (2195 us) timer=460809 counts (3840 us)]");
        row("interrupt faults", 8, 2, "01 07 00 09 FFFE",
            "count=1 faults=[core=7 index=0 mode=9 irq=65534 latency=0 counts (0 us) timer=0 counts (0 us)]");
        row("self-tests", 9, 1, "FF 81 42 800000000000000000000102 400000000000000000000021",
            "lbist_set1=0 7 lbist_set2=1 6 mbist_set1=1 8 95 mbist_set2=0 5 94");
        row("detectors", 10, 1, "FE 05",
            "element_0=false core_lvd=true core_hvd=false adc_lvd=true adc_hvd=false flash_lvd=false element_6=false io_lvd=false pmc_lvd=false");
        row("detectors, others", 10, 1, "01 52",
            "element_0=true core_lvd=false core_hvd=true adc_lvd=false adc_hvd=false flash_lvd=true element_6=false io_lvd=true pmc_lvd=false");
        row("detectors, last", 10, 1, "00 A8",
            "element_0=false core_lvd=false core_hvd=false adc_lvd=false adc_hvd=true flash_lvd=false element_6=true io_lvd=false pmc_lvd=true");
        row("voltage faults", 10, 2, "03 01 02",
            "count=3 faults=[code=1 (HVD fault); code=2 (LVD fault); code=0 (Temperature Sensor fault)] shown=1 (HVD fault)");
        row("voltage faults, not a byte more", 10, 2, "00", "count=0 faults=[]");
        row("voltage faults, one that is missing", 10, 2, "01",
            "count=1 faults=[code=0 (Temperature Sensor fault)] shown=0 (Temperature Sensor fault)");
        row("voltage faults, none", 10, 2, "00 03", "count=0 faults=[] shown=3 (Self Test fault)");
        row("detector's self-test", 10, 4, "07 02", "code=7 (PLL LVD) passed=true");
        row("detector's self-test, cut", 10, 4, "09", "code=9 (ADC HVD) passed=false");
        row("watchdog", 11, 1, "58 00007D00 0001F400",
            "selector=1 mode=1 (Keyed Service Sequence) on=true window=32000 counts (2 ms) timeout=128000 counts (8 ms)");
        row("watchdog, off", 11, 1, "A0 01020304",
            "selector=2 mode=2 (Fixed Address Execution) on=false window=16909060 counts (1056 ms) timeout=0 counts (0 ms)");
        row("state of fault collection", 12, 1, "02 03", "state=2 (ALARM)");
        row("fault", 12, 2, "2F 4148F5C3", "id=47 time=12.56 us source=XBAR_0          description=Data Crossbar error "
            "indication to FCCU if syndrome calculated using EDC on the data is not zero");
        row("fault of several sources", 12, 2, "FE 3F", "id=254 time=0.5 us source=Multi source description=Multiple error reset");
        row("fault beyond the table", 12, 2, "80", "id=128 time=0 us source=RESET description=TSENS_0/1    ");
        row("fault without a source", 12, 2, "81", "id=129 time=0 us source=Invalid Source ID description=Invalid");
        row("reset", 13, 1, "FF 10 20 01 800000000000000000000000 00000012",
            QStringLiteral("reasons=3 10 23 (FCCU short ’functional’ reset; power-on reset; ERROR/UNKNOW) "
            "sources=1 4 127 (PMC; DCF          ; Ethernet/Flexray bridge gasket_mon_err) destructive=true"));
        row("functional reset", 13, 1, "00 44", QStringLiteral("reasons=1 5 (software ‘functional’ reset event; external reset) sources= destructive=false"));
        row("escalation", 13, 4, "05 0A", "functional=5 resets destructive=10 resets");
        row("power chip, supplies", 14, 1, "00 C5", "item=0 (regulators) has_value=true value=197 not_good=0 2 6 7 (VLDO1; VBuck3; VPRE; SPI/I2C)");
        row("power chip, fail-safe", 14, 1, "01 03", "item=1 (fail-safe state) has_value=true value=3 fail_safe_state=3 (ASSERT_FS0B)");
        row("power chip, debug", 14, 1, "02 05", "item=2 (debug mode) has_value=true value=5 debug=true");
        row("power chip, counter", 14, 1, "03 FF", "item=3 (fault counter) has_value=true value=255 fault_counter=255");
        row("power chip, cut", 14, 1, "01", "item=1 (fail-safe state) has_value=false value=0 fail_safe_state=0 (INIT_FS)");
        row("power chip, foreign", 14, 1, "80 01", "item=-128 has_value=true value=1");
        row("power chip, empty", 14, 1, "", "item=-1 has_value=false value=0");
        row("engine", 15, 1, "09 0A", "error=9 (Random number seed not initialized)");
        row("engine's result", 15, 4, "04 41C90A3D 0003 ABCDEF",
            "operation=4 (generate AES-128-CMAC) time=25.13 us length=3 bytes bytes=ab cd ef");
        row("engine's verdict", 15, 4, "05 3F800000 0000 02", "operation=5 (verify AES-128-CMAC) time=1 us length=0 bytes passed=true bytes=");
        row("engine's verdict, none", 15, 4, "05 00000000 0000", "operation=5 (verify AES-128-CMAC) time=0 us length=0 bytes passed=false bytes=");
        row("frame counter", 16, 1, "01020304", "count=16909060 frames");
        row("accelerator faults", 16, 2, "05 01020304 00000007 0908", "count=5 faults=[code=16909060; code=7]");
        // clang-format on
    }

    void fields()
    {
        QFETCH(int, module);
        QFETCH(int, type);
        QFETCH(QByteArray, payload);
        const auto report = decode(static_cast<quint8>(module), static_cast<quint8>(type), payload);
        QVERIFY(report.has_value());
        QTEST(told(protocol::fields(*report)), "expected");
    }

    void everyKindHasARow()
    {
        for (const ReportInfo &info : reportInfos()) {
            const auto report = decode(static_cast<quint8>(info.module), info.type, {});
            QVERIFY2(report.has_value(), info.name.latin1());
            QCOMPARE(protocol::infoOf(*report).name, info.name);
        }
        QCOMPARE(reportInfos().size(), std::variant_size_v<Report>);
    }

    void unknownKindsAreNone()
    {
        int known = 0;
        for (int module = 0; module < 256; ++module) {
            for (int type = 0; type < 256; ++type)
                known += decode(static_cast<quint8>(module), static_cast<quint8>(type), hex("01")).has_value();
        }
        QCOMPARE(known, static_cast<int>(reportInfos().size()) - 1 + 256); // text messages have any type
    }

    // Keys of JSON and filters of network analysers are made of the names: nobody renames them unawares, and none is
    // used twice.
    void namesAreUnique()
    {
        const QRegularExpression identifier(QStringLiteral("^[a-z][a-z0-9]*(_[a-z0-9]+)*$"));
        QSet<QString> reports;
        for (const ReportInfo &info : reportInfos()) {
            reports.insert(info.name);
            const QVector<FieldInfo> infos = info.fields();
            QCOMPARE(namesOf(infos).size(), infos.size());
            QVERIFY2(identifier.match(info.name).hasMatch(), info.name.latin1());
            for (const FieldInfo &field : infos) {
                QVERIFY2(identifier.match(field.name).hasMatch(), field.name.latin1());
                QCOMPARE(namesOf(field.elements).size(), field.elements.size());
            }
        }
        QCOMPARE(reports.size(), static_cast<int>(reportInfos().size()));
    }

    void anyBytesMakeAReport_data()
    {
        QTest::addColumn<int>("kind");
        for (std::size_t kind = 0; kind < reportInfos().size(); ++kind)
            QTest::newRow(reportInfos()[kind].name.latin1()) << static_cast<int>(kind);
    }

    void anyBytesMakeAReport()
    {
        QFETCH(int, kind);
        const ReportInfo &info = reportInfos()[static_cast<std::size_t>(kind)];
        const bool zeros = endsInZeros(info.fields());
        for (const QByteArray &payload : payloads()) {
            const Report report = info.decode(payload);
            QCOMPARE(static_cast<int>(report.index()), kind);
            QVERIFY(!protocol::fields(report).isEmpty());
            QVERIFY(!describe(report).isEmpty() || info.module == ModuleId::Reset);
            if (zeros) {
                const Report longer = info.decode(payload + QByteArray(3, '\0'));
                QVERIFY(report == longer || told(protocol::fields(report)) == told(protocol::fields(longer))); // NaN
            }
        }
    }
};

QTEST_APPLESS_MAIN(TestReports)
#include "tst_reports.moc"
