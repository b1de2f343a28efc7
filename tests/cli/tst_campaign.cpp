// SPDX-License-Identifier: MIT
// Campaigns against a board in this process: each defect fails the right cases and no others, a bad cable makes cases
// invalid and never anything worse, and files and reports are what they say they are.
#include "cli/campaign/planfile.h"
#include "cli/campaign/reporthtml.h"
#include "cli/campaign/reportjson.h"
#include "cli/campaign/reportjunit.h"
#include "cli/campaign/runner.h"
#include "cli/settings.h"
#include "link/linetraffic.h"
#include "simulator/badcable.h"
#include "simulator/board.h"
#include "simulator/defects.h"
#include "simulator/shell.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryFile>
#include <QTest>
#include <QXmlStreamReader>

#include <algorithm>
#include <functional>
#include <numeric>

using namespace campaign;

namespace {

/// A board at the other end of a cable, without a terminal between.
class BoardInside : public Transport
{
public:
    explicit BoardInside(const QString &defect = {}, const simulator::CableFaults &faults = {}, quint32 seed = 1)
        : m_board(seed),
          m_cable(seed),
          m_shell(m_board)
    {
        if (!defect.isEmpty())
            m_board.addDefect(defect);
        m_cable.setFaults(faults);
        QObject::connect(&m_board, &simulator::Board::output, &m_cable, &simulator::BadCable::sendToProgram);
        QObject::connect(
            &m_cable, &simulator::BadCable::reachedProgram, &m_cable,
            [](const QByteArray &bytes) { emit lineTraffic().received(bytes); }, Qt::QueuedConnection);
        QObject::connect(&m_cable, &simulator::BadCable::reachedBoard, &m_cable,
                         [this](const QByteArray &bytes) { m_shell.take(bytes); });
    }
    QString name() const override { return QStringLiteral("inside"); }
    QString open(int) override
    {
        emit lineTraffic().opened(name());
        return {};
    }
    void write(const QByteArray &bytes) override
    {
        emit lineTraffic().sent(bytes);
        m_cable.sendToBoard(bytes);
    }

private:
    simulator::Board m_board;
    simulator::BadCable m_cable;
    simulator::Shell m_shell;
};

Plan shipped(const char *name, int repeat = 0)
{
    QString trouble;
    Plan plan = readPlan(QStringLiteral(CAMPAIGNS "/") + QLatin1String(name), trouble);
    if (!trouble.isEmpty())
        qFatal("%s", qPrintable(trouble));
    for (Case &each : plan.cases)
        each.repeat = repeat > 0 ? repeat : each.repeat;
    return plan;
}

Outcome outcomeOf(const Plan &plan, std::unique_ptr<Transport> board, bool failFast = false)
{
    const Settings settings;
    Conversation conversation(settings, Way{std::move(board), {}, 0});
    Runner runner(conversation, plan);
    std::vector<std::size_t> order(plan.cases.size());
    std::iota(order.begin(), order.end(), 0U);
    runner.run(order, failFast);
    return runner.outcome();
}

// "swt-access: undetected"
QStringList deviations(const Plan &plan, const Outcome &outcome)
{
    QStringList found;
    for (const CaseResult &result : outcome.results) {
        const Case &judged = plan.cases[result.number];
        if (!isAsExpected(judged, result.verdict))
            found.append(judged.id + QStringLiteral(": ") + nameOf(result.verdict));
    }
    return found;
}

/// The cases that a defect has to fail, and with what verdict: those that a pattern fits, those that expect a fault, or
/// those that expect a state. A control rests on the case that shows its injection at work, and falls with it.
struct Row {
    const char *defect;
    const char *cases; // "id PATTERN", "fault NUMBER", "state NAME"
    Verdict verdict;
};

constexpr auto Undetected = Verdict::Undetected;
constexpr auto Wrong = Verdict::WrongMechanism;
constexpr auto Late = Verdict::Late;

// clang-format off
constexpr Row rows[] = {
    {"clock-monitor-mute", "fault 28", Undetected},
    {"crossbar-checker-mute", "fault 47", Undetected},
    {"protection-mute", "fault 104", Undetected},
    {"ecc-mute", "fault 16", Undetected},
    {"watchdog-mute", "fault 13", Undetected},
    {"interrupt-monitor-mute", "fault 75", Undetected},
    {"voltage-detector-mute", "fault 1", Undetected},
    {"crossbar-wrong-source", "fault 46", Wrong},
    {"interrupt-wrong-core", "fault 78", Wrong},
    {"clock-monitor-late", "fault 31", Late},
    {"watchdog-late", "fault 13", Late},
    {"crossbar-twice", "fault 50", Wrong},
    {"alarm-without-record", "fault 105", Wrong},
    {"record-without-alarm", "fault 48", Wrong},
    {"alarm-without-fault", "fault 23", Wrong},
    {"fault-without-alarm", "state ALARM", Wrong},
    {"watchdog-no-reset", "fault 13", Wrong},
    {"reset-wrong-reason", "id reset-functional", Wrong},
    {"escalation-functional", "id reset-escalates", Wrong},
    {"restart-notice-lost", "id reset-notice", Undetected},
    {"radar-counter-stands", "id spt-counts", Wrong},
    {"power-counter-stands", "id vg5k-counts", Wrong},
    {"clock-value-stands", "id cmu-mc-slow", Wrong},
    {"random-number-stands", "id cse-random-true", Wrong},
    {"self-test-stuck", "id pmc-test-(flash-lvd|all)", Wrong},
    {"logic-self-test-stuck", "id reset-self-tests", Wrong},
    {"checksum-wrong", "id crc-.*", Wrong},
    {"cipher-bytes-swapped", "id cse-ecb-encrypt", Wrong},
    {"verification-passes", "id cse-verify-false", Wrong},
    {"record-wrong-address", "id smpu-.*-(write|read)", Wrong},
    {"lock-lost", "id regp-functional", Wrong},
    {"lock-kept", "id regp-destructive", Wrong},
    {"detectors-kept", "id reset-detectors", Wrong},
    {"record-kept", "id reset-record", Wrong},
    {"clock-monitor-always-on", "id cmu-.*-off", Verdict::Detected},
    {"watchdog-always-on", "id swt-.*-off", Verdict::Detected},
    {"clear-ignored", "id smpu-clear", Undetected},
};
// clang-format on

bool isMeant(const Row &row, const Case &judged)
{
    const QString kind = QString::fromLatin1(row.cases).section(QLatin1Char(' '), 0, 0);
    const QString what = QString::fromLatin1(row.cases).section(QLatin1Char(' '), 1);
    if (kind == QLatin1String("fault"))
        return judged.expect.fault && *judged.expect.fault == what.toInt();
    if (kind == QLatin1String("state"))
        return judged.expect.state == what;
    return QRegularExpression(QRegularExpression::anchoredPattern(what)).match(judged.id).hasMatch();
}

QStringList meant(const Plan &plan, const Row &row)
{
    QStringList found;
    for (const Case &judged : plan.cases) {
        const auto shows = [&](const Case &other) {
            return other.inject == judged.inject && !other.control && !isMeant(row, other);
        };
        if (isMeant(row, judged))
            found.append(judged.id + QStringLiteral(": ") + nameOf(row.verdict));
        else if (judged.control && !judged.effect && std::ranges::none_of(plan.cases, shows))
            found.append(judged.id + QStringLiteral(": invalid"));
    }
    return found;
}

} // namespace

