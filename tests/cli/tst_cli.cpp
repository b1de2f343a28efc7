// SPDX-License-Identifier: MIT
// The tool as a process: exit codes, output, recordings made, decoded, served and checked.
#include "protocol/frame.h"
#include "session/pcapng.h"
#include "simulator/virtualboard.h"
#include "support/rawline.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

#include <signal.h>

namespace {

constexpr int kPatienceMs = 30000;

struct Run {
    int code = -1;
    QString out, err;
};

QStringList words(const QString &line)
{
    return QProcess::splitCommand(line);
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QList<session::Packet> packetsOf(const QString &path)
{
    QFile file(path);
    QList<session::Packet> packets;
    if (!file.open(QIODevice::ReadOnly))
        return packets;
    session::Reader reader(file);
    for (session::PacketView packet; reader.next(packet);)
        packets.append(packet.copied());
    return packets;
}

QByteArray bytesOf(const QList<session::Packet> &packets, session::Direction direction)
{
    QByteArray bytes;
    for (const session::Packet &packet : packets)
        bytes += packet.direction == direction ? packet.bytes : QByteArray();
    return bytes;
}

} // namespace

class TestCli : public QObject
{
    Q_OBJECT

private slots:
    void usage_data();
    void usage();
    void everyVerbHelps();
    void needsNoWindow();

    void answersAreShown();
    void silentBoardIsNoAnswer();
    void unpluggedIsSaid();
    void interruptedIsNoSuccess();
    void interruptedCampaignReports();
    void faultsAreCaughtOrNot();
    void sharedPort();

    void recordingSurvivesAKill();
    void fullDiskEndsTheRecordingAlone();
    void cutRecordingIsDecodedUpToTheCut();
    void decodedIsWhatWasShown();
    void servedIsWhatWasRecorded();
    void boardAgreesWithItself();
    void changedAnswerIsFound();

private:
    // Starts the tool; done() is its end.
    void start(const QStringList &arguments, const QString &output = {});
    Run done();
    Run run(const QStringList &arguments)
    {
        start(arguments);
        return done();
    }
    QString path(const char *name) { return m_folder.filePath(QLatin1String(name)); }

    QProcess m_process;
    QTemporaryDir m_folder;
};

void TestCli::start(const QStringList &arguments, const QString &output)
{
    m_process.setStandardOutputFile(output);
    m_process.start(QStringLiteral(TOOL), arguments);
}

// Events go on meanwhile: the board may be in this process.
Run TestCli::done()
{
    [&] { QTRY_COMPARE_WITH_TIMEOUT(m_process.state(), QProcess::NotRunning, kPatienceMs); }();
    if (m_process.state() != QProcess::NotRunning)
        m_process.kill();
    return {m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1,
            QString::fromUtf8(m_process.readAllStandardOutput()), QString::fromUtf8(m_process.readAllStandardError())};
}

void TestCli::usage_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("said"); // part of standard error
    const auto row = [](const char *arguments, int code, const char *said) {
        QTest::newRow(*arguments ? arguments : "nothing")
            << QString::fromLatin1(arguments) << code << QString::fromLatin1(said);
    };
    row("", 2, "verbs: ports, status");
    row("--version", 0, "");
    row("--help", 0, "");
    row("ports", 0, "");
    row("stauts", 2, "no verb \"stauts\"; did you mean \"status\"?");
    row("frobnicate", 2, "there are: ports, status");
    row("status inctm", 2, "no module \"inctm\"; did you mean \"intcm\"?");
    row("status crc", 2, "crc has no state to ask for");
    row("status --sped 2", 2, "Unknown option 'sped'");
    row("status --speed 2", 2, "Unknown option 'speed'");
    row("status --timeout soon", 2, "--timeout takes a number from 0");
    row("status --seed 2 --port x", 2, "--seed is for --virtual");
    row("status --virtual --port x", 2, "one of --port, --tcp and --virtual");
    row("status --tcp localhost", 2, "--tcp takes HOST:PORT");
    row("send", 2, "usage: safety-workbench-cli send COMMAND...");
    row("send \"get 1\nget 2\" --virtual", 2, "one line of Latin-1");
    row("inject xbic 6 --virtual", 2, "xbic has cases 1 to 5");
    row("inject crc 1 --virtual", 2, "nothing can be injected into crc");
    row("decode no-such-file", 2, "no-such-file: No such file or directory");
    row("decode /dev/null", 2, "not a recording: no header at byte 0");
    row("campaign no-such-file --virtual", 2, "no-such-file: No such file or directory");
    row("campaign " CAMPAIGNS "/smoke.toml --only xyz --virtual", 2, "no case is called \"xyz\"");
    row("campaign " CAMPAIGNS "/smoke.toml --report /dev/null/x --virtual", 2, "/dev/null/x: cannot be made a folder");
    row("campaign " CAMPAIGNS "/smoke.toml --port no-such-port", 3, "no such device");
    row("status --port no-such-port", 3, "no such device");
    row("status --tcp 127.0.0.1:1", 3, "127.0.0.1:1: Connection refused");
}

