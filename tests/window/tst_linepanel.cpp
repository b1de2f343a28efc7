// SPDX-License-Identifier: MIT
// The state of the line and its board, in lamp, panel and status bar.
#include "app/linemonitor.h"
#include "link/linetraffic.h"
#include "link/portidentity.h"
#include "link/serialline.h"
#include "link/serialports.h"
#include "support/boxanswerer.h"
#include "support/fixtures.h"

#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

namespace {

using State = LineMonitor::State;
using namespace std::chrono_literals;

constexpr auto kShort = 80ms;

QByteArray frame(int module, const QByteArray &payload)
{
    return protocol::encodeFrame(static_cast<protocol::ModuleId>(module), 1, payload);
}

PortInfo port(const char *name, quint16 vendor = 0, quint16 product = 0, const char *serialNumber = "")
{
    PortInfo info;
    info.name = name;
    info.vendor = vendor;
    info.product = product;
    info.serialNumber = serialNumber;
    return info;
}

} // namespace

Q_DECLARE_METATYPE(QList<PortInfo>)

class TestLinePanel : public QObject
{
    Q_OBJECT

private:
    static QString answer(WindowFixture &bench)
    {
        bench.line().write(frame(1, "\x04"));
        return bench.text("lineEdit_sysworkmode");
    }

    static bool lampSays(RealWindow &bench, const QString &word)
    {
        auto *lamp = bench.find<QToolButton>("toolButton_line");
        return QTest::qWaitFor([&] { return lamp->accessibleDescription().startsWith(word); });
    }

private slots:
    void init() { gPortName.clear(); }
    void cleanup() { closeLine(*gSerialPort); }

    void silenceIsWhatFollowsARequest()
    {
        LineTraffic &line = lineTraffic();
        LineMonitor monitor(kShort);
        QCOMPARE(monitor.state(), State::Closed);
        RawLine raw;
        QVERIFY(openLine(*gSerialPort, raw.tty()));
        QCOMPARE(monitor.state(), State::Quiet);
        emit line.sent("xbic 1 1\r\nge");
        QVERIFY(!QTest::qWaitFor([&monitor] { return monitor.state() != State::Quiet; }, 200));
        emit line.sent("t 3\r\n");
        QTRY_COMPARE(monitor.state(), State::Silent);
        QVERIFY(!monitor.isStale()); // nothing was shown before
        emit line.received("rubbish");
        QCOMPARE(monitor.state(), State::Receiving);
        QVERIFY(!monitor.isCurrent());
        emit line.received(frame(2, "x"));
        QVERIFY(monitor.isCurrent());
        QTRY_COMPARE(monitor.state(), State::Quiet);
        QVERIFY(monitor.isCurrent());
        emit line.sent("get 4\r\n");
        QTRY_COMPARE(monitor.state(), State::Silent);
        QVERIFY(monitor.isStale());
        QVERIFY2(monitor.word().startsWith(QStringLiteral("no answer for ")), qPrintable(monitor.word()));
        closeLine(*gSerialPort);
        QCOMPARE(monitor.word(), QStringLiteral("closed"));
    }

    void whatPassesIsCounted()
    {
        LineTraffic &line = lineTraffic();
        LineMonitor monitor;
        QSignalSpy messages(&monitor, &LineMonitor::messagesArrived);
        RawLine raw;
        QVERIFY(openLine(*gSerialPort, raw.tty()));
        const QByteArray whole = "noise" + frame(2, "one") + frame(2, "two") + frame(0, QByteArray("words\0x", 7));
        emit line.received(whole.left(20));
        emit line.received(whole.mid(20));
        emit line.received(frame(200, "no such module") + frame(16, "cut").left(9));
        emit line.sent("get 3\r\nget 4\r\n");
        const LineCounts &counts = monitor.counts();
        QCOMPARE(counts.frames, 4u);
        QCOMPARE(counts.byModule[2], 2u);
        QCOMPARE(counts.byModule[0], 1u);
        QCOMPARE(counts.bytesIn, quint64(whole.size() + 14 + 12 + 9));
        QCOMPARE(counts.bytesOut, 14u);
        QCOMPARE(counts.commands, 2u);
        QCOMPARE(monitor.damagedBytes(), 5u); // bytes that may still become a frame are not damaged
        QCOMPARE(monitor.lastModule(), 200);
        QCOMPARE(messages.size(), 1);
        QCOMPARE(messages.constFirst().constFirst().toStringList(), QStringList("words"));
        openLine(*gSerialPort, raw.tty());
        QCOMPARE(monitor.damagedBytes(), 14u);
    }

