// SPDX-License-Identifier: MIT
// The virtual board's answers as literal bytes, its refusals, and the inputs that it must survive.
#include "simulator/board.h"
#include "simulator/virtualboard.h"
#include "tests/simulator/recorder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

using namespace simulator;

class TestBoard : public QObject
{
    Q_OBJECT

private slots:
    // The answer is a pattern: times and drifting values are drawn.
    void commands_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *command, const char *expected, const char *before = "") {
            QTest::newRow(command) << QString::fromLatin1(before) << QString::fromLatin1(expected);
        };
        row("get 0", "say QM7D305 .*\n12/1 01");
        row("get 1", "1/4 3fb3333307ea0b02\n1/1 04");
        row("get 9", "13/1 0000200000000000000000000000000000000000\n13/4 0f00");
        row("resetEsca 1 1", "13/4 0000");
        row("resetEsca 2 3 5", "13/4 0f05");
        row("resetEsca 2 3 256", "say a threshold .*");
        row("get 3", "2/4 faf[34].{4}");
        row("get 4", "2/1 01(77|78|79)826e\n(2/1 .*\n){11}2/1 c1(63|64|65)6c5c");
        row("cmu 14 3", "2/1 30(4f|50|51)5a46");
        row("cmu 3 95 60", "2/1 31(4f|50|51)5f3c");
        row("cmu 13 13", "say a monitor .*");
        row("cmu 3 256 1", "say usage.*");
        row("inject 5 1", "say CMU0: the clock is within its limits, no fault", "cmu 0 130 80");
        row("sick clock xosc", "12/1 02\n12/2 1b.{8}\n14/1 0301\n2/2 0102\n2/4 08000000\n2/1 03(77|78|79)826e");
        row("cmu 16", "2/2 020182", "inject 5 1|sick clock xosc|cmu 17|inject 5 1|inject 5 3");
        row("cmu 17", "12/1 01\n2/2 00\n2/1 31(4f|50|51)5a46", "inject 5 2");
        row("cmu 17", "2/2 00\n2/1 00(77|78|79)826e", "cmu 14 0|inject 5 1");
        row("cmu 17", "12/1 01\n2/2 00\n2/1 01(77|78|79)8264", "cmu 0 130 100|inject 5 4");
        row("cmu 17", "12/1 01\n2/2 00\n12/1 02\n12/2 1f.{8}\n14/1 0302\n2/2 0131\n2/1 31(4f|50|51)645f",
            "cmu 3 100 95");
        row("cmu 13 0", "12/1 02\n12/2 1c.{8}\n14/1 0301\n2/2 0101\n2/1 0150826e", "cmu 14 0|inject 5 1");
        row("cmu 13 8", "12/1 02\n12/2 58.{8}\n14/1 0301\n2/2 0182\n2/1 85.*", "cmu 14 8|inject 5 3");
        row("get 6", "10/1 01df");
        row("pmc 4 7", "10/1 01de");
        row("pmc 3 10", "10/1 01df", "pmc 4 10");
        row("pmc 4 3", "say no such detector: 3");
        row("inject 4 3", "say .*goes unnoticed", "pmc 4 1");
        row("pmc 6", "10/2 020001", "inject 4 1|inject 4 2");
        row("pmc 7", "12/1 01\n10/1 01df\n10/2 00", "inject 4 1");
        row("get 10", "14/1 0000\n14/1 0104\n14/1 0200\n14/1 0300");
        row("get 11", "3/1 1f");
        row("xbic 2 4", "3/1 0f");
        row("inject 7 1", "say XBIC0 is off.*", "xbic 2 0");
        row("xbic 5", "12/1 01\n3/2 00", "inject 7 2");
        row("get 5", "4/1 7fa800004000ffff4000\n4/1 0e80.*\n4/1 1e00.*\n4/1 4e08.*\n4/1 ff0800005080ffff5080");
        row("inject 6 6", "say access to 0x50800010 allowed: no fault", "smpu 2");
        row("inject 9 6 0x100 AA", "12/1 03\n12/2 11.{8}\n14/1 0301\n7/2 010540000100");
        row("inject 9 1 400000", "say flash: the offset .*");
        row("inject 9 3 10 XY", "say peripheral RAM: the data .*");
        row("inject 9 3 10 ", "say usage: inject 9 3 <offset> <data>");
        row("memu 1", "7/2 0202ffe0001002ffe00020", "inject 9 3 10 0|inject 9 3 20 0|inject 9 3 30 0|inject 9 3 10 0");
        row("inject 9 3 30 0", "12/1 02\n12/2 15.{8}\n14/1 0303", "inject 9 3 10 0|inject 9 3 20 0");
        row("get 8", "5/1 00000000000000000000000000");
        row("regP 5 12345678", "5/1 00000000007856341278563412");
        row("regP 5 99", "say .*ignored\n5/1 000f0000007856341278563412", "regP 2 12345678");
        row("regP 1", "say .*ignored\n5/1 010f000000.*", "regP 2 1|regP 4 2");
        row("regP 4 GG", "say the data .*");
        row("get 2", "11/1 08000c350000186a00\n11/1 48.*\n11/1 88.*");
        row("swt 2 2 4", "11/1 5800007d000000fa00");
        row("inject 3 1", "say SWT0 is off.*", "swt 4 1");
        row("get 7", "8/1 09000001012d004e200003e8.*");
        row("inject 8 2", "12/1 02\n12/2 4e.{8}\n14/1 0301\n8/1 09.{198}\n8/2 01010002012d004e20004e.{2}");
        row("inject 8 1", "12/1 02\n12/2 4c.{8}.*", "intcm 4 0 0");
        row("intcm EOI 1 2 20000 301", "8/1 09(.{22}){5}010202012d004e20.*");
        row("intcm XYZ 1 2 20000 301", "say usage.*");
        row("intcm 4 0 0", "8/1 09000001012d000000000000.*");
        row("sick lock 0 1", "5/1 01000000000000000000000000");
        row("sick failsafe 5", "14/1 0105");
        row("sick regulator vpre", "14/1 0040\n14/1 0103");
        row("sick none", "1/1 04\n12/1 01\n2/2 00\n2/4 faf[34].{4}\n14/1 0000\n14/1 0104\n14/1 0200\n14/1 0300");
        row("sick fault 200", "12/1 02\n12/2 c8.{8}\n14/1 0301");
        row("sick frame 2 1 0A0b", "2/1 0a0b");
        row("nonsense", "say unknown command: nonsense");
        row("get", "say unknown command: get");
        row("get 1 2", "say usage: get 1");
        row("crc 5 0 0", "say usage.*");
        row("cmu 13 1 2", "say usage.*");
        row("cmu 13", "say usage: cmu 13 <monitor>");
    }

    void commands()
    {
        QFETCH(QString, before);
        QFETCH(QString, expected);
        Board board;
        Recorder recorder(board);
        const auto lines = before.split('|', Qt::SkipEmptyParts);
        for (const QString &line : lines)
            board.execute(line);
        recorder.take();
        board.execute(QTest::currentDataTag());
        const QString sent = recorder.take();
        const QRegularExpression pattern(QRegularExpression::anchoredPattern(expected),
                                         QRegularExpression::DotMatchesEverythingOption);
        QVERIFY2(pattern.match(sent).hasMatch(), qPrintable(sent));
    }

    // Real results after a while; campaigns have the published vectors.
    void results_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *command, const char *expected, const char *before = "") {
            QTest::newRow(command) << QString::fromLatin1(before) << QString::fromLatin1(expected);
        };
        row("cse 2 1 00", "15/1 05");
        row("cse 4 00", "15/1 03");
        row("cse 2 1 001", "15/1 15", "cse 1");
        row("cse 2 1 0x112233445566778899aabbccddeeff", "15/1 15", "cse 1");
        row("cse 2 1 0011223344556677889gaabbccddeeff", "15/1 15", "cse 1");
        row("cse 2 1 00112233445566778899aabb ccddeeff", "15/1 15", "cse 1");
        row("cse 5 aa bb 070a16b46b4d4144f79bdd9dd04a287c", "15/1 15", "cse 1");
        row("cse 7", "15/1 15", "cse 6 2");
        row("cse 8", "15/1 11");
        row("cse 4 ", "15/1 0c", "sick cse 12");
        row("cse 6 1", "15/1 09");
        row("cse 6 1 ", "15/1 00\n15/4 06.{8}0010.{32}", "cse 6 2");
        row("cse 7 00112233445566778899aabbccddeeff", "15/1 00", "cse 6 2");
        row("cse 7 00", "15/1 15", "cse 6 2");
        row("pmc 2 5", "10/4 0501");
        row("pmc 1", "10/4 0101\n10/4 0701\n10/4 0201\n10/4 0601\n10/4 0900\n10/4 0501\n10/4 0801\n10/4 0401",
            "pmc 4 9");
    }

    void results()
    {
        QFETCH(QString, before);
        QFETCH(QString, expected);
        Board board;
        Recorder recorder(board);
        if (!before.isEmpty()) {
            board.execute(before);
            if (before.startsWith("cse"))
                QTRY_VERIFY(!recorder.lines.isEmpty());
            recorder.take();
        }
        board.execute(QTest::currentDataTag());
        const QRegularExpression pattern(QRegularExpression::anchoredPattern(expected));
        QTRY_VERIFY2(pattern.match(recorder.lines.join('\n')).hasMatch(), qPrintable(recorder.lines.join('\n')));
    }

    void aBusyEngineRefuses()
    {
        Board board;
        Recorder recorder(board);
        board.execute("cse 1");
        board.execute("cse 1");
        QTRY_COMPARE(recorder.lines.join(','), QStringLiteral("15/1 0b,15/1 00"));
    }

    void theShellEditsAndRemembers()
    {
        Board board;
        Shell shell(board);
        Recorder recorder(board);
        QStringList executed;
        connect(&board, &Board::executed, this, [&executed](const QString &line) { executed.append(line); });
        for (const char key : QByteArray("gex\bt 1\x1B[D\x1B[D\x7F\x1B[C \r\n"))
            if (key)
                shell.take(QByteArray(1, key));
        QCOMPARE(executed, QStringList("get1 "));
        for (const char key : QByteArray("\x1B[A\b1\r"))
            if (key)
                shell.take(QByteArray(1, key));
        QCOMPARE(executed.last(), QStringLiteral("get11"));
        recorder.take();
        shell.take("get 1\r\nxbic 4\r\n");
        QCOMPARE(executed.mid(2), (QStringList{"get 1", "xbic 4"}));
        QVERIFY(!recorder.take().contains("say"));
        // Noise: a line with a NUL harms only itself.
        shell.take(QByteArray("get\0 1\r\nget 11\r\n", 15));
        QCOMPARE(executed.last(), QStringLiteral("get 11"));
        // A program's line may come in pieces, up to a limit.
        const QByteArray digits(65536, '0');
        for (const QByteArray &piece : {"cse 2 1 " + digits.left(4096), digits.mid(4096), QByteArray("\r\nget 1\r\n")})
            shell.take(piece);
        QCOMPARE(executed.mid(executed.size() - 2), (QStringList{"cse 2 1 " + digits, "get 1"}));
        QVERIFY(!recorder.take().contains("say 0"));
        shell.take(QByteArray(100000, 'x'));
        shell.take("\r\nget 1\r\n");
        QCOMPARE(recorder.take(), QStringLiteral("say line too long, dropped\n1/4 3fb3333307ea0b02\n1/1 04"));
        shell.take("h");
        QCOMPARE(recorder.take(), QStringLiteral("say h"));
        shell.take("elp\r");
        const QString help = recorder.take();
        for (const Command &command : board.commands())
            QVERIFY2(help.contains("say " + command.words), qPrintable(command.words));
        shell.take("status\r\n");
        QCOMPARE(recorder.lines.filter("1;36m").size(), int(board.units().size()));
    }

    // On a real terminal: raw, in small pieces, nothing stale after a pause.
    void theLineIsLikeASerialOne()
    {
        VirtualBoard board;
        const QByteArray path = board.tty().toLocal8Bit();
        board.line().send("lost before anybody listens");
        int program = open(path.constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        const auto readAll = [&program] {
            char buffer[65536];
            const ssize_t count = read(program, buffer, sizeof buffer);
            return QByteArray(buffer, std::max(0, int(count)));
        };
        QTRY_VERIFY(board.line().isConnected());
        QByteArray sent, received;
        for (int i = 0; i < 3000; ++i)
            sent.append(char(i));
        board.line().send(sent);
        QTRY_VERIFY_WITH_TIMEOUT((received += readAll()).size() >= sent.size(), 5000);
        QCOMPARE(received, sent);

        board.line().send(QByteArray(100000, 'x'));
        close(program);
        QTRY_VERIFY(!board.line().isConnected());
        program = open(path.constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        QTRY_VERIFY(board.line().isConnected());
        QCOMPARE(write(program, "get 11\r\n", 8), ssize_t(8));
        received.clear();
        QTRY_VERIFY((received += readAll()).endsWith(QByteArray::fromHex("D4B2")));
        QCOMPARE(received, QByteArray::fromHex("A5C3 0000 03 01 0001 1F 0000 D4B2"));
        close(program);
    }

    // 40000 bytes at 195840 per second, on a clock that runs ahead while nobody works.
    void theLineTakesItsTime()
    {
        constexpr int size = 40000;
        VirtualBoard board;
        const int program = open(board.tty().toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        QTRY_VERIFY(board.line().isConnected());
        QElapsedTimer clock;
        clock.start();
        board.line().send(QByteArray(size, 'x'));
        char buffer[65536];
        for (int received = 0; received < size && clock.elapsed() < 5000;) {
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
            received += static_cast<int>(std::max<ssize_t>(0, read(program, buffer, sizeof buffer)));
        }
        const auto elapsed = clock.elapsed();
        QVERIFY2(elapsed >= 195 && elapsed < 800, qPrintable(QString::number(elapsed)));
        close(program);
    }
};

QTEST_GUILESS_MAIN(TestBoard)
#include "tst_board.moc"
