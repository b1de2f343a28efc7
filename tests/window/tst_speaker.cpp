// SPDX-License-Identifier: MIT
// The speaker's script: files that are read and files that are refused, a clicker's keys, and the shipped script in front
// of a virtual board, scene by scene and by itself.
#include "link/linetraffic.h"
#include "presenter/mode.h"
#include "presenter/speaker.h"
#include "support/fixtures.h"

#include <QElapsedTimer>
#include <QFile>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace presenter;

namespace {

const QString kShipped = QStringLiteral(SOURCE_FOLDER "/Presentation/ten-minutes.toml");
constexpr int kSceneMs = 30'000;

} // namespace

class TestSpeaker : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { speaker().end(); }

    void wrongFilesAreRefused_data();
    void wrongFilesAreRefused();
    void clickerWalks();
    void shippedScriptKeepsItsWord();
    void stepsWaitForSlowButtons();
    void lostInjectionIsMadeAgain();
    void homeComesThrough_data();
    void homeComesThrough();
    void playsByItself();
    void visitorTakesOver_data();
    void visitorTakesOver();

private:
    Speaker &speaker() { return *m_bench->window().findChild<Speaker *>(QStringLiteral("speaker")); }
    Mode &mode() { return *m_bench->window().findChild<Mode *>(QStringLiteral("presenterMode")); }
    QString written(const QByteArray &text);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    int heard(const char *command) const { return m_bench->commands.count(QLatin1String(command)); }

    std::unique_ptr<BoardFixture> m_bench;
    QTemporaryDir m_folder;
};

void TestSpeaker::init()
{
    if (m_bench)
        return;
    m_bench = std::make_unique<BoardFixture>();
    QTRY_COMPARE_WITH_TIMEOUT(m_bench->text("label_FCCU_status"), QStringLiteral("NORMAL"), kSceneMs);
}

QString TestSpeaker::written(const QByteArray &text)
{
    QFile file(m_folder.filePath(QStringLiteral("script.toml")));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("no script");
    return file.fileName();
}

void TestSpeaker::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    m_bench->window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&m_bench->window()));
    QTest::keyClick(&m_bench->window(), key, modifiers);
}

void TestSpeaker::wrongFilesAreRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("trouble");
    const auto row = [](const char *name, const char *text, const char *trouble) {
        QTest::newRow(name) << QByteArray(text) << QString::fromLatin1(trouble);
    };
    row("empty", "", "1: no [[step]]");
    row("no TOML", "title = \"t\"\n[[step]\n", "2: ");
    row("unknown key", "[[step]]\ntitel = \"x\"\n", "2: unknown key \"titel\"");
    row("number for a text", "[[step]]\ntitle = 3\n", "2: \"title\" is no text");
    row("no idle time", "idle = 1.5\n[[step]]\n", "1: \"idle\" is no whole number from 1 to 3600");
    row("no time", "[[step]]\nseconds = 0\n", "2: \"seconds\" is no whole number from 1 to 3600");
    row("step is no table", "step = [1]\n", "1: \"step\" is no list of tables");
    row("do is no list", "[[step]]\ndo = 1\n", "2: \"do\" is no list");
    row("unknown deed", "[[step]]\ndo = [{ sing = \"la\" }]\n", "2: nothing to do that is known");
    row("deed with a stranger", "[[step]]\ndo = [{ press = \"a\", text = \"b\" }]\n", "2: unknown key \"text\"");
    row("switch without a state", "[[step]]\ndo = [{ switch = \"a\" }]\n", "2: \"on\" is neither true nor false");
}

void TestSpeaker::wrongFilesAreRefused()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QString, trouble);
    const QString path = written(text);
    const QString said = speaker().begin(path);
    QVERIFY2(said.startsWith(path + QLatin1Char(':') + trouble), qPrintable(said));
    QVERIFY(!speaker().isSpeaking());
    QVERIFY(!mode().isOn());
}

