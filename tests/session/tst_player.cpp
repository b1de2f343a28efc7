// SPDX-License-Identifier: MIT
// A tape played: everything once and in order, at any speed, from anywhere, in steps, to faults and marks.
#include "protocol/frame.h"
#include "session/pcapng.h"
#include "session/player.h"

#include <QBuffer>
#include <QTest>

using namespace session;

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

// Milliseconds to move to, or words.
void take(const QString &moves, Player &player)
{
    for (const QString &move : moves.split(' ')) {
        if (move == "step")
            player.step();
        else if (move == "fault")
            player.moveToNextFault();
        else if (move == "mark")
            player.moveToNextMark();
        else if (move == "play")
            player.play();
        else
            player.moveTo(move.toInt() * kMs);
    }
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
    void lineComesAndGoes_data();
    void lineComesAndGoes();
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
    QTest::addColumn<QString>("moves"); // milliseconds to move to, or a word
    QTest::addColumn<QByteArray>("arrives");
    QTest::addColumn<qint64>("position");
    const QByteArray all = fault(47) + fault(28) + "end";
    const auto row = [](const char *moves, const QByteArray &arrives, qint64 ms) {
        QTest::newRow(moves) << QString::fromLatin1(moves) << arrives << ms * kMs;
    };
    row("0", {}, 0);
    row("10", fault(47).left(9), 10); // up to an arrival
    row("99", all, 50);
    row("-1", {}, 0);
    row("45 20", fault(47) + fault(28) + fault(47), 20);
    row("step", fault(47).left(9), 10);
    row("step step step step step", all, 50);
    row("fault", fault(47), 20);
    row("fault fault", fault(47) + fault(28), 40);
    row("mark", fault(47), 30);
    row("mark mark", all, 50);
}

void TestPlayer::moves()
{
    QFETCH(QString, moves);
    QFETCH(QByteArray, arrives);
    const Tape played = tape();
    Player player(played);
    QByteArray arrived;
    connect(&player, &Player::arrived, this, [&arrived](const QByteArray &bytes) { arrived += bytes; });
    take(moves, player);
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

// Bytes "1" at 10 ms, lost at 20, back at 220 with "2" at 230, handed over at 240, closed from 250 to 450, "3" at 460, lost
// at 470; with a close at the end instead of that loss the line stays.
static Tape tapeWithLosses(bool endsLost)
{
    QByteArray bytes = encodeStart(QStringLiteral("test"), {QStringLiteral("p")});
    const auto add = [&](qint64 ms, const char *note, const char *data = "") {
        const auto direction = *data ? Direction::Received : Direction::None;
        appendPacket(bytes, {ms * kMs, direction, data, *note ? QStringList(note) : QStringList(), 0});
    };
    add(0, "opened p");
    add(10, "", "1");
    add(20, "lost: gone");
    add(220, "opened p");
    add(230, "", "2");
    add(240, "closed");
    add(241, "opened p");
    add(250, "closed");
    add(450, "opened p");
    add(460, "", "3");
    add(470, endsLost ? "lost: gone" : "closed");
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    Reader reader(buffer);
    Tape tape;
    tape.load(reader);
    return tape;
}

void TestPlayer::lineComesAndGoes_data()
{
    QTest::addColumn<QString>("moves");
    QTest::addColumn<bool>("endsLost");
    QTest::addColumn<QString>("told"); // "-" lost, "+" back
    const auto row = [](const char *moves, bool endsLost, const char *told) {
        QTest::addRow("%s, %s", moves, endsLost ? "lost" : "closed")
            << QString::fromLatin1(moves) << endsLost << QString::fromLatin1(told);
    };
    row("play", false, "1-+2-+3");
    row("play", true, "1-+2-+3-");
    row("100", true, "1-");
    row("235", true, "12");
    row("999", true, "123-");
    row("100 235 100 15", true, "1-+21-+1");
    row("step 30 step", true, "1-+2");
}

void TestPlayer::lineComesAndGoes()
{
    QFETCH(const QString, moves);
    QFETCH(const bool, endsLost);
    QFETCH(const QString, told);
    const Tape played = tapeWithLosses(endsLost);
    Player player(played);
    QString heard;
    connect(&player, &Player::arrived, this, [&](const QByteArray &bytes) { heard += QLatin1String(bytes); });
    connect(&player, &Player::lineChanged, this, [&](bool there) { heard += QLatin1Char(there ? '+' : '-'); });
    take(moves, player);
    QTRY_VERIFY(!player.isPlaying());
    QCOMPARE(heard, told);
}

QTEST_GUILESS_MAIN(TestPlayer)
#include "tst_player.moc"
