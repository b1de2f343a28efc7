// SPDX-License-Identifier: MIT
// Bad weather on the line: noise, losses, stalls, hang-ups, refused ports, frames cut short. The window lives through it
// and shows the next good frame.
#include "support/boxanswerer.h"
#include "support/fixtures.h"

#include "console/consoleform.h"
#include "link/commandchannel.h"
#include "link/serialline.h"
#include "link/serialports.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QSet>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString kCannotOpen = QStringLiteral("Warning|Serialport can not open, please check.");

// While it lives the process has the rights of nobody in particular.
class Nobody
{
public:
    Nobody() : m_wasRoot(geteuid() == 0)
    {
        if (m_wasRoot && setresuid(kNobody, kNobody, 0) != 0)
            qFatal("cannot become nobody");
    }
    ~Nobody()
    {
        if (m_wasRoot && (setresuid(0, 0, 0) != 0 || prctl(PR_SET_DUMPABLE, 1) != 0)) // as it was, for the sanitizers
            qFatal("cannot become root again");
    }

private:
    static constexpr uid_t kNobody = 65534;
    bool m_wasRoot;
};

// Whether this process has the device open, by the system's account.
bool holds(const QString &device)
{
    const QDir open(QStringLiteral("/proc/self/fd"));
    for (const QFileInfo &file : open.entryInfoList(QDir::Files | QDir::System))
        if (file.symLinkTarget().startsWith(device))
            return true;
    return false;
}

consoleForm *console()
{
    return driver::topLevel<consoleForm>();
}

} // namespace

class TestWeather : public QObject
{
    Q_OBJECT

private:
    simulator::VirtualBoard &board() { return m_bench->virtualBoard(); }

    // Asks until the answer is shown: a damaged frame may take the one behind it along.
    bool recovers()
    {
        m_bench->find<QLineEdit>("lineEdit_sysworkmode")->clear();
        return QTest::qWaitFor([this] {
            sendCommand(QStringLiteral("get 1"));
            return m_bench->text("lineEdit_sysworkmode") == QLatin1String("RUN0");
        });
    }

    void hangUp()
    {
        board().cable().setFaults({.hangUpMs = 1});
        QVERIFY(QTest::qWaitFor([this] { return !QFileInfo(board().tty()).isSymLink(); }));
        board().cable().setFaults({});
    }

    void openWhenItIsBack()
    {
        QTRY_VERIFY(QFileInfo(board().tty()).isSymLink());
        m_bench->window().Serialport_open();
        QVERIFY2(gSerialPort->isOpen(), qPrintable(m_bench->portState()));
        QVERIFY(recovers());
    }

    // Does the work when the console stands and its own box, where there is one, has been answered.
    void onceInConsole(const std::function<void()> &work)
    {
        QTimer::singleShot(5, this, [this, work] { console() ? work() : onceInConsole(work); });
    }

private slots:
    void initTestCase()
    {
        simulator::VirtualBoard::Options options;
        options.paced = false;
        options.link = m_folder.filePath("board");
        m_bench = std::make_unique<BoardFixture>(options);
        QVERIFY(recovers());
    }

    void cleanup()
    {
        if (QTest::currentTestFailed())
            gPortName = board().tty();
    }

    void aBadCable_data()
    {
        QTest::addColumn<double>("noise");
        QTest::addColumn<double>("drop");
        QTest::addColumn<double>("duplicate");
        QTest::addColumn<int>("stallMs");
        QTest::newRow("noise") << 0.002 << 0. << 0. << 0;
        QTest::newRow("drop") << 0. << 0.02 << 0. << 0;
        QTest::newRow("duplicate") << 0. << 0. << 0.02 << 0;
        QTest::newRow("stall") << 0. << 0. << 0. << 1;
        QTest::newRow("all") << 0.001 << 0.005 << 0.005 << 1;
    }

    // 400 numbered messages among the reports of all modules: where nothing is damaged all arrive, in turn.
    void aBadCable()
    {
        QFETCH(double, noise);
        QFETCH(double, drop);
        QFETCH(double, duplicate);
        QFETCH(int, stallMs);
        constexpr int count = 400;
        BoxAnswerer answers; // a damaged report may speak of a clock out of its limits
        m_bench->find<QTextEdit>("textBrowser_temp")->clear();
        board().cable().setFaults({noise, drop, duplicate, stallMs, 0});
        QStringList sent;
        for (int i = 0; i < count; ++i) {
            sent.append(QStringLiteral("message %1").arg(i));
            m_bench->board().say(sent.last());
            m_bench->board().execute(QStringLiteral("get %1").arg(i % 12));
            if (i % 10 == 0)
                QTest::qWait(1); // a line has its pauses, in which a stall can begin and end
        }
        QVERIFY(recovers());
        board().cable().setFaults({});
        QVERIFY(recovers());
        const QStringList lines = m_bench->text("textBrowser_temp").split('\n').filter(QRegularExpression("^message"));
        const int intact = (QSet<QString>(lines.begin(), lines.end()) & QSet<QString>(sent.begin(), sent.end())).size();
        if (stallMs > 0 && noise <= 0)
            QCOMPARE(lines, sent);
        else
            QVERIFY2(intact > count / 4 && intact < count, qPrintable(QString::number(intact)));
    }

    // Unplugged while it talks, opened too early, and opened again when it is back.
    void aHangUpIsHealedByOpening()
    {
        BoxAnswerer answers;
        QTimer chatter;
        connect(&chatter, &QTimer::timeout, this, [this] { m_bench->board().say(QString(300, 'x')); });
        chatter.start(0);
        QVERIFY(recovers());
        hangUp();
        QTRY_VERIFY(!gSerialPort->isOpen());
        QVERIFY2(m_bench->portState().contains("connection lost"), qPrintable(m_bench->portState()));
        QCOMPARE(answers.seen(), QStringList());
        m_bench->window().Serialport_open();
        QCOMPARE(answers.seen(), QStringList(kCannotOpen + "|no such device; is the board plugged in?"));
        QVERIFY2(m_bench->portState().contains("no such device"), qPrintable(m_bench->portState()));
        openWhenItIsBack();
    }