class TestCampaign : public QObject
{
    Q_OBJECT

private slots:
    void fileErrors_data();
    void fileErrors();
    void soundBoardPasses();
    void everyDefectFailsItsCases_data();
    void everyDefectFailsItsCases();
    void everyDefectIsDescribed();
    void badCableIsNeverTheBoardsFault_data();
    void badCableIsNeverTheBoardsFault();
    void sameSeedSameReport();
    void failFastEndsTheCampaign();
    void silentBoardEndsTheCampaign();
    void viewsAgree();
    void pageStandsAlone();
};

void TestCampaign::fileErrors_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("trouble"); // behind the file's name
    const auto row = [](const char *name, const char *text, const char *trouble) {
        QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(trouble);
    };
    const QString start =
        QStringLiteral("title = \"t\"\n[[mechanism]]\nname = \"m\"\nrecord = \"xbic 4\"\n[[mechanism.case]]\n");
    const auto inCase = [&](const char *name, const char *text, const char *trouble) {
        row(name, qPrintable(start + QLatin1String(text)), trouble);
    };
    row("no TOML", "title = \n", ":1:9: ");
    row("unknown key", "title = \"t\"\nsetpu = []\n", ":1:1: there is no case");
    row("no case", "title = \"t\"\n", ":1:1: there is no case");
    inCase("sound", "id = \"a\"\ntitle = \"t\"\ninject = \"inject 7 1\"\nexpect = { fault = 47 }\n", "");
    inCase("unknown key of a case",
           "id = \"a\"\ntitle = \"t\"\ninject = \"x\"\ndedline_us = 1\nexpect = { fault = 47 }\n",
           ":9:1: no key \"dedline_us\"; did you mean \"deadline_us\"?");
    inCase("no identifier", "title = \"t\"\ninject = \"x\"\nexpect = { fault = 47 }\n", ":5:1: id is missing");
    inCase("wrong type", "id = \"a\"\ntitle = 3\n", ":7:9: title is a text in quotes");
    inCase("out of range", "id = \"a\"\ntitle = \"t\"\ninject = \"x\"\nexpect = { fault = 128 }\n",
           ":9:20: fault is a whole number from 0 to 127");
    inCase("other source", "id = \"a\"\ntitle = \"t\"\ninject = \"x\"\nexpect = { fault = 47, source = \"PMC\" }\n",
           ":9:33: fault 47 has another source");
    inCase("unknown state", "id = \"a\"\ntitle = \"t\"\ninject = \"x\"\nexpect = { state = \"ALRAM\" }\n",
           ":9:20: no state \"ALRAM\"; did you mean \"ALARM\"?");
    inCase("unknown report",
           "id = \"a\"\ntitle = \"t\"\ninject = \"x\"\nexpect = { reports = [{ report = \"crv\" }] }\n",
           ":9:34: no report \"crv\"; did you mean \"crc\"?");
    inCase("unknown field of a record",
           "id = \"a\"\ntitle = \"t\"\ninject = \"x\"\nexpect = { fault = 47, record = { mastr = 1 } }\n",
           ":9:35: no field of xbic_record \"mastr\"; did you mean \"master\"?");
    inCase("control that expects",
           "id = \"a\"\ntitle = \"t\"\ninject = \"x\"\ncontrol = \"off\"\nexpect = { fault = 47 }\n",
           ":10:10: a control expects nothing");
    inCase("nothing expected", "id = \"a\"\ntitle = \"t\"\ninject = \"x\"\n",
           ":5:1: expect is missing: a fault, a state, a reset, reports or a change");
    inCase("two lines", "id = \"a\"\ntitle = \"t\"\ninject = \"get 1\\nget 2\"\n",
           ":8:10: a command is one line of Latin-1");
}

