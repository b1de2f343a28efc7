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

#include <map>

#include <signal.h>

namespace {

constexpr int kPatienceMs = 30000;

struct Run {
    int code = -1;
    QString out, err;
};

/// The tool with a line of arguments; done() is its end.
class Tool
{
public:
    explicit Tool(const QString &line, const QString &output = {})
    {
        process.setStandardOutputFile(output);
        process.start(QStringLiteral(TOOL), QProcess::splitCommand(line));
    }
    Run done();
    bool hasSpoken()
    {
        return QTest::qWaitFor([this] { return process.bytesAvailable() > 0; }, kPatienceMs);
    }
    void signal(int number) { kill(static_cast<pid_t>(process.processId()), number); }

    QProcess process;
};

// Events go on meanwhile: the board may be in this process.
Run Tool::done()
{
    [this] { QTRY_COMPARE_WITH_TIMEOUT(process.state(), QProcess::NotRunning, kPatienceMs); }();
    if (process.state() != QProcess::NotRunning)
        process.kill();
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
}

bool has(const QString &text, const char *part)
{
    return text.contains(QString::fromUtf8(part));
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
    // A report on paper takes seconds: the program that makes it is not found here.
    void initTestCase() { qputenv("PATH", "/nowhere"); }
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
    // "%1" is the folder.
    Run run(const char *line) { return Tool(QString::fromLatin1(line).replace("%1", m_folder.path())).done(); }
    QString path(const char *name) { return m_folder.filePath(QLatin1String(name)); }

    std::map<QByteArray, Tool> m_started; // by row
    QTemporaryDir m_folder;
};

void TestCli::usage_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("said"); // part of standard error
    const auto row = [this](const char *arguments, int code, const char *said) {
        const char *name = *arguments ? arguments : "nothing";
        QTest::newRow(name) << code << QString::fromLatin1(said);
        m_started.try_emplace(name, QString::fromLatin1(arguments));
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
    row("status --port no-such-board", 3, "no such device");
    row("status --tcp 127.0.0.1:1", 3, "127.0.0.1:1: Connection refused");
}

void TestCli::usage()
{
    const Run result = m_started.at(QTest::currentDataTag()).done();
    QTEST(result.code, "code");
    QFETCH(QString, said);
    QVERIFY2(result.err.contains(said), qPrintable(result.err));
    QCOMPARE(result.out.isEmpty(), result.code != 0);
    QCOMPARE(result.err.isEmpty(), result.code == 0);
}

void TestCli::everyVerbHelps()
{
    std::map<QString, Tool> tools;
    for (const char *verb :
         {"ports", "status", "send", "inject", "monitor", "record", "decode", "serve", "check", "campaign"})
        tools.try_emplace(verb, QLatin1String(verb) + QStringLiteral(" --help"));
    for (auto &[verb, tool] : tools) {
        const Run result = tool.done();
        QCOMPARE(result.code, 0);
        QVERIFY2(result.out.startsWith(QLatin1String("Usage: ")) && result.out.contains(verb)
                     && has(result.out, "--json"),
                 qPrintable(result.out));
    }
}

void TestCli::needsNoWindow()
{
    QProcess ldd;
    ldd.start(QStringLiteral("/usr/bin/ldd"), {QStringLiteral(TOOL)});
    QVERIFY(ldd.waitForFinished(kPatienceMs));
    const QByteArray libraries = ldd.readAllStandardOutput();
    QVERIFY(libraries.contains("libQt5SerialPort"));
    QVERIFY2(!libraries.contains("Gui") && !libraries.contains("Widgets"), libraries.constData());
}

void TestCli::answersAreShown()
{
    Tool send(QStringLiteral("send \"get 1\" --virtual --seed 7")), ask(QStringLiteral("status --virtual"));
    const Run sent = send.done();
    QCOMPARE(sent.code, 0);
    QVERIFY2(has(sent.out, " < sys    firmware"), qPrintable(sent.out));
    QVERIFY2(!has(sent.out, "\x1B"), "colours are for terminals");
    QVERIFY2(has(sent.err, "a virtual board answers"), "never silently");

    const Run status = ask.done();
    QCOMPARE(status.code, 0);
    for (const char *module :
         {"sys", "cmu", "xbic", "smpu", "regp", "memu", "intcm", "pmc", "swt", "fccu", "reset", "vg5k", "spt"})
        QVERIFY2(status.out.contains(QRegularExpression(QStringLiteral("^%1 ").arg(QLatin1String(module)),
                                                        QRegularExpression::MultilineOption)),
                 module);
}

void TestCli::silentBoardIsNoAnswer()
{
    const RawLine lines[3];
    const auto to = [&lines](const char *words, int line) {
        return QString::fromLatin1(words) + QStringLiteral(" --timeout 0.2 --port ") + lines[line].tty();
    };
    Tool send(to("send \"get 1\"", 0)), status(to("status SYS xbic", 1)), inject(to("inject xbic 1", 2));
    const Run sent = send.done();
    QCOMPARE(sent.code, 3);
    QVERIFY2(has(sent.err, "no answer to \"get 1\" within 0.2 s"), qPrintable(sent.err));
    QCOMPARE(lines[0].received(), QByteArray("get 1\r\n"));
    const Run asked = status.done();
    QCOMPARE(asked.code, 3);
    QCOMPARE(asked.out.count(QLatin1String("no answer")), 2);
    QCOMPARE(inject.done().code, 3);
}

void TestCli::unpluggedIsSaid()
{
    RawLine line;
    Tool monitor(QStringLiteral("monitor --json --port ") + line.tty());
    QVERIFY(monitor.hasSpoken());
    line.hangUp();
    const Run result = monitor.done();
    QCOMPARE(result.code, 3);
    QVERIFY2(has(result.err, "connection lost"), qPrintable(result.err));
    QVERIFY2(has(result.out, "\"note\":\"lost\""), qPrintable(result.out));
}

void TestCli::interruptedIsNoSuccess()
{
    for (const int number : {SIGINT, SIGTERM}) {
        Tool monitor(QStringLiteral("monitor --virtual"));
        QVERIFY(monitor.hasSpoken());
        monitor.signal(number);
        QCOMPARE(monitor.done().code, 130);
    }
}

// What was run is reported, and the exit code says that it was not all.
void TestCli::interruptedCampaignReports()
{
    Tool campaign(QStringLiteral("campaign " CAMPAIGNS "/all.toml --virtual --json --report ") + path("campaign"));
    QVERIFY(campaign.hasSpoken());
    campaign.signal(SIGINT);
    const Run result = campaign.done();
    QCOMPARE(result.code, 130);
    QVERIFY2(has(result.out, "\"kind\":\"campaign\""), qPrintable(result.out));
    QVERIFY2(has(result.err, "weasyprint is not installed: no "), qPrintable(result.err));
    const QByteArray report = fileBytes(path("campaign/report.json"));
    QVERIFY2(report.contains("\"ended_by\": \"interrupted\""), report.constData());
}

void TestCli::faultsAreCaughtOrNot()
{
    simulator::VirtualBoard boards[4];
    boards[3].board().execute(QStringLiteral("xbic 2 0"));
    const auto on = [&boards](const char *what, int board) {
        return QStringLiteral("inject %1 --port %2").arg(QLatin1String(what), boards[board].tty());
    };
    Tool fault(on("xbic 1", 0)), restart(on("reset 1", 1)), memory(on("memu 3", 2)), off(on("xbic 1 --timeout 0.3", 3));
    const Run caught = fault.done();
    QCOMPARE(caught.code, 0);
    for (const char *line : {"injected  xbic case 1 (inject 7 1)", "fault     47 XBAR_0", "time      detected after",
                             "reaction  ALARM", "record    Fault Number: 1"})
        QVERIFY2(has(caught.out, line), qPrintable(caught.out));
    const Run reset = restart.done();
    QCOMPARE(reset.code, 0);
    QVERIFY2(has(reset.out, "restart"), qPrintable(reset.out));
    QCOMPARE(memory.done().code, 0);
    const Run missed = off.done();
    QCOMPARE(missed.code, 1);
    QVERIFY2(has(missed.out, "fault     none reported"), qPrintable(missed.out));
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
    const QString settings = QStringLiteral("connection: &board\n  accepter: tcp,127.0.0.1,%1\n"
                                            "  connector: serialdev,%2,115200n81,local\n");
    QVERIFY(writeFile(path("ser2net.yaml"), settings.arg(port).arg(board.tty()).toUtf8()));
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
    // The port is given back a moment after the first connection has gone.
    const QString line = QStringLiteral("status sys --tcp 127.0.0.1:%1").arg(port);
    QTRY_VERIFY_WITH_TIMEOUT((result = Tool(line).done()).code == 0, kPatienceMs);
    QVERIFY2(has(result.out, "operating_mode"), qPrintable(result.out));
    server.kill();
    server.waitForFinished(kPatienceMs);
}

void TestCli::recordingSurvivesAKill()
{
    RawLine line;
    Tool record(QStringLiteral("record %1 --port %2").arg(path("killed"), line.tty()));
    QTRY_VERIFY_WITH_TIMEOUT(packetsOf(path("killed")).size() == 1, kPatienceMs); // opened
    QByteArray sent;
    for (int i = 0; i < 20; ++i) {
        const QByteArray frame = protocol::encodeFrame(protocol::ModuleId::Sys, 1, QByteArray(1, char(i % 12)));
        line.write(frame);
        sent += frame;
    }
    QTRY_COMPARE_WITH_TIMEOUT(bytesOf(packetsOf(path("killed")), session::Direction::Received), sent, kPatienceMs);
    record.process.kill();
    record.done();
    QCOMPARE(bytesOf(packetsOf(path("killed")), session::Direction::Received), sent);
    const Run decoded = run("decode %1/killed");
    QCOMPARE(decoded.code, 0);
    QCOMPARE(decoded.out.count(QLatin1String("operating_mode")), 20);
}

void TestCli::fullDiskEndsTheRecordingAlone()
{
    const Run recorded = run("record /dev/full --virtual");
    QCOMPARE(recorded.code, 2);
    QVERIFY2(has(recorded.err, "/dev/full: No space left on device"), qPrintable(recorded.err));
    const Run shown = Tool(QStringLiteral("status sys --virtual"), QStringLiteral("/dev/full")).done();
    QCOMPARE(shown.code, 2);
    QVERIFY2(has(shown.err, "standard output: No space left on device"), qPrintable(shown.err));
}

void TestCli::cutRecordingIsDecodedUpToTheCut()
{
    QCOMPARE(run("send \"get 1\" --virtual --record %1/whole").code, 0);
    const QByteArray whole = fileBytes(path("whole"));
    QVERIFY(writeFile(path("cut"), whole.left(whole.size() - 5)));
    const Run cut = run("decode %1/cut --record %1/salvaged");
    QCOMPARE(cut.code, 2);
    QVERIFY2(has(cut.err, "cut short at byte"), qPrintable(cut.err));
    QVERIFY(has(cut.out, "firmware"));
    const QList<session::Packet> packets = packetsOf(path("whole"));
    QCOMPARE(packetsOf(path("salvaged")), packets.mid(0, packets.size() - 1));
    QCOMPARE(run("decode %1/salvaged").code, 0);
    QCOMPARE(run("decode %1/cut --record %1/cut").code, 2);
    QCOMPARE(fileBytes(path("cut")).size(), whole.size() - 5);
}

void TestCli::decodedIsWhatWasShown()
{
    const Run shown = run("send \"get 4\" --virtual --json --record %1/shown");
    const Run decoded = run("decode %1/shown --json");
    QStringList reports = decoded.out.split(QLatin1Char('\n')).filter(QStringLiteral("\"kind\":\"report\""));
    QVERIFY(shown.out.count(QLatin1Char('\n')) >= 13);
    for (const QString &line : shown.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        QVERIFY2(reports.removeOne(line), qPrintable(line));
    QVERIFY(has(decoded.out, "\"kind\":\"sent\"") && has(decoded.out, "\"command\":\"get 4\""));
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
        Tool serve(QStringLiteral("serve %1 %2").arg(path("tape"), QLatin1String(options)));
        QTRY_VERIFY_WITH_TIMEOUT(serve.process.canReadLine(), kPatienceMs);
        const QString tty = QString::fromUtf8(serve.process.readLine()).trimmed().mid(5);
        Tool reader(QStringLiteral("record %1 --port %2").arg(path("served"), tty));
        QCOMPARE(serve.done().code, 0);
        reader.done();
        QCOMPARE(bytesOf(packetsOf(path("served")), session::Direction::Received).toHex(), bytes.toHex());
    }
    QCOMPARE(run("serve %1/tape --timeout 0.1").code, 3);
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
                              {time += 20'000'000, session::Direction::Sent, QByteArray(command) + "\r\n", {}, 0});
    QVERIFY(writeFile(path("questions"), questions));
    const Run asked = run("check --virtual %1/questions --record %1/answers");
    QCOMPARE(asked.code, 1);
    QVERIFY2(has(asked.out, "\"get 1\": firmware extra: version *"), qPrintable(asked.out));
    const Run same = run("check --virtual %1/answers --seed 2");
    QVERIFY2(same.code == 0, qPrintable(same.out + same.err));
    QVERIFY2(same.out.contains(QStringLiteral("%1 commands, ").arg(std::size(commands)))
                 && has(same.out, ", 0 differences"),
             qPrintable(same.out));
}

void TestCli::changedAnswerIsFound()
{
    QCOMPARE(run("send \"get 4\" --virtual --record %1/limits").code, 0);
    QByteArray changed = fileBytes(path("limits"));
    const int at = changed.indexOf(QByteArray::fromHex("0201000431")); // module, type, length, monitor 3
    QVERIFY(at > 0);
    changed[at + 6] = static_cast<char>(changed[at + 6] + 1); // its upper limit
    QVERIFY(writeFile(path("limits"), changed));
    const Run other = run("check %1/limits --virtual");
    QCOMPARE(other.code, 1);
    const int limit = static_cast<uchar>(changed[at + 6]);
    const QString said =
        QStringLiteral("1 \"get 4\": cmu upper: expected %1 MHz, received %2 MHz").arg(limit).arg(limit - 1);
    QVERIFY2(other.out.contains(said), qPrintable(other.out));
    QVERIFY2(has(other.out, ", 1 differences"), qPrintable(other.out));
}

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
