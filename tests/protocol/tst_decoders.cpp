// SPDX-License-Identifier: MIT
// Payloads of all modules: literal bytes to structs and texts, typed from the board's protocol.
#include "protocol/bist.h"
#include "protocol/cmu.h"
#include "protocol/crc.h"
#include "protocol/cse.h"
#include "protocol/fccu.h"
#include "protocol/intcm.h"
#include "protocol/memu.h"
#include "protocol/payload.h"
#include "protocol/pmc.h"
#include "protocol/reset.h"
#include "protocol/smpu.h"
#include "protocol/spt.h"
#include "protocol/sys.h"
#include "protocol/xbic.h"

#include <QTest>

using namespace protocol;

namespace {

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

QString bits(const QBitArray &flags)
{
    QStringList set;
    for (int i = 0; i < flags.size(); ++i) {
        if (flags.testBit(i))
            set.append(QString::number(i));
    }
    return set.join(' ');
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

    void system()
    {
        QCOMPARE(sys::versionText(sys::decodeFirmwareVersion(hex("40200000 07E4 0C 1F"))),
                 QStringLiteral("Version:2.50  Release time:2020/12/31"));
        QCOMPARE(sys::modeName(sys::decodeOperatingMode({})), QStringLiteral("RESET"));
        QCOMPARE(sys::modeName(9), QStringLiteral("reserved"));
        QCOMPARE(sys::modeName(200), QStringLiteral("ERROR/UNKNOW"));
        QVERIFY(sys::decodeRestartNotice(hex("7F")) && sys::decodeRestartNotice(hex("00FE")));
        QVERIFY(!sys::decodeRestartNotice(hex("FE7F")) && !sys::decodeRestartNotice({}));
    }

    void faultTable_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("description");
        QTest::newRow("0") << 0 << "TSENS_0/1    "
                           << "On board temperature sensor out of range";
        QTest::newRow("27")
            << 27 << "CMU0 olr_evt "
            << QStringLiteral(
                   u"CLKMN0_RMT Supervisor - Oscillator frequency less than fCLKMT0_RMN ÷ 2RCDIVevent status");
        QTest::newRow("49") << 49 << "RESERVED"
                            << "";
        QTest::newRow("88")
            << 88 << QStringLiteral(u"CMU_8 – olr_evt")
            << QStringLiteral(
                   u"CLKMN8_RMT Supervisor - Oscillator frequency less than fCLKMT0_RMN ÷ 2RCDIVevent status");
        QTest::newRow("110") << 110 << "Gskt_d2i/i2d_mon_err"
                             << "IAHB gasket monitor  for  cross AXBX error";
        QTest::newRow("127") << 127 << "Ethernet/Flexray bridge gasket_mon_err"
                             << "IAHB gasket monitor  for  FEC/FLEX bridge gasket error";
        QTest::newRow("128") << 128 << "RESET"
                             << "TSENS_0/1    ";
    }

    void faultTable()
    {
        QFETCH(int, id);
        const fccu::FaultText text = fccu::faultText(static_cast<quint8>(id));
        QTEST(text.source, "source");
        QTEST(text.description, "description");
    }

    void faultCollection()
    {
        QCOMPARE(fccu::decodeFault(hex("1C 3F800000")), (fccu::FaultEvent{28, 1.0F}));
        QCOMPARE(fccu::decodeFault(hex("1C 3F")), (fccu::FaultEvent{28, 0.5F}));
        QCOMPARE(fccu::decodeState({}), quint8(0));
        QCOMPARE(
            fccu::describe({28, 1.0F}).join('|'),
            QStringLiteral(u"Fault ID 28|Source Module： CMU_0        |Fault Description：MC_CLK out of range|\n"));
        QCOMPARE(
            fccu::describe({254, 1.0F}).join('|'),
            QStringLiteral(u"Fault ID 254|Source Module： Multi source|Fault Description： Multiple error reset|\r\n"));
        QCOMPARE(fccu::describe({129, 1.0F}).join('|'),
                 QStringLiteral(u"Fault ID 129|Source Module： Invalid source ID|Fault Description： Invalid|\r\n"));
        QCOMPARE(fccu::recordedText(129), (fccu::FaultText{"Invalid Source ID", "Invalid"}));
    }