void TestCampaign::fileErrors()
{
    QFETCH(QString, text);
    QTemporaryFile file;
    QVERIFY(file.open() && file.write(text.toUtf8()) >= 0 && file.flush());
    QString found;
    readPlan(file.fileName(), found);
    QFETCH(QString, trouble);
    QVERIFY2(trouble.isEmpty() ? found.isEmpty() : found.startsWith(file.fileName() + trouble), qPrintable(found));
}

void TestCampaign::soundBoardPasses()
{
    for (const char *name : {"all.toml", "smoke.toml"}) {
        const Plan plan = shipped(name);
        const Outcome outcome = outcomeOf(plan, std::make_unique<BoardInside>());
        QCOMPARE(deviations(plan, outcome), QStringList());
        QCOMPARE(outcome.results.size(), plan.cases.size());
        QCOMPARE(outcome.damaged, qint64{0});
    }
}

void TestCampaign::everyDefectFailsItsCases_data()
{
    QTest::addColumn<int>("row");
    for (std::size_t i = 0; i < std::size(rows); ++i)
        QTest::newRow(rows[i].defect) << static_cast<int>(i);
    QCOMPARE(std::size(rows), simulator::allDefects().size());
}

void TestCampaign::everyDefectFailsItsCases()
{
    QFETCH(int, row);
    static const Plan plan = shipped("all.toml", 1);
    const Row &tried = rows[row];
    const QStringList expected = meant(plan, tried);
    QVERIFY(!expected.isEmpty());
    QCOMPARE(deviations(plan, outcomeOf(plan, std::make_unique<BoardInside>(QLatin1String(tried.defect)))), expected);
}

