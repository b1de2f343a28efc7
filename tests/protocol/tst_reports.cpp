// SPDX-License-Identifier: MIT
// Every report from literal bytes to named fields and to words, and what holds for all reports whatever their bytes are.
// The bytes are such that a wrong offset, width or order shows: no two are equal, and none is spare. The fixed texts are
// as the board's makers gave them.
#include "protocol/commands.h"
#include "protocol/frame.h"
#include "protocol/payload.h"
#include "protocol/report.h"

#include <QCryptographicHash>
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

template <class Function> QStringList texts(int count, Function function)
{
    QStringList list;
    for (int code = 0; code < count; ++code)
        list.append(function(static_cast<quint8>(code)));
    return list;
}

QStringList faultTexts()
{
    QStringList list;
    for (int id = 0; id < fccu::kSourceCount; ++id)
        list << fccu::fccuFaultSource(id) << fccu::fccuFaultDescription(id);
    return list;
}

QString sha256(const QStringList &list)
{
    return QString::fromLatin1(QCryptographicHash::hash(list.join('\n').toUtf8(), QCryptographicHash::Sha256).toHex());
}

// Columns of a report and what is expected of it.
void reportColumns()
{
    QTest::addColumn<int>("module");
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("expected");
}

void row(const char *name, int module, int type, const char *bytes, const QString &expected)
{
    QTest::newRow(name) << module << type << hex(bytes) << expected;
}

} // namespace

class TestReports : public QObject
{
    Q_OBJECT

private slots:
    void fields_data()
    {
        reportColumns();
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

    void reader()
    {
        const PayloadReader read(hex("0102030405060708"));
        QCOMPARE(read.u16be(0), quint16(0x0102));
        QCOMPARE(read.u24be(1), 0x020304U);
        QCOMPARE(read.u32be(4), 0x05060708U);
        QCOMPARE(read.u32le(4), 0x08070605U);
        QCOMPARE(read.u32be(6), 0x07080000U);
        QCOMPARE(read.u8(-1), quint8(0));
        QCOMPARE(PayloadReader(hex("3FC00000")).f32be(0), 1.5F);
        QCOMPARE(PayloadWriter().u24be(0x010203).u32le(0x04050607).f32be(1.5F).take(), hex("010203 07060504 3FC00000"));
    }

    // Digests of the texts as they were given, not as they stand in the code: any change of a letter shows.
    void longTexts_data()
    {
        QTest::addColumn<QStringList>("list");
        QTest::addColumn<QString>("digest");
        QTest::newRow("faults") << faultTexts() << "bc5f3b23d7ee21791a5c8804de9e1c8c25900e802b8f601d6638831fbc1933a9";
        QTest::newRow("reset reasons") << texts(reset::kReasonCount, reset::reasonText)
                                       << "906c7042e90814a3b42564959e3161cf52493c58186ba2b04528a9b97f03db00";
        QTest::newRow("operating modes") << texts(12, sys::modeName)
                                         << "9d661a98e2c358bd5815e5d4375d1b893f5de19fed5a25cfabe65f321de95354";
        QTest::newRow("engine errors") << texts(22, cse::errorText)
                                       << "8f6aafdce081459220d335fdc683594d45f1264508c2a6d906c48697a7bab1a5";
    }

    void longTexts()
    {
        QFETCH(QStringList, list);
        QTEST(sha256(list), "digest");
    }

    // One code more than there are texts.
    void shortTexts_data()
    {
        QTest::addColumn<QStringList>("list");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, int count, QString (*function)(quint8), const char *expected) {
            QTest::newRow(name) << texts(count, function) << QString::fromLatin1(expected);
        };
        row("clock sources", 8, cmu::clockSourceName,
            "IRC_CLK|XOSC_CLK|PLL0_PHI_CLK|Error|PLL1_PHI_CLK|Error|Error|Error");
        row("rights", 4, smpu::rightsText, "r:NO  w:NO|r:NO  w:OK|r:OK  w:NO|r:OK  w:OK");
        row("memory errors", 7, memu::typeText,
            "memu flash correctable error|memu flash uncorrectable error|memu pram correctable error|"
            "memu pram uncorrectable error|memu sram correctable error|memu sram uncorrectable error|6");
        row("voltage faults", 5, pmc::faultText, "Temperature Sensor fault|HVD fault|LVD fault|Self Test fault|");
        row("detectors", 11, pmc::detectorName,
            "all|core LVD|core HVD||PMC LVD|flash LVD|ADC LVD|PLL LVD|I/O LVD|ADC HVD|");
        row("service modes", 5, swt::modeName,
            "Fixed Service Sequence|Keyed Service Sequence|Fixed Address Execution|Incremental Address Execution|");
        row("cores", 4, intcm::coreName, "K4(0)|K7a(1)|K7b(2)|3");
        row("interrupt modes", 5, intcm::modeName, "NONE|IACK|EOI|SW|4");
        row("fail-safe states", 6, vg5k::failSafeName, "INIT_FS|WAIT_ABIST2|ABIST2|ASSERT_FS0B|NORMAL_FS|Unknown");
        row("states of fault collection", 5, fccu::stateName, "CONFIG|NORMAL|ALARM|FAULT|");
        row(
            "engine errors beyond the table", 24, [](quint8 code) { return cse::errorText(code).right(2); },
            "or|de|or|le|ey|ey|ot|ed|or|ed|ed|sy|or|de|de|de|or|nd|or|or|or|or|22|23");
    }

