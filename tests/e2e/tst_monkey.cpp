// SPDX-License-Identifier: MIT
// Anything can run inside a wait: a seeded monkey presses buttons, turns pages, types, opens the console and sends frames
// while handlers wait; and the program may end there.
#include "support/boxanswerer.h"
#include "support/fakeclock.h"
#include "support/monkey.h"
#include "support/fixtures.h"

#include "link/serialline.h"
#include "protocol/frame.h"

#include <QScopeGuard>
#include <QTest>
#include <QTimer>

namespace {

// Every kind of wait; long ones first.
using Wait = void (*)(MainWindow &window);

constexpr Wait waits[] = {
    [](MainWindow &window) { window.on_pushButton_cmu_fault4_clicked(); },
    [](MainWindow &window) { // both rows of self-tests
        window.BISTDataFrameUnpack(1, 26, QByteArray(26, '\xFF'));
        window.resetUpdate();
    },
    [](MainWindow &window) { window.modifycmuFreq(4); },
    [](MainWindow &window) { window.Get_Status(); },
    [](MainWindow &window) { window.CSEDataFrameUnpack(1, 1, QByteArray("\x02")); },
    [](MainWindow &window) { window.on_pushButton_CRC_set_clicked(); },
    [](MainWindow &window) { window.on_pushButton_intcm_config_clicked(); },
    [](MainWindow &window) { window.on_pushButton_memu_faultstatus_clear_clicked(); },
    [](MainWindow &window) { window.on_tabWidget_safety_currentChanged(0); },
    [](MainWindow &window) { window.GUI_About(); },
    [](MainWindow &window) { window.console_mode(); },
};
constexpr int kWaits = static_cast<int>(std::size(waits));
constexpr int kLongWaits = 2;
constexpr int kWithoutModal = kWaits - 2; // box and console

} // namespace

class TestMonkey : public QObject
{
    Q_OBJECT

private:
    void sendSomething(BoardFixture &bench, Monkey &monkey)
    {
        QByteArray payload;
        for (int n = monkey.below(40); n > 0; --n)
            payload.append(char(monkey.below(256)));
        QByteArray frame =
            protocol::encodeFrame(static_cast<protocol::ModuleId>(monkey.below(19)), quint8(monkey.below(6)), payload);
        if (monkey.below(4) == 0)
            frame[monkey.below(int(frame.size()))] = char(monkey.below(256));
        bench.virtualBoard().line().send(frame);
    }

    // Starts these waits, each inside the one before, and does the last thing inside them all.
    void startInside(MainWindow &window, int first, int behind, const std::function<void()> &last)
    {
        if (first == behind)
            return last();
        QTimer::singleShot(15, &window,
                           [this, &window, first, behind, last] { startInside(window, first + 1, behind, last); });
        waits[first](window);
        ++m_returned;
    }

private slots:
    void buttonsAndFramesInsideWaits()
    {
        BoardFixture bench;
        BoxAnswerer answers;
        Monkey monkey(bench.window(), 5, kDeepest);
        for (const char *action : {"actionclose", "actionopen", "actionabout"})
            monkey.addMenu(1, action);
        monkey.addConsole(1, 150);
        monkey.add(5, [&] { sendSomething(bench, monkey); });
        monkey.start(25, kActions);
        QTRY_COMPARE_WITH_TIMEOUT(monkey.actions(), kActions, 60000);
        QTRY_VERIFY_WITH_TIMEOUT(monkey.isIdle(), 30000);
        QVERIFY(monkey.deepest() > 2);
        if (bench.board().isHeld())
            bench.board().powerCycle();
        bench.window().Serialport_open();
        bench.find<QLineEdit>("lineEdit_sysworkmode")->clear();
        QTRY_VERIFY(gSerialPort->isOpen());
        QTRY_VERIFY_WITH_TIMEOUT(
            [&] {
                bench.window().Get_Status();
                return bench.text("lineEdit_sysworkmode") == "RUN0";
            }(),
            20000);
    }

    void theProgramEndsInsideWaits_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("behind");
        QTest::addColumn<bool>("closes");
        QTest::newRow("all of them, its window is closed") << 0 << kWithoutModal << true;
        QTest::newRow("a box is open, its window is closed") << kLongWaits << kWithoutModal + 1 << true;
        QTest::newRow("the console is open") << kLongWaits << kWaits << false;
    }

    // All of them return, the last started first, and only then does the window go.
    void theProgramEndsInsideWaits()
    {
        QFETCH(int, first);
        QFETCH(int, behind);
        QFETCH(bool, closes);
        fakeclock::setSpeed(50); // nothing here has a time-out
        const auto slowDown = qScopeGuard([] { fakeclock::setSpeed(10); });
        BoxAnswerer answers;
        answers.leaveOpen();
        auto bench = std::make_unique<WindowFixture>();
        m_returned = 0;
        QTimer::singleShot(0, this, [&] {
            startInside(bench->window(), first, behind, [&] {
                if (closes)
                    bench->window().close();
                else
                    QApplication::quit();
            });
        });
        QCOMPARE(QApplication::exec(), 0);
        QCOMPARE(m_returned, behind - first);
        QVERIFY(gSerialPort->isOpen());
        bench.reset();
        QApplication::processEvents();
    }

private:
    // Waits inside one another end one after the other: these decide how long this takes.
    static constexpr int kActions = 60;
    static constexpr int kDeepest = 3;

    int m_returned = 0;
};

QTEST_MAIN(TestMonkey)
#include "tst_monkey.moc"