    void theLampSaysHowTheLineStands()
    {
        WindowFixture bench;
        QVERIFY(lampSays(bench, "no answer for 2 s, " + bench.line().tty() + " (virtual board)"));
        QCOMPARE(answer(bench), QString());
        QVERIFY(lampSays(bench, "receiving, "));
        QVERIFY(lampSays(bench, "open, quiet"));
        bench.window().Serialport_close();
        QVERIFY(lampSays(bench, "closed"));
        bench.window().Serialport_open();
        QVERIFY(lampSays(bench, "open, quiet"));
        bench.line().hangUp();
        QVERIFY(lampSays(bench, "lost, " + bench.line().tty()));
    }

    // Another port at any time, which is then asked as at the start.
    void thePanelChoosesAPort()
    {
        WindowFixture bench;
        RawLine other;
        setAvailablePorts([&] { return QList{port(qPrintable(bench.line().tty())), port(qPrintable(other.tty()))}; });
        QTest::mouseClick(bench.find<QToolButton>("toolButton_line"), Qt::LeftButton);
        auto *panel = bench.find<QWidget>("linePanel");
        QVERIFY(panel->isVisible());
        auto *ports = panel->findChild<QListWidget *>();
        QCOMPARE(ports->count(), 2);
        QCOMPARE(ports->currentRow(), 0);
        ports->setCurrentRow(1);
        QTest::mouseClick(panel->findChild<QPushButton *>(), Qt::LeftButton);
        QVERIFY(!panel->isVisible());
        QTRY_COMPARE(other.received(), QByteArray("get 3\r\nget 4\r\nget 1\r\nget 9\r\nget 10\r\nget 0\r\n"));
        QCOMPARE(gPortName, other.tty());
        other.write(frame(1, "\x04"));
        QTRY_COMPARE(bench.text("lineEdit_sysworkmode"), QStringLiteral("RUN0"));
    }

    void thePanelKeepsUpWithTheLine()
    {
        WindowFixture bench;
        bench.find<QToolButton>("toolButton_line")->click();
        auto *panel = bench.find<QWidget>("linePanel");
        const auto says = [panel](const char *name, const QString &text) {
            const auto labels = panel->findChildren<QLabel *>();
            return std::any_of(labels.begin(), labels.end(), [&](const QLabel *label) {
                return label->accessibleName() == QLatin1String(name) && label->accessibleDescription().contains(text);
            });
        };
        QVERIFY(says("Last answer", "none yet"));
        bench.line().write(frame(2, "x") + frame(2, "y"));
        QTRY_VERIFY(says("Frames of CMU", "2"));
        QVERIFY(says("Received", "26 bytes in 2 frames"));
        QVERIFY(says("Last answer", "CMU"));
        setAvailablePorts([] { return QList<PortInfo>(); });
        QTRY_VERIFY(panel->findChild<QListWidget *>()->item(0)->text().startsWith("No serial port was found"));
        QVERIFY(!panel->findChild<QPushButton *>()->isEnabled());
    }

