// SPDX-License-Identifier: MIT
// Frame extraction: every consequence of its rules to the byte, equality with a literal model on random streams, and the
// same frames however an undamaged stream is cut.
#include "protocol/extraction.h"
#include "support/literalextraction.h"

#include <QTest>

#include <rapidcheck.h>

#include <random>

namespace {

QByteArray frame(int module, const QByteArray &payload)
{
    return QByteArray::fromHex("A5C31234") + char(module) + char(1) + char(payload.size() >> 8) + char(payload.size())
        + payload + QByteArray::fromHex("0000D4B2");
}

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

// A stream that is mean to a parser: frames whole and broken, sync pairs everywhere, lengths that lie.
QByteArray stream(std::mt19937 &random)
{
    QByteArray bytes;
    for (auto parts = 1 + random() % 8; parts > 0; --parts) {
        QByteArray payload;
        for (auto n = random() % (random() % 4 ? 12U : 200U); n > 0; --n)
            payload.append(random() % 5 ? char(random()) : "\xA5\xC3\xD4\xB2"[random() % 4]);
        QByteArray part = frame(int(random() % 20), payload);
        switch (random() % 8) {
        case 0:
            part.truncate(int(random() % unsigned(part.size())));
            break;
        case 1:
            part[part.size() - 1 - int(random() % 2)] = char(random());
            break;
        case 2:
            part[6] = char(random());
            break;
        case 3:
            part = hex("A5C3A5C3A5C3");
            break;
        case 4:
            part.prepend(char(0xA5));
            break;
        case 5:
            part = payload;
            break;
        default:
            break;
        }
        bytes += part;
    }
    return bytes;
}

// Joins as the window does; `Scan` extracts.
template <class Scan> struct Receiver {
    QList<frameData> frames; // of the latest arrival
    QByteArray remainder;
    bool pending = false;
    quint32 partial = 0;

    void take(const QByteArray &chunk)
    {
        const bool continues = pending && remainder.startsWith(char(0xA5));
        if (!continues)
            m_scan.reset();
        const QByteArray data = continues ? remainder + chunk : chunk;
        remainder.clear();
        pending = m_scan.extract(data, frames, remainder, partial);
    }

private:
    Scan m_scan;
};

struct LiteralScan {
    void reset() {}
    bool extract(const QByteArray &data, QList<frameData> &frames, QByteArray &remainder, quint32 &partial)
    {
        return literal::extractFrames(data, frames, remainder, partial);
    }
};

QList<frameData> framesOf(const std::vector<QByteArray> &arrivals)
{
    Receiver<protocol::FrameScan> receiver;
    QList<frameData> all;
    for (const QByteArray &arrival : arrivals) {
        receiver.take(arrival);
        all += receiver.frames;
    }
    return all;
}

// Bit k of `cuts`: a cut behind byte k.
std::vector<QByteArray> cutAt(const QByteArray &stream, quint32 cuts)
{
    std::vector<QByteArray> arrivals;
    int from = 0;
    for (int k = 0; k < stream.size(); ++k) {
        if (k + 1 == stream.size() || (cuts >> k & 1)) {
            arrivals.push_back(stream.mid(from, k + 1 - from));
            from = k + 1;
        }
    }
    return arrivals;
}

bool holdsWholeFrame(const QByteArray &bytes)
{
    for (int at = bytes.indexOf("\xA5\xC3"); at >= 0; at = bytes.indexOf("\xA5\xC3", at + 1)) {
        const int length = at + 8 <= bytes.size() ? quint8(bytes[at + 6]) << 8 | quint8(bytes[at + 7]) : 0xFFFF;
        if (bytes.mid(at + length + 10, 2) == "\xD4\xB2")
            return true;
    }
    return false;
}

// Bytes that matter to extraction more often than by chance, so that payloads look like frames.
QByteArray meanPayload()
{
    const auto byte = rc::gen::weightedOneOf<quint8>(
        {{6, rc::gen::elementOf(std::vector<quint8>{0xA5, 0xC3, 0xD4, 0xB2, 0, 0, 0, 1, 2, 12})},
         {1, rc::gen::arbitrary<quint8>()}});
    QByteArray payload;
    for (const quint8 value : *rc::gen::container<std::vector<quint8>>(byte))
        payload.append(char(value));
    return payload;
}

} // namespace