    void shortTexts()
    {
        QFETCH(QStringList, list);
        QTEST(list.join('|'), "expected");
    }

    // As the window's records and logs show them.
    void paragraphs_data()
    {
        reportColumns();
        // clang-format off
        row("text", 0, 0, "61 62", "ab");
        row("mode", 1, 1, "04", "mode: 4 (RUN0)");
        row("version", 1, 4, "40200000 07E4 0C 1F", "Version:2.50  Release time:2020/12/31");
        row("clock faults", 2, 2, "05 31 82 C0 1F",
            "Fault number: 5 \r|Fault 1 |CMU ID: 3|Description: Lower than CMU3 reference frequency limit\r\n|Fault 2 |CMU ID: 8|"
            "Description: CMU8 clock loss\r\n|Fault 3 |CMU ID: 12|Description: Higher than CMU12 reference frequency limit\r\n|"
            "Fault 4 |CMU ID: 1");
        row("no clock faults", 2, 2, "07", "Fault number: 7 \r");
        row("crossbar faults", 3, 2, "02 09 04 03 0A 78563412 00",
            "Fault Number: 2\r\n|Fault 1:|Description:|Master Port ID: M4  |Slave Port ID: S3|Syndrome: 0x0ah|Error Address: 0x12345678h\r\n|"
            "Fault 2:|Description:|Master Port ID: M0  |Slave Port ID: S0|Syndrome: 0x00h|Error Address: 0x0h\r\n");
        row("protection faults", 4, 2, "12 78563412 01 AB000000 FF FF",
            "Fault Number:2\r\n|Fault 1|Description:|Type: Write|Master ID: 2|Fault Address: 0x12345678\r\n|"
            "Fault 2|Description:|Type: Read|Master ID: 1|Fault Address: 0x000000AB\r\n");
        row("memory faults", 7, 2, "02 04 20000100 09",
            "Fault Number: 2\r\n|Fault 1\r\nDescription: memu sram correctable error\r\nFault Address: 20000100\r\n|"
            "Fault 2\r\nDescription: 9\r\nFault Address: 00000000\r\n");
        row("interrupt faults", 8, 2, "01 01 02 02 012D 004E20 0004B0",
            "Fault Number: 1\r\n|Fault 1|Description:|Core Channel: K7a(1)|Core Index: 2|Mode: EOI|Irq: 301|Latency: 166 us|Timer: 10.008 us\r\n");
        row("interrupt fault beyond the tables", 8, 2, "01 07 00 09",
            "Fault Number: 1\r\n|Fault 1|Description:|Core Channel: 7|Core Index: 0|Mode: 9|Irq: 0|Latency: 0 us|Timer: 0.008 us\r\n");
        row("voltage faults", 10, 2, "03 01 02",
            "Fault Number: 3\r\n|Fault 1:HVD fault\r\n|Fault 2:LVD fault\r\n|Fault 3:Temperature Sensor fault\r\n");
        row("fault", 12, 2, "1C 3F800000",
            QStringLiteral(u"Fault ID 28|Source Module： CMU_0        |Fault Description：MC_CLK out of range|\n"));
        row("fault of several sources", 12, 2, "FE",
            QStringLiteral(u"Fault ID 254|Source Module： Multi source|Fault Description： Multiple error reset|\r\n"));
        row("fault at the table's end", 12, 2, "80",
            QStringLiteral(u"Fault ID 128|Source Module： RESET|Fault Description：TSENS_0/1    |\n"));
        row("fault without a source", 12, 2, "81",
            QStringLiteral(u"Fault ID 129|Source Module： Invalid source ID|Fault Description： Invalid|\r\n"));
        row("reset with a source", 13, 1, "00 10 00 02 00 00 01",
            QStringLiteral(u"FCCU short ’functional’ reset|%1|Reset Source: SMPU_0|Fault Description: MPU abort indication for data\r\n|"
                           u"AFE LVD voltage 'destructive' reset|%1").arg(QString(56, '-')));
        row("reset whose sources do not count", 13, 1, "00 40 00 00 00 00 01",
            QStringLiteral(u"software ‘functional’ reset event|%1").arg(QString(56, '-')));
        row("accelerator faults", 16, 2, "05 00000001 000000", "Fault number: 5\r\n|Fault 1\r\nFault code: 1\r\n");
        // clang-format on
    }