// Under a name of its own, which the manual page has too.
void TestCampaign::everyDefectIsDescribed()
{
    QFile file(QStringLiteral(MANUAL_PAGE));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString page = QString::fromUtf8(file.readAll()).remove('\\');
    QSet<QString> named, tried;
    for (const Row &row : rows)
        tried += row.defect;
    for (const simulator::Defect &defect : simulator::allDefects()) {
        named += defect.name;
        QVERIFY2(page.contains(QStringLiteral("\n.B %1\n").arg(defect.name)), defect.name);
    }
    QCOMPARE(tried, named);
    QCOMPARE(named.size(), static_cast<int>(std::size(rows)));
    QVERIFY(!simulator::Board().addDefect("no such defect"));
}

void TestCampaign::badCableIsNeverTheBoardsFault_data()
{
    QTest::addColumn<double>("noise");
    QTest::addColumn<double>("drop");
    QTest::addColumn<double>("duplicate");
    QTest::addColumn<int>("stallMs");
    QTest::newRow("little noise") << 1e-5 << 0.0 << 0.0 << 0;
    QTest::newRow("noise") << 1e-4 << 0.0 << 0.0 << 0;
    QTest::newRow("losses") << 0.0 << 1e-3 << 0.0 << 0;
    QTest::newRow("duplicates") << 0.0 << 0.0 << 1e-3 << 0;
    QTest::newRow("stalls") << 0.0 << 0.0 << 0.0 << 400;
}

void TestCampaign::badCableIsNeverTheBoardsFault()
{
    QFETCH(double, noise);
    QFETCH(double, drop);
    QFETCH(double, duplicate);
    QFETCH(int, stallMs);
    const Plan plan = shipped("all.toml", 1);
    int invalid = 0, good = 0, damaged = 0;
    for (const quint32 seed : {1U, 2U, 3U}) {
        const Outcome outcome = outcomeOf(
            plan,
            std::make_unique<BoardInside>(QString(), simulator::CableFaults{noise, drop, duplicate, stallMs, 0}, seed));
        for (const QString &deviation : deviations(plan, outcome))
            QVERIFY2(deviation.endsWith(QLatin1String(": invalid")), qPrintable(deviation));
        good += passedOf(plan, outcome);
        invalid += countOf(outcome, Verdict::Invalid);
        damaged += static_cast<int>(std::ranges::count_if(outcome.results, [](const CaseResult &result) {
            return result.decisive().told.endsWith(QLatin1String("bytes on the line belonged to no report"));
        }));
    }
    qInfo("%d as expected, %d invalid", good, invalid);
    QVERIFY(good > invalid);
    QVERIFY((invalid > 0 && damaged > 0) || stallMs > 0); // a stall loses nothing
}

void TestCampaign::sameSeedSameReport()
{
    const Plan plan = shipped("smoke.toml", 3);
    const auto report = [&plan](quint32 seed) {
        const Outcome outcome =
            outcomeOf(plan, std::make_unique<BoardInside>(QString(), simulator::CableFaults(), seed));
        QString text = QString::fromUtf8(jsonReport(plan, outcome));
        // Dates, and times by our clock; the packets depend on how the line cuts the stream.
        text.remove(QRegularExpression(QStringLiteral("\"(began|ended)\": \"[^\"]*\"")));
        text.remove(QRegularExpression(QStringLiteral("\"(reaction|handling)_ms\": (\\{[^}]*\\}|[0-9.e-]+)")));
        text.remove(QRegularExpression(QStringLiteral("\"packets\": \\{[^}]*\\}")));
        return text.remove(QRegularExpression(QStringLiteral("\"bytes_received\": [0-9]+")));
    };
    const QString first = report(1);
    QCOMPARE(report(1), first);
    QVERIFY(report(2) != first);
}