    void resets()
    {
        const auto report = reset::decodeReasons(hex("FF 20 20 01 80 00 00 01"));
        QCOMPARE(bits(report.reasons), QStringLiteral("2 10 23"));
        QCOMPARE(bits(report.sources), QStringLiteral("0 31"));
        QVERIFY(report.isDestructive());
        QVERIFY(!reset::decodeReasons(hex("00 FC 00 00")).isDestructive());
        QVERIFY(reset::decodeReasons(hex("00 02")).isDestructive());
        QCOMPARE(reset::faultOfFlag(0), 127);
        QCOMPARE(reset::reasonText(2), QStringLiteral(u"JTAG ’functional’ reset event"));
        QCOMPARE(reset::reasonText(20), QStringLiteral("FCCU failure to react  'destructive' reset"));
        QCOMPARE(reset::describe(reset::decodeReasons(hex("00 10 00 02 00 00 01"))).join('|'),
                 QStringLiteral(u"FCCU short ’functional’ reset|%1|Reset Source: SMPU_0|Fault Description: MPU abort "
                                u"indication for data\r\n|AFE LVD voltage 'destructive' reset|%1")
                     .arg(QString(56, '-')));
        QCOMPARE(reset::decodeEscalation(hex("05")), (reset::Escalation{5, 0}));
    }

    void selfTests()
    {
        QByteArray payload(27, '\0');
        payload[1] = char(0x80);
        payload[2] = char(0x01);
        payload[3] = char(0x80);
        payload[14] = char(0x01);
        payload[15] = char(0x80);
        payload[26] = char(0x05);
        const auto results = bist::decodeResults(payload);
        QCOMPARE(bits(results.lbistSet1), QStringLiteral("0"));
        QCOMPARE(bits(results.lbistSet2), QStringLiteral("7"));
        QCOMPARE(bits(results.mbistSet1), QStringLiteral("0 95"));
        QCOMPARE(bits(results.mbistSet2), QStringLiteral("0 2 95"));
    }

    void clocks()
    {
        QCOMPARE(cmu::decodeMonitor(hex("85 50 5A 46")), (cmu::CmuRecord{8, true, false, true, 0x50, 0x5A, 0x46}));
        QCOMPARE(cmu::decodeMonitor(hex("02")), (cmu::CmuRecord{0, false, true, false, 0, 0, 0}));
        QCOMPARE(cmu::decodeClock(hex("AC 0186A0")), (cmu::ClockStatus{true, false, true, false, true, 4, 0.1F}));
        const char *names[] = {"IRC_CLK",      "XOSC_CLK", "PLL0_PHI_CLK", "Error",
                               "PLL1_PHI_CLK", "Error",    "Error",        "Error"};
        for (quint8 code = 0; code < 8; ++code)
            QCOMPARE(cmu::clockSourceName(code), QString::fromLatin1(names[code]));
        QCOMPARE(cmu::describe(cmu::decodeFaultRecord(hex("02 31 8F"), 3)).join('|'),
                 QStringLiteral("Fault number: 2 \r|Fault 1 |CMU ID: 3|Description: Lower than CMU3 reference "
                                "frequency limit\r\n|Fault 2 |CMU ID: 8"));
        QCOMPARE(cmu::describe(cmu::decodeFaultRecord(hex("07"), 1)).join('|'), QStringLiteral("Fault number: 7 \r"));
    }

    void detectors()
    {
        QCOMPARE(pmc::decodeDetectors(hex("01 81")),
                 (pmc::DetectorBits{true, true, false, false, false, false, false, false, true}));
        QCOMPARE(pmc::decodeSelfTest(hex("07")), (pmc::SelfTest{7, false}));
        QCOMPARE(pmc::decodeSelfTest(hex("07 01")), (pmc::SelfTest{7, true}));
        QCOMPARE(pmc::describe(pmc::decodeFaultRecord(hex("03 01 02"))).join('|'),
                 QStringLiteral("Fault Number: 3\r\n|Fault 1:HVD fault\r\n|Fault 2:LVD fault\r\n|Fault 3:Temperature "
                                "Sensor fault\r\n"));
        QCOMPARE(pmc::faultText(4), QString());
    }

    void crossbars()
    {
        QCOMPARE(xbic::decodeEnables(hex("F5")), quint8(0x15));
        const auto faults = xbic::decodeFaults(hex("02 09 04 03 0A 78563412 00"));
        QCOMPARE(faults, (std::vector<xbic::Fault>{{9, 4, 3, 10, 0x12345678}, {}}));
        QCOMPARE(xbic::describe(faults).join('|'),
                 QStringLiteral("Fault Number: 2\r\n|Fault 1:|Description:|Master Port ID: M4  |Slave Port ID: "
                                "S3|Syndrome: 0x0ah|Error Address: 0x12345678h\r\n"
                                "|Fault 2:|Description:|Master Port ID: M0  |Slave Port ID: S0|Syndrome: 0x00h|Error "
                                "Address: 0x0h\r\n"));
    }

