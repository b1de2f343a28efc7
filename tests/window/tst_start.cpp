// SPDX-License-Identifier: MIT
// Start-up: which port, which questions, which requests.
#include "app/startup.h"
#include "link/serialline.h"
#include "link/serialports.h"
#include "support/boxanswerer.h"
#include "support/fixtures.h"

#include <QAction>
#include <QTest>
#include <QTimer>

class TestStart : public QObject
{
    Q_OBJECT

private slots:
    void init() { gPortName.clear(); }
    void cleanup() { closeLine(*gSerialPort); }

    void onePortIsOpenedAndAsked()
    {
        BoxAnswerer answers;
        WindowFixture bench;
        QTRY_COMPARE(bench.line().received(), QByteArray("get 3\r\nget 4\r\nget 1\r\nget 9\r\nget 10\r\nget 0\r\n"));
        QCOMPARE(answers.seen(), QStringList());
        QCOMPARE(gPortName, bench.line().tty());
        QCOMPARE(gSerialPort->baudRate(), 1958400);
        QVERIFY2(bench.portState().contains(QStringLiteral(" - open")), qPrintable(bench.portState()));
    }

    void twoPortsAreAChoice()
    {
        RawLine first, second;
        setAvailablePortNames([&] { return QStringList{first.tty(), second.tty()}; });
        BoxAnswerer answers;
        answers.setCaption(second.tty());
        MainWindow window;
        QCOMPARE(answers.seen(),
                 QStringList(QStringLiteral("|Please select|Please select serialport name which used by GUI.")));
        QCOMPARE(gPortName, second.tty());
        QVERIFY(gSerialPort->isOpen());
        QTRY_VERIFY(second.received().endsWith("get 0\r\n"));
        QVERIFY(first.received().isEmpty());
    }

    void aDismissedChoiceCanBeMadeLater()
    {
        RawLine first, second;
        setAvailablePortNames([&] { return QStringList{first.tty(), second.tty()}; });
        BoxAnswerer answers;
        answers.setCaption(QString());
        MainWindow window;
        QCOMPARE(answers.seen().size(), 1);
        QVERIFY(!gSerialPort->isOpen());
        QVERIFY(!window.startRefused());

        answers.setCaption(first.tty());
        window.findChild<QAction *>(QStringLiteral("actionopen"))->trigger();
        QCOMPARE(answers.seen().size(), 2);
        QVERIFY(gSerialPort->isOpen());
    }

    void withoutAPortTheUserDecides_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<bool>("refused");
        QTest::addColumn<QStringList>("boxes");
        const QString remedy =
            QStringLiteral("|No serial port was found: plug the board in, or start the demonstration "
                           "with a virtual board");
        const QString question =
            QStringLiteral("Please check|Can not open serial port. Are you continue?") + remedy + '.';
        const QString warning = QStringLiteral("Warning|Serialport can not open, please check.") + remedy;
        QTest::newRow("yes") << int(QMessageBox::Yes) << false << QStringList{question, warning};
        QTest::newRow("no") << int(QMessageBox::No) << true << QStringList{question};
    }

    void withoutAPortTheUserDecides()
    {
        QFETCH(int, button);
        setAvailablePortNames([] { return QStringList(); });
        BoxAnswerer answers(static_cast<QMessageBox::StandardButton>(button));
        MainWindow window;
        QTEST(answers.seen(), "boxes");
        QTEST(window.startRefused(), "refused");
        QVERIFY(!gSerialPort->isOpen());
        if (window.startRefused())
            return;
        QVERIFY2(driver::portState(window).contains("closed: No serial port was found: plug the board in"),
                 qPrintable(driver::portState(window)));

        RawLine late;
        setAvailablePortNames([&] { return QStringList{late.tty()}; });
        window.findChild<QAction *>(QStringLiteral("actionopen"))->trigger();
        QVERIFY(gSerialPort->isOpen());
    }

    void aPortThatFailsIsExplained_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        QTest::newRow("missing") << "/dev/no-such-board"
                                 << "no such device";
        QTest::newRow("not a terminal") << "/dev/null"
                                        << "";
    }

    void aPortThatFailsIsExplained()
    {
        QFETCH(QString, name);
        QFETCH(QString, reason);
        setAvailablePortNames([name] { return QStringList{name}; });
        BoxAnswerer answers;
        MainWindow window;
        QCOMPARE(answers.seen().size(), 1);
        const QString box = QStringLiteral("Warning|Serialport can not open, please check.|") + reason;
        QVERIFY2(answers.seen().constFirst().startsWith(box), qPrintable(answers.seen().constFirst()));
        QVERIFY2(driver::portState(window).contains(name + QStringLiteral(" - closed: ") + reason),
                 qPrintable(driver::portState(window)));
    }

    // The box before the window is shown is the last window closed then: that ends nothing.
    void aRefusedPortAtStartDoesNotEndTheProgram()
    {
        setAvailablePortNames([] { return QStringList{"/dev/no-such-board"}; });
        BoxAnswerer answers;
        const int code = runWorkbench(*qApp, [](MainWindow &window) {
            QTimer::singleShot(0, &window, [&window] { QApplication::exit(window.isVisible() ? 7 : 1); });
        });
        QCOMPARE(code, 7);
        QCOMPARE(answers.seen().size(), 1);
    }

    void slotsThatNothingCallsLeaveTheWindowWhole()
    {
        WindowFixture bench;
        BoxAnswerer answers(QMessageBox::No);
        bench.window().reOpenSerialPort();
        answers.setButton(QMessageBox::Yes);
        bench.window().NoSP_config();
        QCOMPARE(answers.seen(),
                 (QStringList{QStringLiteral("Please select|Contiue or quit.?"),
                              QStringLiteral("Warning|No Available Serialport is found")}));
        QVERIFY(!bench.text("lineEdit_sysworkmode").isNull());
    }
};

QTEST_MAIN(TestStart)
#include "tst_start.moc"
