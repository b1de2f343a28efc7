// SPDX-License-Identifier: MIT
// What the virtual board does in the course of time: restarts, escalation, watchdogs, detection times. Time passes by
// the fake clock.
#include "protocol/payload.h"
#include "simulator/board.h"
#include "tests/simulator/recorder.h"

#include <QTest>

using namespace simulator;

namespace {

// Microseconds at the end of a fault report, "12/2 0d47c35080".
float timeOf(const QString &report)
{
    return protocol::PayloadReader(QByteArray::fromHex(report.right(8).toLatin1())).f32be(0);
}

} // namespace

class TestRestarts : public QObject
{
    Q_OBJECT

    std::unique_ptr<Board> m_board;
    std::unique_ptr<Recorder> m_recorder;

    void run(const char *commands)
    {
        const auto lines = QString::fromLatin1(commands).split('|', Qt::SkipEmptyParts);
        for (const QString &line : lines)
            m_board->execute(line);
    }
    int restartCount() { return int(m_recorder->lines.filter("1/5 7ffe").size()); }

private slots:
    void init()
    {
        m_board = std::make_unique<Board>();
        m_recorder = std::make_unique<Recorder>(*m_board);
    }

    void restarts_data()
    {
        QTest::addColumn<QByteArray>("commands");
        QTest::addColumn<QString>("reasons"); // first bytes of the reset report
        const auto row = [](const char *name, const char *commands, const char *reasons) {
            QTest::newRow(name) << QByteArray(commands) << QString(reasons);
        };
        row("functional", "inject 1", "00400000");
        row("destructive", "inject 2", "00004000");
        row("escalated", "resetEsca 1 3 1|inject 1", "00000004");
        row("watchdog", "inject 3 1", "0008000000000000000000000000000000002000");
        row("invalid access", "inject 3 2", "0008000000000000000000000000000000002000");
        row("any reason", "sick reset 22", "00000002");
        row("any source", "sick reset 3 127", "0010000080000000000000000000000000000000");
    }

    void restarts()
    {
        QFETCH(QByteArray, commands);
        QFETCH(QString, reasons);
        run(commands);
        QTRY_COMPARE(restartCount(), 1);
        const QString all = m_recorder->lines.mid(m_recorder->lines.indexOf("1/5 7ffe")).join('\n');
        QVERIFY2(all.contains("13/1 " + reasons), qPrintable(all));
        QVERIFY(all.contains("9/1 00ffff0fffffffffffffffffffffff0fffffffffffffffffffffff"));
        QVERIFY(all.contains("1/1 04") && all.contains("12/1 01"));
    }

    // No page goes on showing the life before; the checksum unit and the engine have nothing to show.
    void allModulesReportAfterARestart()
    {
        run("xbic 2 1|cmu 14 3|smpu 2|swt 4 4|pmc 4 10|intcm 4 0 0|inject 7 1|inject 9 5 0 0|inject 10 1|inject 1");
        m_recorder->take();
        QTRY_COMPARE(restartCount(), 1);
        const QString all = m_recorder->take();
        const QString reports("1/4 |1/1 04|12/1 01|13/1 |13/4 |9/1 |2/4 faf|2/1 31|2/1 c1|2/2 00|10/1 01|10/2 00|14/1 "
                              "0104|3/1 1f|3/2 00|4/1 7fa8|4/1 ff08|7/2 00|5/1 00|11/1 08000c3500|11/1 88|8/1 "
                              "09000001012d004e20|8/2 00|16/1 00000000|16/2 00");
        for (const QString &report : reports.split('|'))
            QVERIFY2(all.contains(report), qPrintable(report));
        QVERIFY(all.contains("4/2 \n") || all.endsWith("4/2 "));
    }

    void aRestartIsSilent()
    {
        run("inject 1");
        m_recorder->take();
        run("get 1");
        m_board->detect(1);
        QCOMPARE(m_recorder->take(), QString());
    }