    void regions()
    {
        QCOMPARE(smpu::decodeRegion(hex("7C F8 0000 4000 FFFF 4000")),
                 (smpu::Region{7, true, true, {0, 3, 3}, true, 0x40000000, 0x4000FFFF}));
        QCOMPARE(smpu::decodeRegion(hex("F1 90 1234")), (smpu::Region{15, false, false, {1, 2, 1}, false, 0x1234, 0}));
        QCOMPARE(smpu::rightsText(2), QStringLiteral("r:OK  w:NO"));
        QCOMPARE(smpu::describe(smpu::decodeFaults(hex("12 78563412 01 AB000000 FF FF"))).join('|'),
                 QStringLiteral(
                     "Fault Number:2\r\n|Fault 1|Description:|Type: Write|Master ID: 2|Fault Address: 0x12345678\r\n"
                     "|Fault 2|Description:|Type: Read|Master ID: 1|Fault Address: 0x000000AB\r\n"));
        QCOMPARE(smpu::decodeFaults(hex("010203")).size(), std::size_t(0));
    }

    void memoryErrors()
    {
        QCOMPARE(
            memu::describe(memu::decodeFaults(hex("02 04 20000100 09"))).join('|'),
            QStringLiteral(
                "Fault Number: 2\r\n|Fault 1\r\nDescription: memu sram correctable error\r\nFault Address: 20000100\r\n"
                "|Fault 2\r\nDescription: 9\r\nFault Address: 00000000\r\n"));
    }

    void checksums()
    {
        const auto result = crc::decodeResult(hex("00000002 31 32 000029B1 3FC00000"));
        QCOMPARE(result, (crc::Result{2, "12", 0x29B1, 1.5F}));
        QCOMPARE(crc::dataText(result), QStringLiteral("0x31h    0x32h    "));
        QCOMPARE(crc::describe(result, {1, "CRC-16-CCITT", "CRC_2", "CRC_channel_0"}).join('|'),
                 QStringLiteral("\r\nCRC calculate condition:\r\nCalculate Polynomials: CRC-16-CCITT|Calculate "
                                "Instance: CRC_2|Calculate Channel: CRC_channel_0|CRC calculate data size: 2 \r\n"
                                "Data:\r\n0x31h    0x32h    |Calculate Result:0x29B1|Calculate Time:1.500000"));
        QCOMPARE(crc::valueText(0xFFFF29B1, 1), QStringLiteral("0x29B1"));
        QCOMPARE(crc::valueText(0x0BF43926, 2), QStringLiteral("0x0BF43926"));
        QCOMPARE(crc::valueText(0x104B, 0), QStringLiteral("0x4B"));
        // Announced bytes that are missing are 0; a lie lists no more than 4096 of them.
        QVERIFY(crc::describe(crc::decodeResult(hex("00000003 31")), {})[3].endsWith("0x31h    0x00h    0x00h    "));
        const QString lie = crc::describe(crc::decodeResult(hex("FFFFFFFF 31")), {})[3];
        QCOMPARE(lie.count("0x00h"), 4096);
        QVERIFY(lie.endsWith("0x00h    \n... and 4294963198 more zeros"));
    }

    void interrupts()
    {
        const auto faults = intcm::decodeChannels(hex("02 01 02 02 012D 004E20 0004B0 07 00 09"));
        QCOMPARE(faults, (std::vector<intcm::Channel>{{1, 2, 2, 301, 20000, 1200}, {7, 0, 9, 0, 0, 0}}));
        QCOMPARE(intcm::describe(faults).mid(1, 8).join('|'),
                 QStringLiteral("Fault 1|Description:|Core Channel: K7a(1)|Core Index: 2|Mode: EOI|Irq: 301|Latency: "
                                "166 us|Timer: 10.008 us\r\n"));
        QCOMPARE(intcm::describe(faults).mid(11, 3).join('|'), QStringLiteral("Core Channel: 7|Core Index: 0|Mode: 9"));
    }

    void engine()
    {
        QCOMPARE(cse::decodeResult(hex("04 41C90A3D 0002 FF ABCD")), (cse::Result{4, 25.13F, 2, true, hex("ABCD")}));
        QCOMPARE(cse::decodeResult(hex("05 00000000 0000")), (cse::Result{5, 0, 0, false, {}}));
        QCOMPARE(cse::errorText(9), QStringLiteral("Random number seed not initialized"));
        QCOMPARE(cse::errorText(14), QStringLiteral("Invalid fault code"));
        QCOMPARE(cse::errorText(22), QStringLiteral("22"));
    }

    void signalProcessing()
    {
        QCOMPARE(spt::decodeFrameCount(hex("00000100")), 256U);
        QCOMPARE(spt::describe(spt::decodeFaultRecord(hex("05 00000001 000000"))).join('|'),
                 QStringLiteral("Fault number: 5\r\n|Fault 1\r\nFault code: 1\r\n"));
        QCOMPARE(spt::decodeFaultRecord(hex("00 00000001 00000002")).faults.size(), std::size_t(2));
    }
};

QTEST_APPLESS_MAIN(TestDecoders)
#include "tst_decoders.moc"
