// SPDX-License-Identifier: MIT
// The recording's bytes as typed by hand; written, cut, damaged and edited by others, read again; kept in memory.
#include "protocol/frame.h"
#include "session/flightrecorder.h"
#include "session/pcapng.h"
#include "session/recorder.h"
#include "session/recordingwriter.h"

#include <QBuffer>
#include <QDateTime>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

Q_DECLARE_METATYPE(session::Packet)

using namespace session;

namespace {

struct Contents {
    QList<Packet> packets;
    QStringList ports;
    QStringList comments;
    QString trouble;
    quint64 foreign = 0;
};

Contents read(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    Reader reader(buffer);
    Contents contents;
    for (PacketView packet; reader.next(packet);)
        contents.packets.append(packet.copied());
    contents.ports = reader.ports();
    contents.comments = reader.comments();
    contents.trouble = reader.trouble();
    contents.foreign = reader.foreignPackets();
    return contents;
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray encoded(const QList<Packet> &packets, const QStringList &ports = {QStringLiteral("ttyUSB0")})
{
    QByteArray bytes = encodeStart(QStringLiteral("test"), ports);
    for (const Packet &packet : packets)
        appendPacket(bytes, packet);
    return bytes;
}

constexpr qint64 kTime = 0x18123456789ABCDE;

const QByteArray kSection = QByteArray::fromHex("0a0d0d0a 28000000 4d3c2b1a 0100 0000 ffffffffffffffff"
                                                "0400 0400 74657374 00000000 28000000");
const QByteArray kInterface = QByteArray::fromHex("01000000 38000000 fc00 0000 00000000"
                                                  "0200 0700 74747955534230 00" // if_name ttyUSB0
                                                  "0800 0800 00e21d0000000000"  // if_speed 1958400
                                                  "0900 0100 09 000000"         // if_tsresol
                                                  "00000000 38000000");
const QByteArray kSentPacket = QByteArray::fromHex("06000000 54000000 00000000 56341218 debc9a78 27000000 27000000"
                                                   "000c 0010 7361666574 79776f726b62656e636800"
                                                   "0023 0004 00000000 0000 0000"
                                                   "67657420310d0a 00"  // get 1
                                                   "0200 0400 02000000" // outbound
                                                   "00000000 54000000");
const QByteArray kNotePacket = QByteArray::fromHex("06000000 50000000 00000000 56341218 debc9a78 18000000 18000000"
                                                   "000c 0010 736166657479776f726b62656e636800 0000 0000"
                                                   "0200 0400 00000000"
                                                   "0100 0700 6d61726b3a2041 00" // mark: A
                                                   "00000000 50000000");

// The same section as another program on a big-endian machine writes it: microseconds, an unknown block, a packet of
// another link type.
const QByteArray kOthersFile =
    QByteArray::fromHex("0a0d0d0a 0000001c 1a2b3c4d 0001 0000 ffffffffffffffff 0000001c"
                        "00000001 00000014 0001 0000 00000000 00000014"
                        "00000001 00000020 00fc 0000 00000000 0002 0004 636f6d31 00000000 00000020"
                        "0000000a 00000010 01020304 00000010"
                        "00000006 00000024 00000000 00000000 00000001 00000004 00000004 deadbeef 00000024"
                        "00000006 0000004c 00000001 00000000 000f4241 00000024 00000024"
                        "000c 0010 736166657479776f726b62656e636800 0023 0004 00000001 0000 0000 a5c30000"
                        "0001 0000 00000000 0000004c");

} // namespace

class TestRecording : public QObject
{
    Q_OBJECT

private slots:
    void bytesAreAsTyped();
    void whatIsWrittenIsRead_data();
    void whatIsWrittenIsRead();
    void cutAnywhere();
    void damaged_data();
    void damaged();
    void editedByOthers();
    void notesKeepTheirWords();
    void lineBecomesPackets();
    void onlyTheLastArrivalsAreKept();
    void writtenThroughWhileItGoesOn();
    void fullDiskIsSaidOnce();
};

void TestRecording::bytesAreAsTyped()
{
    QCOMPARE(encodeStart(QStringLiteral("test"), {QStringLiteral("ttyUSB0")}).toHex(), (kSection + kInterface).toHex());
    QByteArray packet;
    appendPacket(packet, {kTime, Direction::Sent, "get 1\r\n", {}, 0});
    QCOMPARE(packet.toHex(), kSentPacket.toHex());
    packet.clear();
    appendPacket(packet, {kTime, Direction::None, {}, {QStringLiteral("mark: A")}, 0});
    QCOMPARE(packet.toHex(), kNotePacket.toHex());
}

void TestRecording::whatIsWrittenIsRead_data()
{
    QTest::addColumn<Packet>("packet");
    QTest::addColumn<QStringList>("comments");
    for (int size = 0; size < 6; ++size) {
        QTest::addRow("received %d", size)
            << Packet{kTime, Direction::Received, QByteArray("\xA5\xC3\x00\xFF\x0A").left(size), {}, 1}
            << QStringList();
    }
    const QStringList words{QStringLiteral("firmware 1.20 of 2026/11/3"), QStringLiteral("Prüfung ① \U0001F600")};
    QTest::newRow("sent with words") << Packet{1, Direction::Sent, "inject 7 1\r\n", words, 0} << words;
    QTest::newRow("note at the beginning of time")
        << Packet{0, Direction::None, {}, {QStringLiteral("x")}, 0} << QStringList(QStringLiteral("x"));
    QTest::newRow("largest") << Packet{kTime, Direction::Received, QByteArray(kLargestPacket, '\x55'), {}, 0}
                             << QStringList();
    QTest::newRow("comment cut at a character") << Packet{kTime, Direction::None, {}, {QString(40000, QChar(0xFC))}, 0}
                                                << QStringList(QString(32767, QChar(0xFC)));
}

void TestRecording::whatIsWrittenIsRead()
{
    QFETCH(Packet, packet);
    QFETCH(QStringList, comments);
    const QStringList ports{QStringLiteral("ttyUSB0"), QStringLiteral("ttyACM1")};
    const Contents contents = read(encoded({packet, packet}, ports));
    packet.comments = comments;
    QCOMPARE(contents.packets, (QList<Packet>{packet, packet}));
    QCOMPARE(contents.ports, ports);
    QCOMPARE(contents.trouble, QString());
}

void TestRecording::cutAnywhere()
{
    const QList<Packet> packets{{1, Direction::Sent, "get 1\r\n", {}, 0},
                                {2, Direction::None, {}, {QStringLiteral("mark: here")}, 0},
                                {3, Direction::Received, "\xA5\xC3", {}, 0},
                                {4, Direction::Received, {}, {}, 0}};
    const QByteArray whole = encoded(packets);
    QList<int> ends{static_cast<int>(encoded({}).size())};
    for (int count = 1; count <= packets.size(); ++count)
        ends.append(static_cast<int>(encoded(packets.mid(0, count)).size()));
    const int header = static_cast<int>(encodeStart(QStringLiteral("test"), {}).size());
    for (int cut = 0; cut <= whole.size(); ++cut) {
        const Contents contents = read(whole.left(cut));
        const auto complete = std::count_if(ends.begin() + 1, ends.end(), [cut](int end) { return end <= cut; });
        QCOMPARE(contents.packets, packets.mid(0, static_cast<int>(complete)));
        QVERIFY2(contents.trouble.isEmpty() == (cut == header || ends.contains(cut)), qPrintable(QString::number(cut)));
        if (cut >= 12 && !contents.trouble.isEmpty())
            QVERIFY2(contents.trouble.startsWith(QLatin1String("cut short at byte ")), qPrintable(contents.trouble));
    }
}

void TestRecording::damaged_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("trouble");
    const QByteArray start = kSection + kInterface;
    const auto changed = [](QByteArray block, int at, const char *hex) {
        return block.replace(at, 4, QByteArray::fromHex(hex));
    };
    const QString here = QStringLiteral("damaged at byte %1").arg(start.size() + kNotePacket.size());
    QTest::newRow("nothing") << QByteArray() << QStringLiteral("not a recording: no header at byte 0");
    QTest::newRow("a text") << QByteArray("opened the port at noon")
                            << QStringLiteral("not a recording: no pcapng header at byte 0");
    QTest::newRow("packet before a section")
        << kNotePacket << QStringLiteral("not a recording: no pcapng header at byte 0");
    QTest::newRow("no length") << start + kNotePacket + changed(kSentPacket, 4, "00000000") << here;
    QTest::newRow("odd length") << start + kNotePacket + changed(kSentPacket, 4, "59000000") << here;
    QTest::newRow("endless") << start + kNotePacket + changed(kSentPacket, 4, "fcffffff") << here;
    QTest::newRow("two lengths") << start + kNotePacket + changed(kSentPacket, 80, "58000000") << here;
    QTest::newRow("bytes beyond the block") << start + kNotePacket + changed(kSentPacket, 20, "ff000000") << QString();
    QTest::newRow("unknown port") << start + kNotePacket + changed(kSentPacket, 8, "01000000") << QString();
    QTest::newRow("another dissector") << start + kNotePacket + changed(kSentPacket, 32, "73616665")
            + kNotePacket.left(0) << QString();
    QTest::newRow("tag beyond the packet") << start + kNotePacket + changed(kSentPacket, 28, "000cffff") << QString();
}

