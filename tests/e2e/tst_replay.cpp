// SPDX-License-Identifier: MIT
// A recording in front of the window: the strip plays, moves to faults and marks, and a move ends where playing ends.
#include "demo/replayprocess.h"
#include "demo/transportbar.h"
#include "link/linetraffic.h"
#include "protocol/frame.h"
#include "session/pcapng.h"
#include "support/fixtures.h"

#include <QAction>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int kPatienceMs = 30000;
constexpr int kFaults = 5;
const QString kRecording = QStringLiteral(SOURCE_FOLDER "/demo/five-faults.pcapng");

/// The window in front of a recording, with the strip.
class ReplayWindow : public RealWindow
{
public:
    explicit ReplayWindow(const char *speed, const QString &recording = kRecording)
        : m_replay(recording, QString::fromLatin1(speed), QStringLiteral("0"))
    {
        connect(&m_replay, &ReplayProcess::moved, this,
                [this](const ReplayProcess::Position &position) { m_position = position; });
        if (!m_replay.isRunning())
            qFatal("the recording is not served");
        build(m_replay.tty());
        m_bar = new TransportBar(m_replay, &window());
        window().addToolBar(Qt::BottomToolBarArea, m_bar);
    }
    const ReplayProcess::Position &position() const { return m_position; }
    void press(const char *text)
    {
        for (QAction *action : m_bar->actions()) {
            if (action->text() == QLatin1String(text))
                return action->trigger();
        }
        qFatal("no action %s", text);
    }
    int faults() { return find<QComboBox>("comboBox_FaultID")->count(); }
    /// Nothing has changed for longer than any animation or delayed state takes.
    bool isSettled()
    {
        const QString now = shown();
        if (now != m_last) {
            m_last = now;
            m_quiet.start();
        }
        return m_quiet.elapsed() > 1500;
    }
    /// All that labels, fields and boxes say.
    QString shown()
    {
        QStringList texts;
        for (QWidget *widget : window().centralWidget()->findChildren<QWidget *>()) {
            if (qobject_cast<QLabel *>(widget) || qobject_cast<QLineEdit *>(widget)
                || qobject_cast<QTextEdit *>(widget))
                texts.append(widget->objectName() + QStringLiteral(" = ") + driver::textOf(widget)
                             + widget->styleSheet());
        }
        return texts.join(QLatin1Char('\n'));
    }

private:
    ReplayProcess m_replay;
    ReplayProcess::Position m_position;
    TransportBar *m_bar = nullptr;
    QString m_last;
    QElapsedTimer m_quiet;
};

} // namespace

class TestReplay : public QObject
{
    Q_OBJECT

private slots:
    void goesFromFaultToFault();
    void aMoveEndsWherePlayingEnds();
    void aLossIsShown();
};

void TestReplay::goesFromFaultToFault()
{
    ReplayWindow bench("1");
    QTRY_COMPARE_WITH_TIMEOUT(bench.position().state, QStringLiteral("playing"), kPatienceMs);
    bench.press("Pause");
    QTRY_COMPARE_WITH_TIMEOUT(bench.position().state, QStringLiteral("paused"), kPatienceMs);
    const int before = bench.faults();
    QVERIFY(before < kFaults);
    for (int fault = before + 1; fault <= kFaults; ++fault) {
        bench.press("Next fault");
        QTRY_COMPARE_WITH_TIMEOUT(bench.faults(), fault, kPatienceMs);
    }
    const double last = bench.position().seconds;
    bench.press("Next mark");
    QTRY_COMPARE_WITH_TIMEOUT(bench.position().state, QStringLiteral("ended"), kPatienceMs);
    QVERIFY(bench.position().seconds > last);
    QCOMPARE(bench.faults(), kFaults);
}

void TestReplay::aMoveEndsWherePlayingEnds()
{
    QString reference;
    {
        ReplayWindow played("60");
        QTRY_COMPARE_WITH_TIMEOUT(played.position().state, QStringLiteral("ended"), kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(played.faults(), kFaults, kPatienceMs);
        QTRY_VERIFY_WITH_TIMEOUT(played.isSettled(), kPatienceMs);
        reference = played.shown();
    }
    ReplayWindow moved("1");
    QTRY_COMPARE_WITH_TIMEOUT(moved.position().state, QStringLiteral("playing"), kPatienceMs);
    moved.find<QSlider>("replayPlace")->setValue(1000);
    QTRY_COMPARE_WITH_TIMEOUT(moved.position().state, QStringLiteral("ended"), kPatienceMs);
    QTRY_COMPARE_WITH_TIMEOUT(moved.shown(), reference, kPatienceMs);
    QVERIFY(moved.find<QLabel>("replayTime")->text().contains(QLatin1String("End of the recording")));
}

// Unplugged for a second: the window hears all that came before and behind it, and that the line was gone.
void TestReplay::aLossIsShown()
{
    constexpr qint64 ms = 1'000'000;
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("loss.pcapng")));
    QByteArray bytes = session::encodeStart(QStringLiteral("test"), {QStringLiteral("p")});
    const auto add = [&bytes](qint64 at, session::Direction direction, const QByteArray &data, const char *note) {
        session::appendPacket(bytes,
                              {at * ms, direction, data, *note ? QStringList(QLatin1String(note)) : QStringList(), 0});
    };
    const auto fault = [](char id) {
        return protocol::encodeFrame(protocol::ModuleId::Fccu, 2, QByteArray(1, id) + QByteArray(4, '\0'));
    };
    add(0, session::Direction::None, {}, "opened p");
    add(1000, session::Direction::Received, fault(47), "");
    add(1500, session::Direction::None, {}, "lost: no such device");
    add(2500, session::Direction::None, {}, "opened p");
    add(2501, session::Direction::Received, fault(28), ""); // before the window can have opened it
    add(3000, session::Direction::None, {}, "closed");
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    file.close();
    ReplayWindow bench("1", file.fileName());
    QStringList told;
    connect(&lineTraffic(), &LineTraffic::lost, this, [&] { told.append(QStringLiteral("lost")); });
    connect(&lineTraffic(), &LineTraffic::opened, this, [&] { told.append(QStringLiteral("opened")); });
    connect(&lineTraffic(), &LineTraffic::closed, this, [&] { told.append(QStringLiteral("closed")); });
    connect(&lineTraffic(), &LineTraffic::received, this, [&] { told.append(QStringLiteral("report")); });
    QTRY_COMPARE_WITH_TIMEOUT(bench.faults(), 2, kPatienceMs);
    QTRY_COMPARE_WITH_TIMEOUT(bench.position().state, QStringLiteral("ended"), kPatienceMs);
    QCOMPARE(told, QStringList({"report", "lost", "opened", "report"}));
    lineTraffic().disconnect(this);
}

QTEST_MAIN(TestReplay)
#include "tst_replay.moc"