    // The console stays open without its line, does nothing, and hands back what is there.
    void aConsoleWithoutItsLineIsInert_data()
    {
        QTest::addColumn<bool>("lostBefore");
        QTest::addColumn<QStringList>("boxes");
        QTest::newRow("lost while it is open") << false << QStringList();
        QTest::newRow("lost before it is opened") << true << QStringList(kCannotOpen);
    }

    void aConsoleWithoutItsLineIsInert()
    {
        QFETCH(bool, lostBefore);
        BoxAnswerer answers;
        if (lostBefore)
            hangUp();
        onceInConsole([&] {
            const auto close = qScopeGuard([] { console()->close(); });
            QVERIFY2(m_bench->portState().contains("the console has it"), qPrintable(m_bench->portState()));
            const QString tty = board().line().tty();
            if (!lostBefore) {
                QTRY_VERIFY(board().line().isConnected());
                QVERIFY(holds(tty));
                hangUp();
            }
            QTRY_VERIFY(!holds(tty)); // or it would report an error at each round of the event loop
            auto *screen = console()->findChild<QTextEdit *>();
            const QString before = screen->toPlainText();
            for (const Qt::Key key : {Qt::Key_A, Qt::Key_Up, Qt::Key_Return})
                QTest::keyClick(screen, key);
            QCOMPARE(screen->toPlainText(), before);
            QVERIFY(console()->isVisible());
        });
        m_bench->window().console_mode();
        QVERIFY(!gSerialPort->isOpen());
        QVERIFY2(m_bench->portState().contains("no such device"), qPrintable(m_bench->portState()));
        QTEST(answers.seen(), "boxes");
        openWhenItIsBack();
    }

    // The main window is closed first: the window has its line again when the console goes.
    void leavingTheConsole()
    {
        QTimer::singleShot(0, this, [this] {
            onceInConsole([this] {
                m_bench->window().close();
                console()->close();
                QApplication::quit();
            });
            m_bench->window().console_mode();
            QVERIFY(!console());
            QVERIFY(gSerialPort->isOpen());
        });
        QCOMPARE(QApplication::exec(), 0);
        m_bench->window().show();
        QVERIFY(recovers());
    }

    void aPortThatIsRefused_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("reason");
        QTest::newRow("no permission") << 0660
                                       << "no permission: the device belongs to group %1; type \"sudo usermod "
                                          "-aG %1 $USER\" and log in again";
        QTest::newRow("no rights for anybody")
            << 0
            << "no permission: install the rule 60-safety-workbench.rules of this program's package in "
               "/etc/udev/rules.d and plug the board in again";
        QTest::newRow("held by another") << 0666 << "no permission, or another program holds it";
    }

    void aPortThatIsRefused()
    {
        QFETCH(int, mode);
        QFETCH(QString, reason);
        RawLine line;
        const QByteArray path = line.tty().toLocal8Bit();
        const int holder = open(path.constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        QCOMPARE(ioctl(holder, TIOCEXCL), 0);
        QCOMPARE(chmod(path.constData(), mode_t(mode)), 0);
        if (geteuid() == 0) // where the terminals are root's
            QCOMPARE(chown(path.constData(), 0, 20), 0);
        BoxAnswerer answers;
        m_bench->window().Serialport_close();
        const QString before = std::exchange(gPortName, line.tty());
        {
            const Nobody rights;
            m_bench->window().Serialport_open();
        }
        close(holder);
        QVERIFY(!gSerialPort->isOpen());
        if (mode == 0660)
            reason = reason.arg(QFileInfo(line.tty()).group());
        QCOMPARE(answers.seen(), QStringList(kCannotOpen + '|' + reason));
        QVERIFY2(m_bench->portState().contains("closed: " + reason), qPrintable(m_bench->portState()));
        gPortName = before;
        m_bench->window().Serialport_open();
        QVERIFY(recovers());
    }

    // A board that restarts begins anew wherever it was. The cut frame may take along as many bytes as it announced.
    void aFrameCutByARestart_data()
    {
        QTest::addColumn<QByteArray>("cut");
        QTest::newRow("in a long record") << QByteArray::fromHex("A5C3 0000 07 01 0FF0") + QByteArray(900, '\x11');
        QTest::newRow("in a record that the next frames complete") << QByteArray::fromHex("A5C3 0000 03 02 0010 01 02");
        QTest::newRow("before its end") << QByteArray::fromHex("A5C3 0000 01 01 0001 07 0000");
    }

    void aFrameCutByARestart()
    {
        QFETCH(QByteArray, cut);
        RawLine line;
        const QString before = std::exchange(gPortName, line.tty());
        m_bench->window().Serialport_open();
        line.write(cut);
        QTRY_VERIFY(m_bench->window().receiveState().rxPending);
        line.write(QByteArray::fromHex("A5C3 0000 01 01 0001 03 0000 D4B2").repeated(3));
        QTRY_COMPARE(m_bench->text("lineEdit_sysworkmode"), QStringLiteral("DRUN"));
        m_bench->find<QLineEdit>("lineEdit_sysworkmode")->clear();
        gPortName = before;
        m_bench->window().Serialport_open();
        QVERIFY(recovers());
    }

private:
    const QTemporaryDir m_folder;
    std::unique_ptr<BoardFixture> m_bench;
};

QTEST_MAIN(TestWeather)
#include "tst_weather.moc"