void TestRecording::damaged()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, trouble);
    const Contents contents = read(bytes);
    QCOMPARE(contents.trouble, trouble);
    const bool sawNote = contents.packets.size() > 0 && contents.packets.first().comments == QStringList("mark: A");
    QCOMPARE(sawNote, bytes.size() > kSection.size() + kInterface.size());
}

void TestRecording::editedByOthers()
{
    const Contents contents = read(kOthersFile + kSection + kInterface + kSentPacket);
    const QList<Packet> expected{{1'000'001'000, Direction::Received, QByteArray::fromHex("a5c30000"), {}, 0},
                                 {kTime, Direction::Sent, "get 1\r\n", {}, 1}};
    QCOMPARE(contents.packets.size(), 2);
    QCOMPARE(contents.packets[0].bytes.toHex(), expected[0].bytes.toHex());
    QCOMPARE(contents.packets[0].time, expected[0].time);
    QCOMPARE(contents.packets[1], expected[1]);
    QCOMPARE(contents.ports, (QStringList{QStringLiteral("com1"), QStringLiteral("ttyUSB0")}));
    QCOMPARE(contents.foreign, 1ULL);
    QCOMPARE(contents.trouble, QString());
}

void TestRecording::notesKeepTheirWords()
{
    const QList<QPair<Note, QString>> rows{{{NoteKind::Opened, "/dev/ttyUSB0"}, "opened /dev/ttyUSB0"},
                                           {{NoteKind::Closed, ""}, "closed"},
                                           {{NoteKind::Lost, "no such device"}, "lost: no such device"},
                                           {{NoteKind::Mark, ""}, "mark: "},
                                           {{NoteKind::Firmware, "1.20 of 2026/11/3"}, "firmware 1.20 of 2026/11/3"},
                                           {{NoteKind::Other, "closed at noon"}, "closed at noon"}};
    for (const auto &[note, comment] : rows) {
        QCOMPARE(commentOf(note), comment);
        QVERIFY2(noteOf(comment) == note, qPrintable(comment));
    }
    QCOMPARE(commentOf({NoteKind::Mark, "two\nlines\tand \x1B[1m"}), QStringLiteral("mark: two lines and  [1m"));
}

void TestRecording::lineBecomesPackets()
{
    QList<Packet> packets;
    Recorder recorder([&packets](const Packet &packet) { packets.append(packet); });
    const QByteArray version =
        protocol::encodeFrame(protocol::ModuleId::Sys, 4, QByteArray::fromHex("40200000 07e4 0c 1f"));
    recorder.opened(QStringLiteral("ttyUSB0"));
    recorder.sent("get 1\r\n");
    recorder.received(version.left(9));
    QCOMPARE(recorder.firmware(), QString());
    recorder.received(version.mid(9));
    recorder.mark(QStringLiteral("first fault"), recorder.now());
    recorder.received(QByteArray(kLargestPacket + 1, 'x'));
    recorder.lost(QStringLiteral("gone"));
    recorder.opened(QStringLiteral("ttyACM0"));
    recorder.closed();

    QStringList told;
    for (const Packet &packet : packets)
        told += QStringLiteral("%1 %2 %3 %4")
                    .arg(packet.port)
                    .arg(int(packet.direction))
                    .arg(packet.bytes.size())
                    .arg(packet.comments.join('|'));
    QCOMPARE(told,
             (QStringList{"0 2 0 opened ttyUSB0", "0 0 7 ", "0 1 9 ", "0 1 11 firmware 2.50 of 2020/12/31",
                          "0 2 0 mark: first fault", QStringLiteral("0 1 %1 ").arg(kLargestPacket), "0 1 1 ",
                          "0 2 0 lost: gone", "1 2 0 opened ttyACM0", "1 2 0 closed"}));
    QCOMPARE(recorder.ports(), (QStringList{"ttyUSB0", "ttyACM0"}));
    QVERIFY(
        std::is_sorted(packets.begin(), packets.end(), [](const auto &a, const auto &b) { return a.time < b.time; }));
    QVERIFY(qAbs(packets.first().time / 1000000 - QDateTime::currentMSecsSinceEpoch()) < 60000);
}

void TestRecording::onlyTheLastArrivalsAreKept()
{
    constexpr qint64 limit = qint64{4} * FlightRecorder::kPiece;
    FlightRecorder recorder(limit);
    const QByteArray bytes(1000, 'x');
    constexpr int total = 10000;
    for (int i = 0; i < total; ++i) {
        recorder.add({i, Direction::Received, bytes, {}, 0});
        QVERIFY(recorder.size() <= limit);
    }
    QVERIFY2(recorder.size() > limit - qint64{2} * FlightRecorder::kPiece, "no more was dropped than had to be");
    QCOMPARE(recorder.packets() + recorder.dropped(), quint64(total));
    QTemporaryDir folder;
    const QString missing = recorder.save(folder.filePath("no/such/folder"), QStringLiteral("test"), {});
    QVERIFY2(missing.contains(QLatin1String("No such file or directory")), qPrintable(missing));
    const QString path = folder.filePath(QStringLiteral("saved.pcapng"));
    QCOMPARE(recorder.save(path, QStringLiteral("test"), {QStringLiteral("p")}, {QStringLiteral("firmware 1")}),
             QString());
    const Contents contents = read(fileBytes(path));
    QCOMPARE(quint64(contents.packets.size()), recorder.packets());
    QCOMPARE(contents.packets.first().time, qint64(recorder.dropped()));
    QCOMPARE(contents.packets.last().time, total - 1);
    QCOMPARE(contents.comments,
             (QStringList{"firmware 1",
                          QStringLiteral("%1 earlier packets are not in this recording").arg(recorder.dropped())}));
}

void TestRecording::writtenThroughWhileItGoesOn()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("live"));
    RecordingWriter writer;
    QVERIFY(writer.open(path, QStringLiteral("test"), QStringLiteral("ttyUSB0")));
    QCOMPARE(read(fileBytes(path)).trouble, QString());
    for (int i = 1; i <= 3; ++i) {
        writer.add({i, Direction::Received, "\xA5", {}, 0});
        QTRY_COMPARE(read(fileBytes(path)).packets.size(), i);
    }
}

void TestRecording::fullDiskIsSaidOnce()
{
    RecordingWriter writer;
    int failures = 0;
    connect(&writer, &RecordingWriter::failed, this, [&failures] { ++failures; });
    QVERIFY(!writer.open(QStringLiteral("/dev/full"), QStringLiteral("test"), QStringLiteral("p")));
    QCOMPARE(writer.trouble(), QStringLiteral("/dev/full: No space left on device"));
    writer.add({1, Direction::Sent, "get 1\r\n", {}, 0});
    writer.flush();
    QCOMPARE(failures, 1);
}

QTEST_GUILESS_MAIN(TestRecording)
#include "tst_recording.moc"