    void theBoardsWordsAreShown()
    {
        WindowFixture bench;
        auto *label = bench.find<QLabel>("boardMessage");
        bench.line().write(frame(0, "CMU0 is off:\r\n the fault\x1B[K goes <b>unnoticed</b>"));
        QTRY_VERIFY(label->text().endsWith(QStringLiteral("  Board: CMU0 is off: the fault goes <b>unnoticed</b>")));
        QCOMPARE(label->textFormat(), Qt::PlainText);
        QVERIFY(label->toolTip().contains(QStringLiteral("&lt;b&gt;")));
        for (int i = 1; i <= 21; ++i)
            bench.line().write(frame(0, "message " + QByteArray::number(i) + '.'));
        QTRY_VERIFY(label->text().endsWith(QStringLiteral("message 21.")));
        QVERIFY(label->toolTip().contains(QStringLiteral("message 2.")));
        QVERIFY(!label->toolTip().contains(QStringLiteral("message 1.")));
        bench.line().write(frame(0, "\r\n") + frame(1, "\x04"));
        QTRY_COMPARE(bench.text("lineEdit_sysworkmode"), QStringLiteral("RUN0"));
        QVERIFY(label->text().endsWith(QStringLiteral("message 21.")));
    }

    void anAdapterIsKnownAgain_data()
    {
        QTest::addColumn<QList<PortInfo>>("before");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QList<PortInfo>>("after");
        QTest::addColumn<QString>("nameAfter");
        using Ports = QList<PortInfo>;
        const PortInfo modem = port("ttyS0");
        const Ports twins = {port("ttyUSB0", 1, 2, "A"), port("ttyUSB1", 1, 2, "A")};
        const auto row = [](const char *title, const Ports &before, const char *name, const Ports &after,
                            const char *now) {
            QTest::newRow(title) << before << QString(name) << after << QString(now);
        };
        const Ports first = {port("ttyUSB0", 1, 2, "A")}, plain = {port("ttyUSB0", 1, 2)};
        row("same name", {modem, first[0]}, "ttyUSB0", {modem, first[0]}, "ttyUSB0");
        row("another name", first, "ttyUSB0", {port("ttyUSB0", 1, 2, "B"), port("ttyUSB1", 1, 2, "A")}, "ttyUSB1");
        row("another adapter", first, "ttyUSB0", {port("ttyUSB0", 1, 3, "A")}, "");
        row("second of two ports", twins, "ttyUSB1", {port("ttyUSB2", 1, 2, "A"), port("ttyUSB3", 1, 2, "A")},
            "ttyUSB3");
        row("its second port is not there yet", twins, "ttyUSB1", {port("ttyUSB2", 1, 2, "A")}, "");
        row("no number, another name", plain, "ttyUSB0", {modem, port("ttyUSB1", 1, 2)}, "ttyUSB1");
        row("no number, two of the kind", plain, "ttyUSB0", {port("ttyUSB1", 1, 2), port("ttyUSB2", 1, 2)}, "");
        row("no identifiers", {modem}, "ttyS0", {modem, port("ttyS1")}, "ttyS0");
        row("no identifiers, gone", {modem}, "ttyS0", {port("ttyS1")}, "");
        row("pseudo-terminal", {port("/dev/pts/7")}, "/dev/pts/7", {port("/dev/pts/7")}, "");
    }

    void anAdapterIsKnownAgain()
    {
        QFETCH(QList<PortInfo>, before);
        QFETCH(QString, name);
        QFETCH(QList<PortInfo>, after);
        setAvailablePorts([before] { return before; });
        const PortIdentity identity = identityOf(name);
        setAvailablePorts([after] { return after; });
        QTEST(nameNow(identity), "nameAfter");
    }

    // A link that was left behind may lead to a terminal that is somebody else's by now.
    void aLinkHasToBeMadeAnew()
    {
        setAvailablePortNames([] { return QStringList(); });
        const QTemporaryDir folder;
        const QString link = folder.filePath(QStringLiteral("board"));
        QVERIFY(QFile::link(QStringLiteral("/dev/null"), link));
        const PortIdentity identity = identityOf(link);
        QVERIFY(canComeBack(link));
        QCOMPARE(nameNow(identity), QString());
        QVERIFY(QFile::remove(link));
        QCOMPARE(nameNow(identity), QString());
        QVERIFY(QFile::link(QStringLiteral("/dev/null"), link));
        QCOMPARE(nameNow(identity), link);
    }
};

QTEST_MAIN(TestLinePanel)
#include "tst_linepanel.moc"
