// SPDX-License-Identifier: MIT
// The line under the window: commands out, frames in, waits, a board that goes away.
#include "link/commandchannel.h"
#include "link/serialline.h"
#include "support/boxanswerer.h"
#include "support/fixtures.h"

#include <QElapsedTimer>
#include <QAction>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTabWidget>
#include <QTest>

class TestLine : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        if (!m_bench) {
            m_bench = std::make_unique<WindowFixture>();
            QTRY_VERIFY(m_bench->line().received().endsWith("get 0\r\n"));
        }
        m_bench->line().clear();
    }

    void commandsGoOutAsLines_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("plain") << "get 1" << QByteArray("get 1\r\n");
        QTest::newRow("empty") << "" << QByteArray("\r\n");
        QTest::newRow("latin") << QString::fromUtf8("µ€") << QByteArray("\xB5?\r\n");
    }

    void commandsGoOutAsLines()
    {
        QFETCH(QString, command);
        sendCommand(command);
        QFETCH(QByteArray, bytes);
        QTRY_COMPARE(m_bench->line().received(), bytes);
    }

    void menuAndTabsAsk_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("page");
        QTest::addColumn<QString>("commands");
        QTest::newRow("functional") << "actionFunctional_Reset" << -1 << "inject 1|";
        QTest::newRow("destructive") << "actionDestructive_Reset" << -1 << "inject 2|";
        QTest::newRow("status") << "actionGet_Status" << -1 << "get 1|get 9|get 10|get 0|";
        const char *pages[] = {"get 11|", "get 5|", "",       "", "get 7|",
                               "get 10|", "get 6|", "get 2|", "", "get 3|get 4|"};
        for (int i = 0; i < 10; ++i)
            QTest::addRow("page %d", (i + 1) % 10) << "" << (i + 1) % 10 << pages[i];
    }

    void menuAndTabsAsk()
    {
        QFETCH(QString, action);
        QFETCH(int, page);
        QFETCH(QString, commands);
        auto *pages = m_bench->find<QTabWidget>("tabWidget_safety");
        pages->setCurrentIndex(page == 4 ? 3 : 4); // neither asks for anything
        if (page >= 0)
            pages->setCurrentIndex(page);
        else
            m_bench->window().findChild<QAction *>(action)->trigger();
        sendCommand(QStringLiteral("end"));
        QTRY_VERIFY(m_bench->line().received().endsWith("end\r\n"));
        QCOMPARE(m_bench->sent(), commands + QStringLiteral("end|"));
    }

    // The frame split anywhere arrives once, also while a handler waits.
    void framesReachTheirDecoder()
    {
        const QByteArray mode = QByteArray::fromHex("A5C3 0000 01 01 0001 07 0000 D4B2");
        for (int cut = 1; cut < mode.size(); ++cut) {
            m_bench->find<QLineEdit>("lineEdit_sysworkmode")->clear();
            m_bench->line().write(mode.left(cut));
            QTest::qWait(1);
            m_bench->line().write(mode.mid(cut));
            QTRY_COMPARE(m_bench->text("lineEdit_sysworkmode"), QStringLiteral("RUN3"));
        }
        m_bench->line().write(QByteArray::fromHex("A5C3 0000 01 01 0001 03 0000 D4B2"));
        delayMs(120);
        QCOMPARE(m_bench->text("lineEdit_sysworkmode"), QStringLiteral("DRUN"));
        m_bench->line().write(QByteArray::fromHex("A5C3 0000 01 04 0008 40200000 07E4 0C 1F 0000 D4B2"));
        QTRY_COMPARE(m_bench->text("lineEdit_firewareVision"), QStringLiteral("Version:2.50  Release time:2020/12/31"));
    }

    void aClosedPortLosesCommandsSilently()
    {
        BoxAnswerer answers;
        m_bench->window().Serialport_close();
        m_bench->window().Serialport_close();
        QVERIFY2(m_bench->portState().endsWith(" - closed"), qPrintable(m_bench->portState()));
        m_bench->line().clear();
        sendCommand(QStringLiteral("get 1"));
        m_bench->window().Serialport_open();
        sendCommand(QStringLiteral("end"));
        QTRY_COMPARE(m_bench->line().received(), QByteArray("end\r\n"));
        QCOMPARE(answers.seen(), QStringList());
    }

    void aBoardThatGoesAwayIsLeftAlone()
    {
        BoxAnswerer answers;
        QSignalSpy errors(gSerialPort, &QSerialPort::errorOccurred);
        m_bench->line().write(QByteArray::fromHex("A5C3 0000 01 01"));
        m_bench->line().hangUp();
        QTRY_VERIFY(!gSerialPort->isOpen());
        const int reports = errors.size();
        QTest::qWait(50);
        QCOMPARE(errors.size(), reports);
        QVERIFY(reports <= 3);
        QCOMPARE(answers.seen(), QStringList());
        QVERIFY2(m_bench->portState().contains("connection lost"), qPrintable(m_bench->portState()));

        RawLine back;
        gPortName = back.tty();
        m_bench->window().Serialport_open();
        back.write(QByteArray::fromHex("A5C3 0000 01 01 0001 08 0000 D4B2"));
        QTRY_COMPARE(m_bench->text("lineEdit_sysworkmode"), QStringLiteral("HALT0"));
        m_bench->window().Serialport_close();
        m_bench.reset(); // its line is gone
    }

private:
    std::unique_ptr<WindowFixture> m_bench;
};

QTEST_MAIN(TestLine)
#include "tst_line.moc"