void TestCli::usage()
{
    QFETCH(QString, arguments);
    const Run result = run(words(arguments));
    QTEST(result.code, "code");
    QFETCH(QString, said);
    QVERIFY2(result.err.contains(said), qPrintable(result.err));
    QCOMPARE(result.out.isEmpty(), result.code != 0);
    QCOMPARE(result.err.isEmpty(), result.code == 0);
}

void TestCli::everyVerbHelps()
{
    for (const char *verb :
         {"ports", "status", "send", "inject", "monitor", "record", "decode", "serve", "check", "campaign"}) {
        const Run result = run({QString::fromLatin1(verb), QStringLiteral("--help")});
        QCOMPARE(result.code, 0);
        QVERIFY2(result.out.startsWith(QLatin1String("Usage: ")) && result.out.contains(QLatin1String(verb)),
                 qPrintable(result.out));
        QVERIFY2(result.out.contains(QLatin1String("--json")), qPrintable(result.out));
    }
}

void TestCli::needsNoWindow()
{
    QProcess ldd;
    ldd.start(QStringLiteral("ldd"), {QStringLiteral(TOOL)});
    QVERIFY(ldd.waitForFinished(kPatienceMs));
    const QByteArray libraries = ldd.readAllStandardOutput();
    QVERIFY(libraries.contains("libQt5SerialPort"));
    QVERIFY2(!libraries.contains("Gui") && !libraries.contains("Widgets"), libraries.constData());
}

void TestCli::answersAreShown()
{
    const Run sent = run(words(QStringLiteral("send \"get 1\" --virtual --seed 7")));
    QCOMPARE(sent.code, 0);
    QVERIFY2(sent.out.contains(QLatin1String(" < sys    firmware")), qPrintable(sent.out));
    QVERIFY2(!sent.out.contains(QLatin1Char('\x1B')), "colours are for terminals");
    QVERIFY2(sent.err.contains(QLatin1String("a virtual board answers")), "never silently");

    const Run status = run(words(QStringLiteral("status --virtual")));
    QCOMPARE(status.code, 0);
    for (const char *module :
         {"sys", "cmu", "xbic", "smpu", "regp", "memu", "intcm", "pmc", "swt", "fccu", "reset", "vg5k", "spt"})
        QVERIFY2(status.out.contains(QRegularExpression(QStringLiteral("^%1 ").arg(QLatin1String(module)),
                                                        QRegularExpression::MultilineOption)),
                 module);
}

void TestCli::silentBoardIsNoAnswer()
{
    RawLine line;
    const QStringList port{QStringLiteral("--port"), line.tty(), QStringLiteral("--timeout"), QStringLiteral("0.2")};
    const Run sent = run(QStringList{QStringLiteral("send"), QStringLiteral("get 1")} + port);
    QCOMPARE(sent.code, 3);
    QVERIFY2(sent.err.contains(QLatin1String("no answer to \"get 1\" within 0.2 s")), qPrintable(sent.err));
    QCOMPARE(line.received(), QByteArray("get 1\r\n"));
    const Run status = run(QStringList{QStringLiteral("status"), QStringLiteral("SYS"), QStringLiteral("xbic")} + port);
    QCOMPARE(status.code, 3);
    QCOMPARE(status.out.count(QLatin1String("no answer")), 2);
    QCOMPARE(run(QStringList{QStringLiteral("inject"), QStringLiteral("xbic"), QStringLiteral("1")} + port).code, 3);
}

