// SPDX-License-Identifier: MIT
// Frame extraction: every consequence of its rules to the byte, and equality with a literal model on random streams.
#include "protocol/frame.h"
#include "support/literalextraction.h"

#include <QTest>

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

struct Receiver {
    QList<frameData> frames;
    QByteArray remainder;
    bool pending = false;
    quint32 partial = 0;

    template <class Extract> void take(const QByteArray &chunk, Extract extract)
    {
        QByteArray data = pending && remainder.startsWith(char(0xA5)) ? remainder + chunk : chunk;
        if (pending)
            remainder.clear();
        pending = extract(data, frames, remainder, partial);
    }
    bool operator==(const Receiver &) const = default;
};

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
        QTest::newRow("doubled sync byte hides a frame") << char(0xA5) + good << 0 << QByteArray() << false;
        QTest::newRow("a lie of 65535 bytes, then a frame")
            << hex("A5C3 0000 02 01 FFFF") + good << 1 << QByteArray() << false;
        QTest::newRow("two starts at the end")
            << hex("00000000000000 A5C300 A5C301") << 0 << hex("A5C301 A5C301") << true;
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
        for (int i = 0; i < 20000; ++i) {
            const QByteArray bytes = stream(random);
            Receiver real, model;
            for (int at = 0; at < bytes.size();) {
                const int size = 1 + int(random() % unsigned(bytes.size()));
                real.take(bytes.mid(at, size), protocol::extractFrames);
                model.take(bytes.mid(at, size), literal::extractFrames);
                at += size;
                QVERIFY2(real == model,
                         qPrintable(QStringLiteral("seed %1, stream %2: %3")
                                        .arg(seed)
                                        .arg(i)
                                        .arg(QString::fromLatin1(bytes.toHex()))));
            }
        }
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