void TestCampaign::failFastEndsTheCampaign()
{
    const Plan plan = shipped("smoke.toml");
    const Outcome outcome =
        outcomeOf(plan, std::make_unique<BoardInside>(QStringLiteral("crossbar-checker-mute")), true);
    QCOMPARE(outcome.results.size(), std::size_t{2});
    QVERIFY(!outcome.endedBy.isEmpty());
}

void TestCampaign::silentBoardEndsTheCampaign()
{
    const Plan plan = shipped("smoke.toml");
    const Outcome outcome =
        outcomeOf(plan, std::make_unique<BoardInside>(QString(), simulator::CableFaults{0, 1, 0, 0, 0}));
    QVERIFY(outcome.results.empty());
    QCOMPARE(outcome.endedBy, QStringLiteral("the board does not answer any more"));
}

// One value behind all: JUnit counts what the summary counts, and a time-out is an error, a wrong mechanism a failure.
void TestCampaign::viewsAgree()
{
    const Plan plan = shipped("smoke.toml");
    const struct {
        const char *defect, *element, *message;
    } tried[] = {
        {"crossbar-checker-mute", "error", "time-out: undetected: fault 47 was not reported"},
        {"alarm-without-record", "failure", "wrong mechanism: not recorded: "},
        {"watchdog-late", "failure", "detected late: detected after 400000"},
    };
    for (const auto &[defect, element, message] : tried) {
        const Outcome outcome = outcomeOf(plan, std::make_unique<BoardInside>(QLatin1String(defect)));
        QXmlStreamReader xml(junitReport(plan, outcome));
        QStringList messages;
        int cases = 0;
        while (!xml.atEnd()) {
            xml.readNext();
            cases += xml.isStartElement() && xml.name() == QLatin1String("testcase");
            if (xml.isStartElement()
                && (xml.name() == QLatin1String("error") || xml.name() == QLatin1String("failure"))) {
                QCOMPARE(xml.name().toString(), QLatin1String(element));
                messages.append(xml.attributes().value(QLatin1String("message")).toString());
            }
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        QCOMPARE(cases, static_cast<int>(plan.cases.size()));
        QCOMPARE(messages.size(), 1);
        QVERIFY2(messages.first().startsWith(QLatin1String(message)), qPrintable(messages.first()));
        const QJsonObject json = QJsonDocument::fromJson(jsonReport(plan, outcome)).object();
        QCOMPARE(json[QStringLiteral("summary")].toObject()[QStringLiteral("as_expected")].toInt(), cases - 1);
        QVERIFY(htmlReport(plan, outcome).contains("Not as expected"));
    }
}

void TestCampaign::pageStandsAlone()
{
    const Plan plan = shipped("all.toml");
    const QByteArray page = htmlReport(plan, outcomeOf(plan, std::make_unique<BoardInside>()));
    QXmlStreamReader xml(page);
    QStringList ids;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        QVERIFY(xml.name() != QLatin1String("script") && xml.name() != QLatin1String("link"));
        for (const QXmlStreamAttribute &attribute : xml.attributes())
            QVERIFY(attribute.name() != QLatin1String("href") && attribute.name() != QLatin1String("src"));
        if (xml.attributes().value(QLatin1String("class")) == QLatin1String("id"))
            ids.append(xml.readElementText());
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    for (const Case &each : plan.cases)
        QVERIFY2(ids.contains(each.id), qPrintable(each.id));
    QVERIFY2(page.size() <= 500'000, qPrintable(QString::number(page.size())));
    QVERIFY(!page.contains("Not as expected"));
}

int main(int argc, char *argv[])
{
    qputenv("QTEST_FUNCTION_TIMEOUT", "86400000"); // ms; minutes pass in seconds
    QCoreApplication application(argc, argv);
    QTEST_SET_MAIN_SOURCE_PATH
    TestCampaign test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_campaign.moc"
