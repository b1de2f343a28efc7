// SPDX-License-Identifier: MIT
// Reading bytes, and words: the fixed texts as the board's makers gave them, reports in paragraphs, commands.
#include "protocol/commands.h"
#include "protocol/payload.h"
#include "protocol/report.h"

#include <QCryptographicHash>
#include <QSet>
#include <QTest>

using namespace protocol;

namespace {

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
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

} // namespace

class TestDecoders : public QObject
{
    Q_OBJECT

private slots:
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
        QTest::addColumn<int>("module");
        QTest::addColumn<int>("type");
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, int module, int type, const char *bytes, const QString &expected) {
            QTest::newRow(name) << module << type << hex(bytes) << expected;
        };
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
        const auto row = [](const QString &line, const char *words) {
            QTest::newRow(qPrintable(line)) << line << QString::fromLatin1(words);
        };
        row(cmu::enableCommand(4, true), "cmu 13");
        row(cmu::enableCommand(12, false), "cmu 14");
        row(cmu::limitCommand("cmu 3", 170, 150), "cmu");
        row(cmu::injectCommand(2), "inject 5 2");
        row(xbic::enableCommand(3, false), "xbic 2");
        row(xbic::injectCommand(3), "inject 7");
        row(smpu::injectCommand(6), "inject 6 6");
        row(memu::injectCommand(memu::Memory::Sram, true, "100 55"), "inject 9 6");
        row(regp::writeCommand(regp::Write::HardLock, "12"), "regP 4");
        row(crc::command(2, 1, 1), "crc");
        row(intcm::configureCommand("EOI", 1, 2, "20000", "301"), "intcm");
        row(intcm::closeCommand(1, 2), "intcm 4");
        row(intcm::injectCommand(1), "inject 8");
        row(pmc::switchCommand(pmc::AllDetectors, false), "pmc 4");
        row(pmc::selfTestCommand(pmc::PllLvd), "pmc 2");
        row(pmc::injectCommand(4), "inject 4 4");
        row(swt::configureCommand(1, 1, 200), "swt 2");
        row(swt::switchCommand(swt::kAll, true), "swt 3");
        row(reset::thresholdCommand(reset::Kind::Destructive, 5), "resetEsca 2 3");
        row(reset::escalationCommand(reset::Kind::Functional, reset::Operation::ClearCounter), "resetEsca 1 2");
        row(cse::kVerifyCmac + QStringLiteral(" 00"), "cse 5");
        row(QStringLiteral("inject 1"), "inject 1");
        row(QStringLiteral("get 1"), "get 1");
        row(QStringLiteral("get 12"), "");
        row(QStringLiteral("get"), "");
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

QTEST_APPLESS_MAIN(TestDecoders)
#include "tst_decoders.moc"
