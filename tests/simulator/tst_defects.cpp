// SPDX-License-Identifier: MIT
// Each defect shows, and shows only where it is: what the board sends with it matches, what a sound board sends does not.
#include "simulator/board.h"
#include "simulator/defects.h"
#include "tests/simulator/recorder.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace simulator;

namespace {

// A board's output for command lines, 2.5 s each.
QString sent(const QString &commands, const QString &defect = {})
{
    Board board;
    if (!defect.isEmpty())
        board.addDefect(defect);
    Recorder recorder(board);
    const auto lines = commands.split('|');
    for (const QString &line : lines) {
        board.execute(line);
        QTest::qWait(2500);
    }
    return recorder.take();
}

struct Row {
    const char *defect;
    const char *commands;
    const char *effect; // a pattern over all lines
};

// clang-format off
constexpr Row rows[] = {
    {"clock-monitor-mute", "inject 5 1|get 4", "^(?!.*12/2).*2/1 0150826e"},
    {"crossbar-checker-mute", "inject 7 1|xbic 4", "^(?!.*12/2).*3/2 00"},
    {"protection-mute", "inject 6 1|smpu 4", "^(?!.*12/2).*4/2 \n"},
    {"ecc-mute", "inject 9 5 0 0|memu 1", "^(?!.*12/2).*7/2 00"},
    {"watchdog-mute", "inject 3 1", "^(?!.*12/2)(?!.*1/5)"},
    {"interrupt-monitor-mute", "inject 8 1|intcm 2", "^(?!.*12/2).*8/2 00"},
    {"voltage-detector-mute", "inject 4 3|pmc 6", "^(?!.*12/2).*10/2 00"},
    {"crossbar-wrong-source", "inject 7 2|xbic 5", "^(?!.*12/2 2e).*12/2 2f.*12/1 01"},
    {"interrupt-wrong-core", "inject 8 2", "12/2 4b"},
    {"clock-monitor-late", "inject 5 2", "12/2 1f48f42"}, // 500,000 us and more
    {"watchdog-late", "inject 3 1", "12/2 0d48c35"},      // 400,000 us
    {"crossbar-twice", "inject 7 3", "12/2 32.*12/2 32"},
    {"alarm-without-record", "inject 6 2|smpu 4", "12/2 69(?!.*4/2 02).*4/2 "},
    {"record-without-alarm", "inject 7 4", "^(?!.*12/).*3/2 0103"},
    {"alarm-without-fault", "inject 9 2 0", "^(?!.*12/2).*12/1 03.*7/2 01"},
    {"fault-without-alarm", "inject 5 1", "^(?!.*12/1).*12/2 1c"},
    {"watchdog-no-reset", "inject 3 1", "^(?!.*1/5).*12/2 0d"},
    {"reset-wrong-reason", "inject 1", "13/1 00040000"},
    {"escalation-functional", "resetEsca 1 3 1|inject 1", "13/1 00400000"},
    {"restart-notice-lost", "inject 1", "^(?!.*1/5 7f).*13/1"},
    {"radar-counter-stands", "get 2|get 2", "16/1 (.{8}).*16/1 \\1"},
    {"power-counter-stands", "inject 5 1|inject 5 1", "12/2.*14/1 0301.*12/2.*14/1 0301"},
    {"clock-value-stands", "get 4|inject 5 1|get 4", "^(?!.*2/1 0150).*12/2"},
    {"random-number-stands", "cse 6 2|cse 6 2", "15/4 (07[0-9a-f]+)\n.*15/4 \\1"},
    {"self-test-stuck", "pmc 2 5", "10/4 0500"},
    {"logic-self-test-stuck", "inject 2", "9/1 00ffef"},
    {"checksum-wrong", "crc 3 0 0", "cbf43927"},
    {"cipher-bytes-swapped", "cse 1|cse 2 1 00112233445566778899aabbccddeeff", "69c4e0d86a7b0430d8cdb78070b45ac5"},
    {"verification-passes", "cse 1|cse 5 00 070a16b46b4d4144f79bdd9dd04a287c", "15/4 05.{8}000001"},
    {"record-wrong-address", "inject 6 1", "4/2 1110040040"},
    {"lock-lost", "regP 2 12345678|inject 1", "5/1 000f000000.*5/1 0000000000"},
    {"lock-kept", "regP 4 1|inject 2", "1/5.*5/1 01"},
    {"detectors-kept", "pmc 4 10|inject 2", "1/5.*10/1 0100"},
    {"record-kept", "inject 7 1|inject 1", "1/5.*3/2 01"},
    {"clock-monitor-always-on", "cmu 14 3|get 4", "^(?!.*2/1 30).*2/1 31"},
    {"watchdog-always-on", "swt 4 4|get 2", "^(?!.*11/1 00).*11/1 08"},
    {"clear-ignored", "inject 6 1|smpu 5|smpu 4", "^(?!.*12/1 01).*4/2 11.*4/2 11"},
};
// clang-format on

} // namespace

class TestDefects : public QObject
{
    Q_OBJECT

private slots:
    void eachShows_data()
    {
        QTest::addColumn<QString>("commands");
        QTest::addColumn<QString>("effect");
        for (const Row &row : rows)
            QTest::newRow(row.defect) << QString(row.commands) << QString(row.effect);
    }

    void eachShows()
    {
        QFETCH(QString, commands);
        QFETCH(QString, effect);
        const QRegularExpression pattern(effect, QRegularExpression::DotMatchesEverythingOption);
        const QString spoilt = sent(commands, QTest::currentDataTag());
        QVERIFY2(pattern.match(spoilt).hasMatch(), qPrintable(spoilt));
        const QString sound = sent(commands);
        QVERIFY2(!pattern.match(sound).hasMatch(), qPrintable(sound));
    }

    // Every defect has its row above, its entry in the manual page, and a name of its own.
    void allAreHere()
    {
        QFile file(QStringLiteral(MANUAL_PAGE));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString page = QString::fromUtf8(file.readAll()).remove('\\');
        QSet<QString> named, shown;
        for (const Row &row : rows)
            shown += row.defect;
        for (const Defect &defect : allDefects()) {
            named += defect.name;
            QVERIFY2(page.contains(QStringLiteral("\n.B %1\n").arg(defect.name)), defect.name);
        }
        QCOMPARE(shown, named);
        QCOMPARE(named.size(), int(allDefects().size()));
        QVERIFY(!Board().addDefect("no such defect"));
    }
};

QTEST_GUILESS_MAIN(TestDefects)
#include "tst_defects.moc"
