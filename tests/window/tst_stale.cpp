// SPDX-License-Identifier: MIT
// A window whose contents are out of date says so, and recovers by itself.
#include "app/linemonitor.h"
#include "link/commandchannel.h"
#include "link/linetraffic.h"
#include "link/serialline.h"
#include "link/serialports.h"
#include "support/boxanswerer.h"
#include "presenter/driver.h"
#include "support/fixtures.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

class TestStale : public QObject
{
    Q_OBJECT

private:
    static bool isBanded(RealWindow &bench) { return bench.find<QToolBar>("band")->isVisible(); }
    static bool isVeiled(RealWindow &bench) { return bench.find<QWidget>("veil")->isVisible(); }
    // What every widget of the pages says, and its style.
    static QStringList appearance(RealWindow &bench)
    {
        QStringList result;
        const auto widgets = bench.find<QWidget>("centralWidget")->findChildren<QWidget *>();
        for (const QWidget *widget : widgets)
            result.append(driver::textOf(widget) + widget->styleSheet());
        return result;
    }
    static QString lampText(RealWindow &bench) { return bench.find<QToolButton>("toolButton_line")->text(); }

private slots:
    void init() { gPortName.clear(); }
    void cleanup() { closeLine(*gSerialPort); }

    void nothingShownYetIsNotStale()
    {
        WindowFixture bench;
        QVERIFY(!isBanded(bench));
        QTRY_VERIFY(isBanded(bench)); // the board does not answer
        QVERIFY(!isVeiled(bench));
        bench.window().Serialport_close();
        QVERIFY(isBanded(bench) && !isVeiled(bench));
    }

    void theFirstFrameLiftsTheVeil()
    {
        const QByteArray mode = QByteArray::fromHex("A5C3 0000 01 01 0001 04 0000 D4B2");
        WindowFixture bench;
        QTRY_VERIFY(bench.line().received().endsWith("get 0\r\n"));
        bench.line().write(mode);
        QTRY_COMPARE(bench.text("lineEdit_sysworkmode"), QStringLiteral("RUN0"));
        QVERIFY(!isBanded(bench) && !isVeiled(bench));
        const QStringList before = appearance(bench);

        bench.window().Serialport_close();
        QVERIFY(isBanded(bench) && isVeiled(bench));
        auto *central = bench.find<QWidget>("centralWidget");
        QTRY_COMPARE(bench.find<QWidget>("veil")->geometry(), central->rect());
        QCOMPARE(appearance(bench), before);
        QVERIFY(bench.find<QToolBar>("band")->accessibleName().startsWith(QStringLiteral("Line closed since ")));
        QVERIFY(bench.find<QToolBar>("band")->accessibleDescription().contains(QStringLiteral("Serialport > open")));

        bench.window().Serialport_open();
        QVERIFY(isBanded(bench) && isVeiled(bench)); // the contents are still old
        bench.line().write("no frame");
        QTRY_VERIFY(lampText(bench).startsWith(QStringLiteral("receiving")));
        QVERIFY(isBanded(bench) && isVeiled(bench));
        sendCommand(QStringLiteral("get 1"));
        QTRY_VERIFY(lampText(bench).startsWith(QStringLiteral("no answer for ")));
        bench.line().write(mode);
        QTRY_VERIFY(!isVeiled(bench));
        QVERIFY(!isBanded(bench));
    }

    void clicksAndFocusGoThroughTheVeil()
    {
        WindowFixture bench;
        bench.line().write(QByteArray::fromHex("A5C3 0000 01 01 0001 04 0000 D4B2"));
        QTRY_COMPARE(bench.text("lineEdit_sysworkmode"), QStringLiteral("RUN0"));
        auto *button = bench.find<QPushButton>("pushButton_xbicUpdate");
        bench.turnTo(button);
        bench.window().Serialport_close();
        QTRY_VERIFY(isVeiled(bench));
        QSignalSpy pressed(button, &QPushButton::clicked);
        auto *central = bench.find<QWidget>("centralWidget");
        const QPoint place = button->mapTo(central, button->rect().center());
        QCOMPARE(central->childAt(place), static_cast<QWidget *>(button));
        QTest::mouseClick(bench.window().windowHandle(), Qt::LeftButton, {},
                          button->mapTo(&bench.window(), button->rect().center()));
        QCOMPARE(pressed.size(), 1);
        button->setFocus();
        QCOMPARE(bench.window().focusWidget(), static_cast<QWidget *>(button));
        QCOMPARE(bench.find<QWidget>("veil")->focusPolicy(), Qt::NoFocus);
    }

