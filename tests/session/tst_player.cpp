// SPDX-License-Identifier: MIT
// A tape played: everything once and in order, at any speed, from anywhere, in steps, to faults and marks.
#include "protocol/frame.h"
#include "session/pcapng.h"
#include "session/player.h"

#include <QBuffer>
#include <QTest>

using namespace session;

Q_DECLARE_METATYPE(std::function<void(Player &)>)

namespace {

constexpr qint64 kMs = 1'000'000;

QByteArray fault(quint8 id)
{
    return protocol::encodeFrame(protocol::ModuleId::Fccu, 2, QByteArray(1, char(id)) + QByteArray(4, '\0'));
}

// A fault in two arrivals at 10 and 20 ms, a mark at 30 ms that was typed until 40 ms, a fault at 40 ms, the end at 50 ms.
Tape tape()
{
    QByteArray bytes = encodeStart(QStringLiteral("test"), {QStringLiteral("p")});
    const qint64 start = 1'700'000'000'000'000'000;
    const auto add = [&](qint64 ms, Direction direction, const QByteArray &data, const QStringList &comments = {}) {
        appendPacket(bytes, {start + ms * kMs, direction, data, comments, 0});
    };
    add(0, Direction::None, {}, {QStringLiteral("opened p")});
    add(5, Direction::Sent, "get 1\r\n");
    add(10, Direction::Received, fault(47).left(9));
    add(20, Direction::Received, fault(47).mid(9));
    add(40, Direction::Received, fault(28));
    add(30, Direction::None, {}, {QStringLiteral("mark: here")});
    add(50, Direction::Received, "end");
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    Reader reader(buffer);
    Tape tape;
    tape.load(reader);
    return tape;
}

} // namespace

class TestPlayer : public QObject
{
    Q_OBJECT

private slots:
    void tapeKnowsItsEvents();
    void playsAllInOrder_data();
    void playsAllInOrder();
    void moves_data();
    void moves();
    void pausesAndGoesOn();
};

void TestPlayer::tapeKnowsItsEvents()
{
    const Tape played = tape();
    QCOMPARE(played.length(), 50 * kMs);
    QCOMPARE(played.arrivals().size(), std::size_t(4));
    QCOMPARE(played.faults().size(), std::size_t(2));
    QCOMPARE(played.faults()[0].text, QStringLiteral("47"));
    QCOMPARE(played.faults()[0].time, 20 * kMs);
    QCOMPARE(played.faults()[1].time, 40 * kMs);
    QCOMPARE(played.marks().size(), std::size_t(1));
    QCOMPARE(played.marks()[0].text, QStringLiteral("here"));
    QCOMPARE(played.marks()[0].time, 30 * kMs);
    QCOMPARE(played.commands().size(), std::size_t(1));
    QCOMPARE(played.commands()[0].text, QStringLiteral("get 1"));
    QCOMPARE(played.commands()[0].time, 5 * kMs);
}

void TestPlayer::playsAllInOrder_data()
{
    QTest::addColumn<double>("speed");
    for (const double speed : {0.5, 1.0, 10.0, 1000.0})
        QTest::addRow("%g times", speed) << speed;
}

void TestPlayer::playsAllInOrder()
{
    QFETCH(double, speed);
    const Tape played = tape();
    Player player(played);
    QByteArray arrived;
    bool early = false;
    QElapsedTimer clock;
    connect(&player, &Player::arrived, this, [&](const QByteArray &bytes) {
        arrived += bytes;
        const double due = static_cast<double>(10 * kMs) / speed;
        early = early || static_cast<double>(clock.nsecsElapsed()) < due;
    });
    QStringList recalled;
    connect(&player, &Player::recalled, this, [&](const QString &command) {
        recalled.append(arrived.isEmpty() ? command : command + QStringLiteral(" behind its answer"));
    });
    player.setSpeed(speed);
    clock.start();
    player.play();
    QVERIFY(player.isPlaying());
    QTRY_VERIFY(!player.isPlaying());
    QCOMPARE(arrived, fault(47) + fault(28) + "end");
    QVERIFY(player.isAtEnd());
    QCOMPARE(player.position(), played.length());
    QVERIFY2(!early, "nothing before its moment");
    QCOMPARE(recalled, QStringList("get 1"));
    player.play();
    QVERIFY(!player.isPlaying());
}

void TestPlayer::moves_data()
{
    using Move = std::function<void(Player &)>;
    QTest::addColumn<Move>("move");
    QTest::addColumn<QByteArray>("arrives");
    QTest::addColumn<qint64>("position");
    const QByteArray all = fault(47) + fault(28) + "end";
    const auto row = [](const char *name, const Move &move, const QByteArray &arrives, qint64 ms) {
        QTest::newRow(name) << move << arrives << ms * kMs;
    };
    row(
        "nowhere", [](Player &player) { player.moveTo(0); }, {}, 0);
    row(
        "up to an arrival", [](Player &player) { player.moveTo(10 * kMs); }, fault(47).left(9), 10);
    row(
        "beyond the end", [](Player &player) { player.moveTo(99 * kMs); }, all, 50);
    row(
        "before the beginning", [](Player &player) { player.moveTo(-1); }, {}, 0);
    row(
        "back again",
        [](Player &player) {
            player.moveTo(45 * kMs);
            player.moveTo(20 * kMs);
        },
        fault(47) + fault(28) + fault(47), 20);
    row(
        "a step", [](Player &player) { player.step(); }, fault(47).left(9), 10);
    row(
        "steps to the end",
        [](Player &player) {
            for (int i = 0; i < 9; ++i)
                player.step();
        },
        all, 50);
    row(
        "a fault", [](Player &player) { player.moveToNextFault(); }, fault(47), 20);
    row(
        "two faults",
        [](Player &player) {
            player.moveToNextFault();
            player.moveToNextFault();
        },
        fault(47) + fault(28), 40);
    row(
        "a mark", [](Player &player) { player.moveToNextMark(); }, fault(47), 30);
    row(
        "no more marks",
        [](Player &player) {
            player.moveToNextMark();
            player.moveToNextMark();
        },
        all, 50);
}

void TestPlayer::moves()
{
    QFETCH(std::function<void(Player &)>, move);
    QFETCH(QByteArray, arrives);
    const Tape played = tape();
    Player player(played);
    QByteArray arrived;
    connect(&player, &Player::arrived, this, [&arrived](const QByteArray &bytes) { arrived += bytes; });
    move(player);
    QCOMPARE(arrived.toHex(), arrives.toHex());
    QTEST(player.position(), "position");
    QVERIFY(!player.isPlaying());
}

void TestPlayer::pausesAndGoesOn()
{
    const Tape played = tape();
    Player player(played);
    QByteArray arrived;
    connect(&player, &Player::arrived, this, [&](const QByteArray &bytes) {
        if (arrived.isEmpty())
            player.pause();
        arrived += bytes;
    });
    player.play();
    QTRY_COMPARE(arrived, fault(47).left(9));
    QVERIFY(!player.isPlaying());
    QVERIFY(player.position() < 50 * kMs);
    player.play();
    QTRY_COMPARE(arrived, fault(47) + fault(28) + "end");
}

QTEST_GUILESS_MAIN(TestPlayer)
#include "tst_player.moc"