void TestSpeaker::clickerWalks()
{
    const QString path =
        written("[[step]]\ntitle = \"one\"\npage = \"SWT\"\n[[step]]\ntitle = \"two\"\npage = \"CSE\"\n");
    QSignalSpy taken(&speaker(), &Speaker::sceneTaken);
    QCOMPARE(speaker().begin(path), QString());
    QVERIFY(mode().isOn());
    QTRY_COMPARE_WITH_TIMEOUT(taken.count(), 1, kSceneMs);
    auto *pages = m_bench->find<QTabWidget>("tabWidget_function");
    QCOMPARE(pages->currentIndex(), 0);
    press(Qt::Key_PageDown);
    QTRY_COMPARE_WITH_TIMEOUT(taken.count(), 2, kSceneMs);
    QCOMPARE(speaker().scene(), 1);
    QCOMPARE(pages->currentIndex(), 1);
    press(Qt::Key_PageDown);
    QCOMPARE(speaker().scene(), 1);
    press(Qt::Key_Period);
    QVERIFY(speaker().isBlank());
    press(Qt::Key_Period);
    QVERIFY(!speaker().isBlank());
    press(Qt::Key_Period);
    press(Qt::Key_PageUp);
    QVERIFY(!speaker().isBlank());
    QCOMPARE(speaker().scene(), 0);
    press(Qt::Key_PageDown);
    m_bench->commands.clear();
    press(Qt::Key_Home);
    QCOMPARE(speaker().scene(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(m_bench->commands.contains(QStringLiteral("inject 2")), kSceneMs);
    press(Qt::Key_Escape);
    QVERIFY(!speaker().isSpeaking());
    QVERIFY(!mode().isOn());
    press(Qt::Key_PageDown);
    QCOMPARE(speaker().scene(), -1);
}

// Shift+F5 finds it; each scene does all that it says, and each injection's story is whole.
void TestSpeaker::shippedScriptKeepsItsWord()
{
    QDir::setCurrent(QStringLiteral(SOURCE_FOLDER));
    QSignalSpy taken(&speaker(), &Speaker::sceneTaken);
    press(Qt::Key_F5, Qt::ShiftModifier);
    QVERIFY(speaker().isSpeaking());
    const auto &scenes = speaker().script().scenes();
    QCOMPARE(scenes.size(), std::size_t(8));
    for (std::size_t n = 0; n < scenes.size(); ++n) {
        QTRY_COMPARE_WITH_TIMEOUT(taken.count(), static_cast<int>(n) + 1, kSceneMs);
        QVERIFY2(taken.last().at(1).toBool(), qPrintable(scenes[n].title));
        QVERIFY2(mode().banner().widthOf(scenes[n].caption) <= 1440, qPrintable(scenes[n].caption));
        const auto &steps = scenes[n].steps;
        if (std::any_of(steps.begin(), steps.end(), [](const script::Step &s) { return s.act == script::Act::Inject; }))
            QTRY_COMPARE_WITH_TIMEOUT(mode().teller().story().reached(), 3, kSceneMs);
        speaker().next();
    }
}

// The button's command goes out behind an animation of three seconds; the next step would clear before it.
void TestSpeaker::stepsWaitForSlowButtons()
{
    const QString path = written("[[step]]\npage = \"CMU\"\ndo = [{ press = \"pushButton_cmu_fault1\" }]\n"
                                 "[[step]]\ndo = [{ send = \"cmu 17\" }]\n");
    QObject animation;
    connect(m_bench->find<QPushButton>("pushButton_cmu_fault1"), &QPushButton::pressed, &animation, [&] {
        QTimer::singleShot(20, &animation, [&] { // in its middle, where the test's own waits would end behind it
            m_bench->commands.clear();
            speaker().next();
        });
    });
    const QStringList inTurn = {QStringLiteral("inject 5 1"), QStringLiteral("cmu 17")};
    QCOMPARE(speaker().begin(path), QString());
    QTRY_COMPARE_WITH_TIMEOUT(m_bench->commands, inTurn, kSceneMs);
}

void TestSpeaker::lostInjectionIsMadeAgain()
{
    const QString path = written("[[step]]\ndo = [{ inject = \"pushButton_smpu_fault6\" }]\n");
    QSignalSpy taken(&speaker(), &Speaker::sceneTaken);
    m_bench->board().holdInReset();
    QSignalSpy sent(&lineTraffic(), &LineTraffic::sent);
    QCOMPARE(speaker().begin(path), QString());
    QTRY_VERIFY_WITH_TIMEOUT(!sent.isEmpty(), kSceneMs);
    m_bench->board().powerCycle();
    QTRY_COMPARE_WITH_TIMEOUT(taken.count(), 1, kSceneMs);
    QVERIFY(taken.last().at(1).toBool());
}

void TestSpeaker::homeComesThrough_data()
{
    QTest::addColumn<bool>("held");
    QTest::newRow("while the board restarts") << false;
    QTest::newRow("held in reset until the next power-on") << true;
}

// A board that restarts or is held takes no command: the reset is ordered until it has happened.
void TestSpeaker::homeComesThrough()
{
    QFETCH(const bool, held);
    const QString path = written("[[step]]\ndo = [{ wait = \"NORMAL\" }]\n");
    QSignalSpy taken(&speaker(), &Speaker::sceneTaken);
    QCOMPARE(speaker().begin(path), QString());
    QTRY_COMPARE_WITH_TIMEOUT(taken.count(), 1, kSceneMs);
    m_bench->commands.clear();
    if (held)
        m_bench->board().holdInReset();
    else
        m_bench->board().restart(simulator::Reason::SoftwareFunctional);
    int orders = 0;
    const auto counting = connect(&lineTraffic(), &LineTraffic::sent, this,
                                  [&orders](const QByteArray &bytes) { orders += bytes.startsWith("inject 2"); });
    speaker().anew();
    QTRY_COMPARE_WITH_TIMEOUT(orders, 2, kSceneMs);
    disconnect(counting);
    QCOMPARE(taken.count(), 1);
    if (held)
        m_bench->board().powerCycle();
    QTRY_COMPARE_WITH_TIMEOUT(taken.count(), 2, kSceneMs);
    QVERIFY(taken.last().at(1).toBool());
    QCOMPARE(heard("inject 2"), held ? 0 : 1);
}

void TestSpeaker::playsByItself()
{
    const QString path = written("[[step]]\ntitle = \"one\"\n[[step]]\ntitle = \"two\"\n");
    QSignalSpy rounds(&speaker(), &Speaker::roundEnded);
    speaker().setStay(20);
    QCOMPARE(speaker().playByItself(path, 2), QString());
    QTRY_COMPARE_WITH_TIMEOUT(rounds.count(), 2, kSceneMs);
    QCOMPARE(rounds.last().first().toInt(), 2);
    speaker().end();
    rounds.clear();
    QCOMPARE(speaker().playByItself(path), QString());
    QTRY_VERIFY_WITH_TIMEOUT(rounds.count() >= 1, kSceneMs);
}

void TestSpeaker::visitorTakesOver_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("click") << 0;
    QTest::newRow("letter") << int(Qt::Key_A);
    QTest::newRow("clicker") << int(Qt::Key_PageUp);
    QTest::newRow("leaves presenter mode") << int(Qt::Key_Escape);
}

void TestSpeaker::visitorTakesOver()
{
    QFETCH(const int, key);
    constexpr int idleMs = 2000;
    constexpr int leastMs = idleMs * 9 / 10; // timers are coarse
    const QString path = written("idle = 2\n[[step]]\n[[step]]\ntitle = \"two\"\n");
    QSignalSpy rounds(&speaker(), &Speaker::roundEnded);
    speaker().setStay(20);
    QCOMPARE(speaker().playByItself(path), QString());
    QTRY_VERIFY_WITH_TIMEOUT(!rounds.isEmpty(), kSceneMs);
    QElapsedTimer sinceTouch;
    for (const int touch : {1, 2}) {
        m_bench->window().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&m_bench->window()));
        if (key)
            QTest::keyClick(m_bench->window().windowHandle(), Qt::Key(key)); // with its way through the shortcuts
        else
            QTest::mouseClick(&mode().banner().canvas(), Qt::LeftButton);
        sinceTouch.start();
        rounds.clear();
        m_bench->commands.clear();
        QTRY_VERIFY_WITH_TIMEOUT(touch == 2 || sinceTouch.elapsed() > idleMs / 2, kSceneMs);
    }
    QCOMPARE(mode().isOn(), key != Qt::Key_Escape);
    QTRY_VERIFY_WITH_TIMEOUT(!rounds.isEmpty(), kSceneMs);
    QVERIFY(sinceTouch.elapsed() >= leastMs);
    QVERIFY(heard("inject 2") > 0);
    QVERIFY(mode().isOn());
    QCOMPARE(speaker().isSpeaking(), true);
}

QTEST_MAIN(TestSpeaker)
#include "tst_speaker.moc"