void TestCli::unpluggedIsSaid()
{
    RawLine line;
    start({QStringLiteral("monitor"), QStringLiteral("--port"), line.tty(), QStringLiteral("--json")});
    QTRY_VERIFY_WITH_TIMEOUT(m_process.bytesAvailable() > 0, kPatienceMs);
    line.hangUp();
    const Run result = done();
    QCOMPARE(result.code, 3);
    QVERIFY2(result.err.contains(QLatin1String("connection lost")), qPrintable(result.err));
    QVERIFY2(result.out.contains(QLatin1String("\"note\":\"lost\"")), qPrintable(result.out));
}

void TestCli::interruptedIsNoSuccess()
{
    for (const int number : {SIGINT, SIGTERM}) {
        start({QStringLiteral("monitor"), QStringLiteral("--virtual")});
        QTRY_VERIFY_WITH_TIMEOUT(m_process.bytesAvailable() > 0, kPatienceMs);
        kill(static_cast<pid_t>(m_process.processId()), number);
        QCOMPARE(done().code, 130);
    }
}

// What was run is reported, and the exit code says that it was not all.
void TestCli::interruptedCampaignReports()
{
    start({QStringLiteral("campaign"), QStringLiteral(CAMPAIGNS "/all.toml"), QStringLiteral("--virtual"),
           QStringLiteral("--json"), QStringLiteral("--report"), path("campaign")});
    QTRY_VERIFY_WITH_TIMEOUT(m_process.bytesAvailable() > 0, kPatienceMs);
    kill(static_cast<pid_t>(m_process.processId()), SIGINT);
    const Run result = done();
    QCOMPARE(result.code, 130);
    QVERIFY2(result.out.contains(QLatin1String("\"kind\":\"campaign\"")), qPrintable(result.out));
    const QByteArray report = fileBytes(m_folder.filePath(QStringLiteral("campaign/report.json")));
    QVERIFY2(report.contains("\"ended_by\": \"interrupted\""), report.constData());
}

void TestCli::faultsAreCaughtOrNot()
{
    simulator::VirtualBoard board;
    const auto inject = [this, &board](const char *what) {
        return run(QStringList{QStringLiteral("inject")} + words(QString::fromLatin1(what))
                   + QStringList{QStringLiteral("--port"), board.tty()});
    };
    const Run caught = inject("xbic 1");
    QCOMPARE(caught.code, 0);
    for (const char *line : {"injected  xbic case 1 (inject 7 1)", "fault     47 XBAR_0", "time      detected after",
                             "reaction  ALARM", "record    Fault Number: 1"})
        QVERIFY2(caught.out.contains(QLatin1String(line)), qPrintable(caught.out));
    const Run reset = inject("reset 1");
    QCOMPARE(reset.code, 0);
    QVERIFY2(reset.out.contains(QLatin1String("restart")), qPrintable(reset.out));
    QCOMPARE(inject("memu 3").code, 0);
    board.board().execute(QStringLiteral("xbic 2 0"));
    const Run missed = inject("xbic 1 --timeout 0.3");
    QCOMPARE(missed.code, 1);
    QVERIFY2(missed.out.contains(QLatin1String("fault     none reported")), qPrintable(missed.out));
}

// As ser2net shares it: bytes both ways, nothing else.
void TestCli::sharedPort()
{
    const QString ser2net = QStandardPaths::findExecutable(QStringLiteral("ser2net"), {QStringLiteral("/usr/sbin")});
    QVERIFY2(!ser2net.isEmpty(), "install ser2net, as scripts/test does");
    simulator::VirtualBoard board;
    quint16 port = 0;
    {
        QTcpServer probe;
        QVERIFY(probe.listen(QHostAddress::LocalHost));
        port = probe.serverPort();
    }
    QVERIFY(writeFile(path("ser2net.yaml"),
                      QStringLiteral("connection: &board\n  accepter: tcp,127.0.0.1,%1\n"
                                     "  connector: serialdev,%2,115200n81,local\n")
                          .arg(port)
                          .arg(board.tty())
                          .toUtf8()));
    QProcess server;
    server.start(ser2net, {QStringLiteral("-n"), QStringLiteral("-u"), QStringLiteral("-c"), path("ser2net.yaml")});
    QTRY_VERIFY_WITH_TIMEOUT(
        [port] {
            QTcpSocket socket;
            socket.connectToHost(QHostAddress::LocalHost, port);
            return socket.waitForConnected(1000);
        }(),
        kPatienceMs);
    Run result;
    const QStringList arguments{QStringLiteral("status"), QStringLiteral("sys"), QStringLiteral("--tcp"),
                                QStringLiteral("127.0.0.1:%1").arg(port)};
    // The port is given back a moment after the first connection has gone.
    QTRY_VERIFY_WITH_TIMEOUT((result = run(arguments)).code == 0, kPatienceMs);
    QVERIFY2(result.out.contains(QLatin1String("operating_mode")), qPrintable(result.out));
    server.kill();
    server.waitForFinished(kPatienceMs);
}