    void paragraphs()
    {
        QFETCH(int, module);
        QFETCH(int, type);
        QFETCH(QByteArray, payload);
        const auto report = decode(static_cast<quint8>(module), static_cast<quint8>(type), payload);
        QTEST(describe(*report).join('|'), "expected");
    }

    // A caller may announce another length than there is.
    void clockFaultsByLength()
    {
        const QByteArray payload = hex("02 31 82");
        QCOMPARE(cmu::decodeFaultRecord(payload, 2).entries.size(), std::size_t(1));
        QCOMPARE(cmu::decodeFaultRecord(payload, 0), (cmu::FaultRecord{2, {}}));
        QCOMPARE(cmu::decodeFaultRecord(payload, 5).entries.back(), (cmu::FaultEntry{0, 0}));
    }

    void checksums()
    {
        const auto result = crc::decodeResult(hex("00000002 31 35 000029B1 3FC00000"));
        QCOMPARE(crc::describe(result, {1, "CRC-16-CCITT", "CRC_2", "CRC_channel_0"}).join('|'),
                 QStringLiteral("\r\nCRC calculate condition:\r\nCalculate Polynomials: CRC-16-CCITT|Calculate "
                                "Instance: CRC_2|Calculate Channel: CRC_channel_0|CRC calculate data size: 2 \r\n"
                                "Data:\r\n0x31h    0x35h    |Calculate Result:0x29B1|Calculate Time:1.500000"));
        QCOMPARE(crc::valueText(0xFFFF29B1, 1), QStringLiteral("0x29B1"));
        QCOMPARE(crc::valueText(0x0BF43926, 2), QStringLiteral("0x0BF43926"));
        QCOMPARE(crc::valueText(0x104B, 0), QStringLiteral("0x4B"));
        QCOMPARE(crc::valueText(0x104C, 3), QStringLiteral("0x4C"));
        // Announced bytes that are missing are 0; a lie lists no more than 4096 of them.
        QCOMPARE(crc::dataText(crc::decodeResult(hex("00000003 31"))), QStringLiteral("0x31h    0x00h    0x00h    "));
        const QString lie = crc::dataText(crc::decodeResult(hex("FFFFFFFF 31")));
        QCOMPARE(lie.mid(4097 * 9), QStringLiteral("\n... and 4294963198 more zeros"));
    }

    void commands_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("words");
        const auto row = [](const char *line, const char *words) {
            QTest::newRow(line) << QString::fromLatin1(line) << QString::fromLatin1(words);
        };
        row("cmu 13 4", "cmu 13");
        row("cmu 3 170 150", "cmu");
        row("inject 6 6", "inject 6 6");
        row("inject 9 6 100 55", "inject 9 6");
        row("intcm EOI 1 2 20000 301", "intcm");
        row("intcm 4 1 2", "intcm 4");
        row("cse 5 00 00", "cse 5");
        row("get 1", "get 1");
        row("get 12", "");
        row("get", "");
    }

    void commands()
    {
        QFETCH(QString, line);
        const CommandInfo *const command = commandOf(line);
        QTEST(command ? QString(command->words) : QString(), "words");
    }

    void commandTable()
    {
        QSet<QString> words, reports;
        for (const ReportInfo &info : reportInfos())
            reports.insert(info.name);
        for (const CommandInfo &command : commandInfos()) {
            QVERIFY2(!words.contains(command.words), command.words.latin1());
            words.insert(command.words);
            QVERIFY2(!command.help.isEmpty(), command.words.latin1());
            for (const QString &answer : QString(command.answer).split(' ', Qt::SkipEmptyParts))
                QVERIFY2(reports.contains(answer), qPrintable(answer));
        }
    }
};

QTEST_APPLESS_MAIN(TestReports)
#include "tst_reports.moc"
