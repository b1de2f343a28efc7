// SPDX-License-Identifier: MIT
// The executables as processes: start, output, and none left behind.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

namespace {

// Children of a process, from the system's table.
QList<int> childrenOf(qint64 parent)
{
    QFile file(QStringLiteral("/proc/%1/task/%1/children").arg(parent));
    QList<int> children;
    if (file.open(QIODevice::ReadOnly)) {
        const auto words = QString::fromLatin1(file.readAll()).split(' ', Qt::SkipEmptyParts);
        for (const QString &word : words)
            children.append(word.toInt());
    }
    return children;
}

bool isAlive(int process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    return file.open(QIODevice::ReadOnly) && !file.readAll().contains(") Z ");
}

class BoardProcess : public QProcess
{
public:
    explicit BoardProcess(const QStringList &options)
    {
        start(QStringLiteral(VIRTUAL_BOARD), options);
        while (!canReadLine() && waitForReadyRead(10000)) {}
        tty = QString::fromLatin1(readLine()).trimmed();
    }
    ~BoardProcess() override
    {
        kill();
        waitForFinished();
    }
    QString tty;
};

} // namespace

class TestProcesses : public QObject
{
    Q_OBJECT

private:
    const QTemporaryDir m_pictures;
    QProcess m_tour;

private slots:
    // Goes on beside the other tests.
    void initTestCase()
    {
        m_tour.start(QStringLiteral(DEMONSTRATION), {"--tour", m_pictures.path(), "--size", "1100x700"});
    }

    void theBoardNamesItsLineAndLogsCommands()
    {
        BoardProcess board({"--verbose", "--seed", "3"});
        QVERIFY2(board.tty.startsWith("tty: /dev/"), qPrintable(board.tty));
        const int line = open(board.tty.mid(5).toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        QVERIFY(line >= 0);
        termios settings = {};
        QCOMPARE(tcgetattr(line, &settings), 0);
        QVERIFY(!(settings.c_lflag & (ICANON | ECHO)) && !(settings.c_oflag & OPOST));
        QByteArray answer, log;
        char buffer[4096];
        QTRY_VERIFY([&] {
            // repeated until the board has seen that somebody listens
            if (write(line, "get 11\r\n", 8) != 8)
                return false;
            board.waitForReadyRead(20);
            log += board.readAllStandardError();
            const ssize_t count = read(line, buffer, sizeof buffer);
            answer += QByteArray(buffer, int(std::max<ssize_t>(count, 0)));
            return answer.contains(QByteArray::fromHex("A5C3000003010001")) && log.contains("get 11\n");
        }());
        close(line);
    }

    void theBoardEndsCleanly_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("interrupt") << SIGINT;
        QTest::newRow("terminate") << SIGTERM;
        QTest::newRow("hang-up") << SIGHUP;
        QTest::newRow("end of standard input") << 0;
    }

    void theBoardEndsCleanly()
    {
        QFETCH(int, signal);
        BoardProcess board({"--exit-with-stdin"});
        if (signal)
            QCOMPARE(::kill(pid_t(board.processId()), signal), 0);
        else
            board.closeWriteChannel();
        QVERIFY(board.waitForFinished(5000));
        QCOMPARE(board.exitStatus(), QProcess::NormalExit);
        QCOMPARE(board.exitCode(), 0);
    }

    void nonsenseIsRefused_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("option");
        QTest::addColumn<QString>("complaint");
        const auto row = [](const char *option, const char *complaint, const char *program = VIRTUAL_BOARD) {
            QTest::newRow(option) << program << option << complaint;
        };
        row("--noise=2", "--noise takes a number from 0 to 1, not \"2\"");
        row("--drop=nan", "--drop takes a number from 0 to 1, not \"nan\"");
        row("--duplicate=", "--duplicate takes a number from 0 to 1, not \"\"");
        row("--stall=-1", "--stall takes a number from 0 to 86400, not \"-1\"");
        row("--hang-up=soon", "--hang-up takes a number from 0 to 86400, not \"soon\"");
        row("--link=/no/such/folder/board", "no link can be made at \"/no/such/folder/board\"");
        row("--noise=x", "--noise takes a number from 0 to 1, not \"x\"", DEMONSTRATION);
    }

    void nonsenseIsRefused()
    {
        QFETCH(QString, program);
        QFETCH(QString, option);
        QFETCH(QString, complaint);
        QProcess process;
        process.start(program, {option});
        QVERIFY(process.waitForFinished(10000));
        QCOMPARE(process.exitCode(), 1);
        const QString said = QString::fromLocal8Bit(process.readAllStandardError());
        QVERIFY2(said.contains("virtual-board: " + complaint), qPrintable(said));
    }

    void aBoardThatComesBackNamesItsLineAgain()
    {
        const QTemporaryDir folder;
        BoardProcess board({"--hang-up", "0.1", "--link", folder.filePath("board")});
        QCOMPARE(board.tty, "tty: " + folder.filePath("board"));
        while (!board.canReadLine() && board.waitForReadyRead(5000)) {}
        QCOMPARE(QString::fromLocal8Bit(board.readLine()).trimmed(), board.tty);
        board.terminate();
        QVERIFY(board.waitForFinished(5000));
        QVERIFY(!QFileInfo(folder.filePath("board")).isSymLink());
    }

    // However the demonstration ends, its boards end with it.
    void theDemonstrationLeavesNoBoard()
    {
        QProcess demo;
        demo.start(QStringLiteral(DEMONSTRATION), {"--boards", "1"});
        QVERIFY(demo.waitForStarted());
        QList<int> boards;
        QTRY_VERIFY(!(boards = childrenOf(demo.processId())).isEmpty());
        demo.kill();
        QVERIFY(demo.waitForFinished(5000));
        QTRY_VERIFY(!isAlive(boards.first()));
    }

    void theTourTakesAPictureOfEveryPage()
    {
        QVERIFY(m_tour.state() == QProcess::NotRunning || m_tour.waitForFinished(60000));
        QCOMPARE(m_tour.exitCode(), 0);
        const QStringList pictures = QDir(m_pictures.path()).entryList({"*.png"});
        QCOMPARE(pictures.size(), 14);
        QCOMPARE(pictures.first(), QStringLiteral("01-safety-module-cmu.png"));
        QVERIFY(QFileInfo(m_pictures.filePath(pictures.last())).size() > 10000);
    }
};

QTEST_GUILESS_MAIN(TestProcesses)
#include "tst_processes.moc"