void TestCli::recordingSurvivesAKill()
{
    RawLine line;
    start({QStringLiteral("record"), path("killed"), QStringLiteral("--port"), line.tty()});
    QTRY_VERIFY_WITH_TIMEOUT(packetsOf(path("killed")).size() == 1, kPatienceMs); // opened
    QByteArray sent;
    for (int i = 0; i < 20; ++i) {
        const QByteArray frame = protocol::encodeFrame(protocol::ModuleId::Sys, 1, QByteArray(1, char(i % 12)));
        line.write(frame);
        sent += frame;
    }
    QTRY_COMPARE_WITH_TIMEOUT(bytesOf(packetsOf(path("killed")), session::Direction::Received), sent, kPatienceMs);
    m_process.kill();
    done();
    QCOMPARE(bytesOf(packetsOf(path("killed")), session::Direction::Received), sent);
    const Run decoded = run({QStringLiteral("decode"), path("killed")});
    QCOMPARE(decoded.code, 0);
    QCOMPARE(decoded.out.count(QLatin1String("operating_mode")), 20);
}

void TestCli::fullDiskEndsTheRecordingAlone()
{
    const Run recorded = run(words(QStringLiteral("record /dev/full --virtual")));
    QCOMPARE(recorded.code, 2);
    QVERIFY2(recorded.err.contains(QLatin1String("/dev/full: No space left on device")), qPrintable(recorded.err));
    start(words(QStringLiteral("status sys --virtual")), QStringLiteral("/dev/full"));
    const Run shown = done();
    QCOMPARE(shown.code, 2);
    QVERIFY2(shown.err.contains(QLatin1String("standard output: No space left on device")), qPrintable(shown.err));
}

void TestCli::cutRecordingIsDecodedUpToTheCut()
{
    QCOMPARE(run({QStringLiteral("send"), QStringLiteral("get 1"), QStringLiteral("--virtual"),
                  QStringLiteral("--record"), path("whole")})
                 .code,
             0);
    const QByteArray whole = fileBytes(path("whole"));
    QVERIFY(writeFile(path("cut"), whole.left(whole.size() - 5)));
    const Run cut = run({QStringLiteral("decode"), path("cut"), QStringLiteral("--record"), path("salvaged")});
    QCOMPARE(cut.code, 2);
    QVERIFY2(cut.err.contains(QLatin1String("cut short at byte")), qPrintable(cut.err));
    QVERIFY(cut.out.contains(QLatin1String("firmware")));
    const QList<session::Packet> packets = packetsOf(path("whole"));
    QCOMPARE(packetsOf(path("salvaged")), packets.mid(0, packets.size() - 1));
    QCOMPARE(run({QStringLiteral("decode"), path("salvaged")}).code, 0);
    QCOMPARE(run({QStringLiteral("decode"), path("cut"), QStringLiteral("--record"), path("cut")}).code, 2);
    QCOMPARE(fileBytes(path("cut")).size(), whole.size() - 5);
}