    // The destructive threshold holds the chip; only power brings it back.
    void destructiveEscalationHolds()
    {
        run("resetEsca 2 3 2|inject 2");
        QTRY_COMPARE(restartCount(), 1);
        run("inject 2");
        QVERIFY(m_board->isHeld());
        m_recorder->take();
        run("get 1|get 0");
        QTest::qWait(10000);
        QCOMPARE(m_recorder->take(), QString());
        m_board->powerCycle();
        QTRY_COMPARE(restartCount(), 1);
        QVERIFY(m_recorder->lines.join('\n').contains("13/1 00002000"));
        QVERIFY(m_recorder->lines.contains("13/4 0f00"));
    }

    // One reset short of the threshold, again and again: nothing escalates.
    void aClearedCounterStartsAnew_data()
    {
        QTest::addColumn<QByteArray>("threshold");
        QTest::addColumn<QByteArray>("clear");
        QTest::addColumn<QByteArray>("reset");
        QTest::addColumn<QString>("reasons");
        QTest::newRow("functional") << QByteArray("resetEsca 1 3 2") << QByteArray("resetEsca 1 2")
                                    << QByteArray("inject 1") << "13/1 00400000";
        QTest::newRow("destructive") << QByteArray("resetEsca 2 3 2") << QByteArray("resetEsca 2 2")
                                     << QByteArray("inject 2") << "13/1 00004000";
    }

    void aClearedCounterStartsAnew()
    {
        QFETCH(QByteArray, threshold);
        QFETCH(QByteArray, clear);
        QFETCH(QByteArray, reset);
        QFETCH(QString, reasons);
        run(threshold);
        for (int resets = 1; resets <= 3; ++resets) {
            run(clear);
            run(reset);
            QVERIFY(!m_board->isHeld());
            QTRY_COMPARE(restartCount(), resets);
            QCOMPARE(m_recorder->lines.filter(reasons).size(), resets);
        }
    }

    void theEnginesKeysStay()
    {
        run("cse 1");
        QTRY_VERIFY(!m_recorder->lines.filter("15/1 00").isEmpty());
        run("inject 2");
        QTRY_COMPARE(restartCount(), 1);
        run("cse 4 ");
        QTRY_VERIFY(m_recorder->lines.join('\n').contains("0010bb1d6929e95937287fa37d129b756746"));
    }

    // The power chip takes 0.8 s for each step to NORMAL_FS; with a bad regulator it does not come that far.
    void thePowerChipStartsInSteps()
    {
        run("inject 2");
        QTRY_COMPARE(restartCount(), 1);
        m_recorder->take();
        QTest::qWait(700);
        QVERIFY(!m_recorder->lines.contains("14/1 0101"));
        QTest::qWait(3000);
        const QStringList steps = m_recorder->lines.filter("14/1 01");
        QCOMPARE(steps, (QStringList{"14/1 0101", "14/1 0102", "14/1 0103", "14/1 0104"}));
        run("sick regulator vbuck2|inject 2");
        m_recorder->take();
        QTest::qWait(10000);
        QCOMPARE(m_recorder->lines.filter("14/1 01").last(), QStringLiteral("14/1 0103"));
    }

    void aFailedSelfTestIsAFault()
    {
        run("sick lbist 1|sick mbist 92|inject 1");
        QTRY_COMPARE(restartCount(), 1); // does not run the self-tests
        QVERIFY(m_recorder->take().contains("9/1 00ffff"));
        run("inject 2");
        QTRY_COMPARE(m_recorder->lines.filter("12/2 06").size(), 1);
        QVERIFY(m_recorder->lines.contains("9/1 00ff7f0fffffffffffffffffffffff07ffffffffffffffffffffff"));
    }

    // A watchdog that is configured or switched meanwhile is served again.
    void aRunOutIsCalledOff_data()
    {
        QTest::addColumn<QByteArray>("commands");
        for (const char *commands : {"swt 5", "swt 4 1|swt 3 1", "swt 4 4|swt 3 4", "swt 1 1 500", "swt 4 1"})
            QTest::newRow(commands) << QByteArray(commands);
    }

    void aRunOutIsCalledOff()
    {
        QFETCH(QByteArray, commands);
        run("inject 3 1");
        QTest::qWait(50);
        run(commands);
        QTest::qWait(2000);
        QVERIFY(m_recorder->lines.filter("12/2").isEmpty());
        QCOMPARE(restartCount(), 0);
    }