    void theConsoleHasTheLine()
    {
        BoardFixture bench;
        QTRY_COMPARE(bench.text("lineEdit_sysworkmode"), QStringLiteral("RUN0"));
        QTimer::singleShot(0, &bench, [&] {
            QWidget *console = QApplication::activeModalWidget();
            QVERIFY(console);
            QVERIFY(lampText(bench).startsWith(QStringLiteral("the console has it")));
            QVERIFY(isBanded(bench) && isVeiled(bench));
            console->close();
        });
        bench.window().console_mode();
        QTRY_VERIFY(lampText(bench).startsWith(QStringLiteral("receiving")));
        QTRY_VERIFY(!isBanded(bench) && !isVeiled(bench));
    }

    // The board that is unplugged and plugged in again, on another terminal.
    void isBackByItself()
    {
        const QTemporaryDir folder;
        simulator::VirtualBoard::Options options;
        options.link = folder.filePath(QStringLiteral("board"));
        BoardFixture bench(options);
        QTRY_COMPARE(bench.text("lineEdit_sysworkmode"), QStringLiteral("RUN0"));
        bench.find<QTabWidget>("tabWidget_safety")->setCurrentIndex(1);
        BoxAnswerer answers;
        QTRY_VERIFY(bench.commands.contains(QStringLiteral("get 11")));
        bench.commands.clear();
        bench.virtualBoard().cable().setFaults({.hangUpMs = 1});
        QTRY_VERIFY(!gSerialPort->isOpen());
        bench.virtualBoard().cable().setFaults({});
        QCOMPARE(lampText(bench).section(" virtual", 0, 0), QStringLiteral("lost, waiting for ") + options.link + ',');
        QVERIFY(isBanded(bench) && isVeiled(bench));
        QTRY_VERIFY(gSerialPort->isOpen());
        QTRY_COMPARE(bench.commands.join('|'), QStringLiteral("get 11|get 1|get 9|get 10|get 0"));
        QTRY_VERIFY(!isBanded(bench) && !isVeiled(bench));
        QCOMPARE(answers.seen(), QStringList());
    }

    // "close" is the user's will, and a loss that follows an attempt to open is none.
    void staysClosedWhereItIsWanted()
    {
        const QTemporaryDir folder;
        simulator::VirtualBoard::Options options;
        options.link = folder.filePath(QStringLiteral("board"));
        BoardFixture bench(options);
        bench.virtualBoard().cable().setFaults({.hangUpMs = 1});
        QTRY_VERIFY(!gSerialPort->isOpen());
        bench.virtualBoard().cable().setFaults({});
        QSignalSpy opened(&lineTraffic(), &LineTraffic::opened);
        bench.window().Serialport_close();
        QVERIFY(lampText(bench).startsWith(QStringLiteral("closed")));
        QTRY_VERIFY(QFile::exists(options.link));
        // Longer than the time between two looks.
        QVERIFY(!QTest::qWaitFor([&opened] { return !opened.isEmpty(); }, 1500));
    }

    void anotherNameOfTheSameAdapterIsFound()
    {
        auto bench = std::make_unique<WindowFixture>();
        RawLine other;
        QTemporaryDir folder;
        const QString first = folder.filePath(QStringLiteral("ttyUSB0")), second = folder.filePath("ttyUSB1");
        QVERIFY(QFile::link(bench->line().tty(), first));
        PortInfo adapter{first, "Adapter", {}, "A", {}, 1, 2};
        setAvailablePorts([&] { return QList{adapter}; });
        gPortName = first;
        bench->window().Serialport_open();
        QVERIFY(lampText(*bench).contains(QStringLiteral("virtual board")));
        QVERIFY(QFile::link(other.tty(), second));
        adapter.name = second;
        bench->line().hangUp();
        QTRY_COMPARE(gPortName, second);
        QTRY_VERIFY(other.received().endsWith("get 0\r\n"));
        QVERIFY(gSerialPort->isOpen());
    }
};

QTEST_MAIN(TestStale)
#include "tst_stale.moc"