void TestCli::decodedIsWhatWasShown()
{
    const Run shown = run({QStringLiteral("send"), QStringLiteral("get 4"), QStringLiteral("--virtual"),
                           QStringLiteral("--json"), QStringLiteral("--record"), path("shown")});
    const Run decoded = run({QStringLiteral("decode"), path("shown"), QStringLiteral("--json")});
    QStringList reports = decoded.out.split(QLatin1Char('\n')).filter(QStringLiteral("\"kind\":\"report\""));
    QVERIFY(shown.out.count(QLatin1Char('\n')) >= 13);
    for (const QString &line : shown.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        QVERIFY2(reports.removeOne(line), qPrintable(line));
    QVERIFY(decoded.out.contains(QLatin1String("\"kind\":\"sent\""))
            && decoded.out.contains(QLatin1String("\"command\":\"get 4\"")));
}

void TestCli::servedIsWhatWasRecorded()
{
    QByteArray recording = session::encodeStart(QStringLiteral("test"), {QStringLiteral("p")});
    QByteArray bytes;
    for (int i = 0; i < 50; ++i) {
        const QByteArray piece =
            protocol::encodeFrame(protocol::ModuleId::Sys, 1, QByteArray(1, char(i))).left(12 + i % 2);
        session::appendPacket(recording, {i * 2'000'000LL, session::Direction::Received, piece, {}, 0});
        session::appendPacket(recording, {i * 2'000'000LL, session::Direction::Sent, "get 1\r\n", {}, 0});
        bytes += piece;
    }
    QVERIFY(writeFile(path("tape"), recording));
    for (const char *options : {"--speed 2", "--from 0.05", "--from 1000"}) {
        start(QStringList{QStringLiteral("serve"), path("tape")} + words(QString::fromLatin1(options)));
        QTRY_VERIFY_WITH_TIMEOUT(m_process.canReadLine(), kPatienceMs);
        const QString tty = QString::fromUtf8(m_process.readLine()).trimmed().mid(5);
        QProcess reader;
        reader.start(QStringLiteral(TOOL), {QStringLiteral("record"), path("served"), QStringLiteral("--port"), tty});
        QCOMPARE(done().code, 0);
        QTRY_COMPARE_WITH_TIMEOUT(reader.state(), QProcess::NotRunning, kPatienceMs);
        QCOMPARE(bytesOf(packetsOf(path("served")), session::Direction::Received).toHex(), bytes.toHex());
    }
    const Run alone = run({QStringLiteral("serve"), path("tape"), QStringLiteral("--timeout"), QStringLiteral("0.1")});
    QCOMPARE(alone.code, 3);
}

void TestCli::boardAgreesWithItself()
{
    const char *const commands[] = {"get 0",      "get 1",    "get 2",       "get 3",  "get 4",     "get 5",
                                    "get 6",      "get 7",    "get 8",       "get 9",  "get 10",    "get 11",
                                    "help",       "nonsense", "inject 7 2",  "xbic 4", "xbic 5",    "cmu 16",
                                    "inject 8 1", "intcm 2",  "inject 5 2",  "cmu 17", "crc 3 1 1", "cse 1",
                                    "cse 6 2",    "pmc 2 4",  "inject 10 2", "spt 1"};
    QByteArray questions = session::encodeStart(QStringLiteral("test"), {QStringLiteral("p")});
    qint64 time = 0;
    for (const char *command : commands)
        session::appendPacket(questions,
                              {time += 100'000'000, session::Direction::Sent, QByteArray(command) + "\r\n", {}, 0});
    QVERIFY(writeFile(path("questions"), questions));
    const auto check = [this](const char *arguments) {
        return run(QStringList{QStringLiteral("check"), QStringLiteral("--virtual")}
                   + words(QString::fromLatin1(arguments).arg(m_folder.path())));
    };
    const Run asked = check("%1/questions --record %1/answers");
    QCOMPARE(asked.code, 1);
    QVERIFY2(asked.out.contains(QLatin1String("\"get 1\": firmware extra: version *")), qPrintable(asked.out));
    const Run same = check("%1/answers --seed 2");
    QVERIFY2(same.code == 0, qPrintable(same.out + same.err));
    QVERIFY2(same.out.contains(QStringLiteral("%1 commands, ").arg(std::size(commands)))
                 && same.out.contains(QLatin1String(", 0 differences")),
             qPrintable(same.out));
}

void TestCli::changedAnswerIsFound()
{
    QCOMPARE(run({QStringLiteral("send"), QStringLiteral("get 4"), QStringLiteral("--virtual"),
                  QStringLiteral("--record"), path("limits")})
                 .code,
             0);
    QByteArray changed = fileBytes(path("limits"));
    const int at = changed.indexOf(QByteArray::fromHex("0201000431")); // module, type, length, monitor 3
    QVERIFY(at > 0);
    changed[at + 6] = static_cast<char>(changed[at + 6] + 1); // its upper limit
    QVERIFY(writeFile(path("limits"), changed));
    const Run other = run({QStringLiteral("check"), path("limits"), QStringLiteral("--virtual")});
    QCOMPARE(other.code, 1);
    const int limit = static_cast<uchar>(changed[at + 6]);
    const QString said =
        QStringLiteral("1 \"get 4\": cmu upper: expected %1 MHz, received %2 MHz").arg(limit).arg(limit - 1);
    QVERIFY2(other.out.contains(said), qPrintable(other.out));
    QVERIFY2(other.out.contains(QLatin1String(", 1 differences")), qPrintable(other.out));
}

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