class TestFrames : public QObject
{
    Q_OBJECT

private slots:
    void rules_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<int>("frames");
        QTest::addColumn<QByteArray>("remainder");
        QTest::addColumn<bool>("pending");
        const QByteArray good = hex("A5C3 0000 02 01 0001 7F 0000 D4B2");
        QTest::newRow("one frame") << good << 1 << QByteArray() << false;
        QTest::newRow("zero length at the end waits")
            << hex("A5C3 0000 02 01 0000 0000 D4B2") << 0 << hex("A5C3 0000 02 01 0000 0000 D4B2") << true;
        QTest::newRow("zero length, one byte more")
            << hex("A5C3 0000 02 01 0000 0000 D4B2 00") << 1 << QByteArray() << false;
        QTest::newRow("too short, no sync") << hex("0102030405") << 0 << hex("0102030405") << true;
        QTest::newRow("cut") << good.left(12) + QByteArray() << 0 << good.left(12) << true;
        QTest::newRow("cut behind a good one") << good + good.left(9) << 1 << good.left(9) << true;
        QTest::newRow("wrong first end byte eats the frame")
            << hex("A5C3 0000 02 01 0003 A5C300 0000 D3B2") + good << 1 << QByteArray() << false;
        QTest::newRow("wrong second end byte")
            << hex("A5C3 0000 02 01 0001 7F 0000 D4B1") + good << 1 << QByteArray() << false;
        QTest::newRow("doubled sync byte") << char(0xA5) + good << 1 << QByteArray() << false;
        QTest::newRow("first sync byte at the end") << good + hex("A5") << 1 << hex("A5") << true;
        QTest::newRow("sync pair at the end") << good + hex("00A5C3") << 1 << hex("A5C3") << true;
        QTest::newRow("sync byte behind a start") << good + hex("A5C3 0000 A5") << 1 << hex("A5C3 0000 A5") << true;
        QTest::newRow("start directly behind a start's sync pair")
            << hex("A5C3") + good + hex("00") << 1 << QByteArray() << false;
        QTest::newRow("a payload with a start whose end bytes are wrong")
            << hex("A5C3 0000 02 01 0020 A5C3 0000 02 01 0001 7F 0000 0000") << 0
            << hex("A5C3 0000 02 01 0020 A5C3 0000 02 01 0001 7F 0000 0000") << true;
        QTest::newRow("a lie of 65535 bytes, then a frame")
            << hex("A5C3 0000 02 01 FFFF") + good << 1 << QByteArray() << false;
        QTest::newRow("two starts at the end")
            << hex("00000000000000 A5C300 A5C301") << 0 << hex("A5C300 A5C301") << true;
        QTest::newRow("identifier 17 is a frame all the same")
            << hex("A5C3 0000 11 01 0001 7F 0000 D4B2") << 1 << QByteArray() << false;
    }

    void rules()
    {
        QFETCH(QByteArray, data);
        QList<frameData> frames;
        QByteArray remainder = "old";
        quint32 partial = 0;
        const bool pending = protocol::extractFrames(data, frames, remainder, partial);
        QTEST(int(frames.size()), "frames");
        QTEST(remainder, "remainder");
        QTEST(pending, "pending");
    }

    void fieldsAreRead()
    {
        QList<frameData> frames;
        QByteArray remainder;
        quint32 partial = 0;
        protocol::extractFrames(hex("A5C3 1234 02 05 0002 7F80 9999 D4B2"), frames, remainder, partial);
        QCOMPARE(frames.size(), 1);
        QCOMPARE(frames.first(), (frameData{2, 5, 0x1234, 2, hex("7F80"), false}));
        QCOMPARE(partial, 0U);
        remainder = "kept";
        QVERIFY(!protocol::extractFrames({}, frames, remainder, partial));
        QCOMPARE(remainder, QByteArray("kept"));
        QCOMPARE(protocol::encodeFrame(protocol::ModuleId::Cmu, 5, hex("7F80"), 0x1234),
                 hex("A5C3 1234 02 05 0002 7F80 0000 D4B2"));
    }

    void equalsTheLiteralModel()
    {
        constexpr quint32 seed = 20260;
        std::mt19937 random(seed);
        for (int i = 0; i < 5000; ++i) {
            const QByteArray bytes = stream(random);
            Receiver<protocol::FrameScan> real;
            Receiver<LiteralScan> model;
            for (int at = 0; at < bytes.size();) {
                const int size = 1 + int(random() % unsigned(random() % 2 ? 16 : bytes.size()));
                real.take(bytes.mid(at, size));
                model.take(bytes.mid(at, size));
                at += size;
                const QString where = QStringLiteral("seed %1, stream %2, byte %3: ").arg(seed).arg(i).arg(at)
                    + QString::fromLatin1(bytes.toHex());
                QVERIFY2(real.frames == model.frames, qPrintable(where));
                QVERIFY2(real.remainder == model.remainder && real.pending == model.pending, qPrintable(where));
                QVERIFY2(real.partial == model.partial, qPrintable(where));
            }
        }
    }

    void everyPartitionGivesTheSameFrames_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<int>("frames");
        QTest::newRow("a sync pair in the payload") << hex("A5C3 0000 02 01 0002 A5C3 0000 D4B2") << 1;
        QTest::newRow("a payload that looks like a header") << hex("A5C3 A5C3 02 01 0003 A5C300 0000 D4B2") << 1;
        QTest::newRow("end bytes in the payload") << hex("A5C3 A5C3 02 01 0002 D4B2 0000 D4B2") << 1;
        QTest::newRow("no payload, then the next") << hex("A5C3 0000 02 01 0000 0000 D4B2 A5C3 A5") << 1;
    }

    void everyPartitionGivesTheSameFrames()
    {
        QFETCH(QByteArray, stream);
        const QList<frameData> whole = framesOf({stream});
        QTEST(int(whole.size()), "frames");
        for (quint32 cuts = 0; cuts < 1U << (stream.size() - 1); ++cuts)
            QVERIFY2(framesOf(cutAt(stream, cuts)) == whole, qPrintable(QString::number(cuts, 2)));
    }

    void partitionsOfUndamagedStreams()
    {
        QVERIFY(rc::check("every frame arrives once, in order", [] {
            QByteArray bytes;
            QList<frameData> sent;
            const auto count = *rc::gen::inRange(1, 6);
            for (int k = 0; k <= count; ++k) {
                const QByteArray payload = k < count ? meanPayload() : QByteArray("end");
                const quint16 tag = *rc::gen::element<quint16>(0x1234, 0xA5C3, 0xA5A5);
                const QByteArray frame = protocol::encodeFrame(protocol::ModuleId::Cmu, 5, payload, tag);
                RC_PRE(!holdsWholeFrame(frame.mid(1)));
                bytes += frame;
                sent.append({2, 5, tag, quint16(payload.size()), payload, false});
            }
            std::vector<QByteArray> arrivals;
            for (int at = 0; at < bytes.size(); at += arrivals.back().size())
                arrivals.push_back(bytes.mid(at, *rc::gen::inRange(1, 40)));
            RC_ASSERT(framesOf(arrivals) == sent);
        }));
    }

    // Nothing but starts that lie about their length: the carry is right, and was not built start by start.
    void overlappingStartsAreCarried()
    {
        QByteArray data;
        while (data.size() < 6000)
            data += hex("A5C3 FFFF FFFF FFFF");
        QList<frameData> frames;
        QByteArray remainder, expected;
        quint32 partial = 0, expectedPartial = 0;
        QVERIFY(protocol::extractFrames(data, frames, remainder, partial));
        literal::extractFrames(data, frames, expected, expectedPartial);
        QCOMPARE(remainder, expected);
        QCOMPARE(partial, expectedPartial);
    }
};

QTEST_APPLESS_MAIN(TestFrames)
#include "tst_frames.moc"