    // Microseconds, by what detects the fault.
    void detectionTimes_data()
    {
        QTest::addColumn<QByteArray>("commands");
        QTest::addColumn<double>("from");
        QTest::addColumn<double>("to");
        const auto row = [](const char *commands, double from, double to) {
            QTest::newRow(commands) << QByteArray(commands) << from << to;
        };
        row("inject 3 1", 100000, 100001);
        row("swt 1 1 250|inject 3 1", 250000, 250001);
        row("inject 3 2", 0, 1);
        row("inject 8 1", 166.66, 166.70);
        row("intcm SW 2 0 1200 301|inject 8 3", 10, 10.1);
        row("inject 5 1", 4, 8);
        row("inject 5 3", 1, 1.5);
        row("inject 9 5 0 0", 0.008, 0.017);
        row("inject 9 1 0", 0.05, 0.06);
        row("inject 7 1", 0.016, 0.026);
        row("inject 4 1", 20, 24);
        row("inject 4 4", 60000, 60001);
        row("inject 10 2", 20, 21);
    }

    void detectionTimes()
    {
        QFETCH(QByteArray, commands);
        QFETCH(double, from);
        QFETCH(double, to);
        run(commands);
        QTRY_COMPARE(m_recorder->lines.filter("12/2").size(), 1);
        const float time = timeOf(m_recorder->lines.filter("12/2").first());
        QVERIFY2(time >= from && time <= to, qPrintable(QString::number(time)));
    }

    // Over a long time at the boundary: a value beyond a limit is never reported without its fault, nor the reverse.
    void theReportedValueIsTheOneChecked()
    {
        int beyond = 0;
        for (int i = 0; i < 60; ++i) {
            run("cmu 17");
            m_recorder->take();
            run("cmu 3 80 70");
            const bool isBeyond = m_recorder->lines.last().startsWith("2/1 3151");
            QCOMPARE(m_recorder->lines.filter("12/2 1f").size(), isBeyond ? 1 : 0);
            beyond += isBeyond;
        }
        QVERIFY(beyond > 5 && beyond < 40);
    }

    // The same seed gives the same reports, random numbers included; another one others.
    void theSeedGovernsAllChance()
    {
        const auto reports = [](quint32 seed) {
            Board board(seed);
            Recorder recorder(board);
            for (const char *line : {"get 4", "inject 7 1", "cse 6 2", "inject 5 1", "inject 9 7"}) {
                board.execute(QString::fromLatin1(line));
                QTest::qWait(50);
            }
            board.execute("cse 6 1");
            QTest::qWait(50);
            return recorder.take();
        };
        const QString first = reports(7);
        QCOMPARE(reports(7), first);
        const QString other = reports(8);
        for (const char *head : {"15/4 06", "15/4 07", "3/2 01"})
            QVERIFY(first.mid(first.indexOf(head), 60) != other.mid(other.indexOf(head), 60));
    }

    // The times of the engine and of the checksum unit grow with the data.
    void moreDataTakesLonger()
    {
        run("cse 1");
        QTest::qWait(50);
        const auto engineTime = [this](int blocks) {
            m_recorder->take();
            m_board->execute("cse 4 " + QString(32 * blocks, '0'));
            QTest::qWait(50);
            return timeOf(m_recorder->lines.last().mid(7, 8));
        };
        const float one = engineTime(1);
        const float thousand = engineTime(1000);
        QVERIFY2(one > 23 && one < 27, qPrintable(QString::number(one)));
        QVERIFY2(thousand > 1900 && thousand < 1950, qPrintable(QString::number(thousand)));
        const char *times[] = {"3ee22222", "3f0ccccd", "40233333"}; // 9, 64, 1024 bytes: 0.441667, 0.55, 2.55 us
        for (int channel = 0; channel < 3; ++channel) {
            m_recorder->take();
            m_board->execute(QStringLiteral("crc 3 0 %1").arg(channel));
            QTRY_COMPARE(m_recorder->lines.size(), 1);
            QCOMPARE(m_recorder->lines.last().right(8), QLatin1String(times[channel]));
        }
    }
};

QTEST_GUILESS_MAIN(TestRestarts)
#include "tst_restarts.moc"
