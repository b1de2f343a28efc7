// SPDX-License-Identifier: MIT
// Every frame that the board sends reaches its decoder once and in order, however the line cuts it up and whatever the
// window is doing meanwhile. The virtual board says a number behind each frame: a message that is missing, doubled or out
// of place is a frame lost, shown twice or late.
#include "support/boxanswerer.h"
#include "support/cuttingproxy.h"
#include "support/fakeclock.h"

#include "app/mainwindow.h"
#include "link/commandchannel.h"
#include "link/serialports.h"
#include "simulator/virtualboard.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>

#include <algorithm>

namespace {

constexpr int kRandomPieces = 0;
constexpr int kMostRandom = 64;      // bytes
constexpr int kMinRestartFrames = 5; // what units announce after a restart
constexpr int kWaitMs = 600'000;     // of the fake clock's time: 6 s, which a busy machine may need

// A window in front of a board that numbers its messages, from the first frame on.
class Demonstration
{
public:
    explicit Demonstration(int pieces) : m_board(unpaced()), m_proxy(m_board.tty())
    {
        if (pieces == kRandomPieces)
            m_proxy.setRandomPieces(2026, kMostRandom);
        else
            m_proxy.setPieces(pieces);
        QObject::connect(&m_proxy, &CuttingProxy::toProgram, &m_proxy,
                         [this](const QByteArray &piece) { m_longest = std::max(m_longest, piece.size()); });
        QObject::connect(&m_board.board(), &simulator::Board::output, &m_proxy, [this] {
            ++m_frames;
            if (m_speaking)
                return;
            m_speaking = true;
            m_board.board().say(QStringLiteral("#%1").arg(m_messages++));
            m_speaking = false;
        });
        setAvailablePortNames([this] { return QStringList{m_proxy.tty()}; });
        m_window = std::make_unique<MainWindow>();
        m_window->show();
    }

    MainWindow &window() { return *m_window; }
    int messages() const { return m_messages; }
    int longestPiece() const { return m_longest; }
    QStringList shown() const
    {
        return m_window->findChild<QTextEdit *>(QStringLiteral("textBrowser_temp"))
            ->toPlainText()
            .split(QLatin1Char('\n'));
    }

    /// Until the window has taken all that was sent.
    bool settle()
    {
        return QTest::qWaitFor([this] { return m_window->receiveState().rxFrameCount == m_frames; }, kWaitMs);
    }

    /// The first number out of order among the messages shown, in words; empty if there is none.
    QStringList disorder() const
    {
        QStringList wrong;
        int next = 0;
        for (const QString &line : shown()) {
            if (line.startsWith(QLatin1Char('#')) && line != QStringLiteral("#%1").arg(next++))
                wrong.append(QStringLiteral("%1 in place of #%2").arg(line).arg(next - 1));
        }
        if (next != m_messages)
            wrong.append(QStringLiteral("%1 of %2").arg(next).arg(m_messages));
        return wrong;
    }

private:
    static simulator::VirtualBoard::Options unpaced()
    {
        simulator::VirtualBoard::Options options;
        options.paced = false;
        return options;
    }

    simulator::VirtualBoard m_board;
    CuttingProxy m_proxy;
    std::unique_ptr<MainWindow> m_window;
    quint64 m_frames = 0;
    int m_messages = 0;
    int m_longest = 0;
    bool m_speaking = false;
};

} // namespace

class TestDelivery : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Demonstration> m_demonstration;
    BoxAnswerer m_answerer{QMessageBox::Yes};

private slots:
    void everyFrameOnce_data()
    {
        QTest::addColumn<int>("pieces");
        for (const int size : {1, 62})
            QTest::addRow("pieces of %d bytes", size) << size;
        QTest::newRow("pieces of random size") << kRandomPieces;
    }

    void everyFrameOnce()
    {
        QFETCH(int, pieces);
        m_demonstration = std::make_unique<Demonstration>(pieces);
        QVERIFY(m_demonstration->settle());
        QVERIFY2(startAgainAndAgain(), "resets");
        QVERIFY2(pressButtons(), "buttons");
        QVERIFY2(openAgain(), "openings");
        QVERIFY2(leaveABoxOpen(), "nothing arrives while a box is open");
        QCOMPARE(m_demonstration->disorder(), QStringList());
        QVERIFY(m_demonstration->messages() > 400);
        QCOMPARE(m_demonstration->longestPiece(), pieces == kRandomPieces ? kMostRandom : pieces);
    }

    void cleanup() { m_demonstration.reset(); }

private:
    MainWindow &window() { return m_demonstration->window(); }

    bool startAgainAndAgain()
    {
        for (int reset = 0; reset < 2; ++reset) {
            const int before = m_demonstration->messages();
            reset % 2 ? window().F_Reset() : window().D_Reset();
            const auto restarted = [&] { return m_demonstration->messages() >= before + kMinRestartFrames; };
            if (!QTest::qWaitFor(restarted, kWaitMs) || !m_demonstration->settle())
                return false;
        }
        return true;
    }

    bool pressButtons()
    {
        const auto buttons = window().centralWidget()->findChildren<QPushButton *>();
        for (int i = 0; i < buttons.size(); i += 2)
            buttons[i]->click();
        return m_demonstration->settle();
    }

    bool openAgain()
    {
        for (int opening = 0; opening < 2; ++opening) {
            window().Serialport_open();
            window().Get_Status();
            if (!m_demonstration->settle())
                return false;
        }
        return true;
    }

    // The box stands until 40 messages sent after it opened are shown.
    bool leaveABoxOpen()
    {
        bool shown = false;
        m_answerer.onBox([this, &shown] {
            const QString last = QStringLiteral("#%1").arg(m_demonstration->messages() + 40);
            for (int round = 0; round < 4; ++round)
                sendCommand(QStringLiteral("get 4"));
            shown = QTest::qWaitFor([this, last] { return m_demonstration->shown().contains(last); }, kWaitMs);
        });
        sendCommand(QStringLiteral("inject 5 2"));
        sendCommand(QStringLiteral("get 4"));
        return QTest::qWaitFor([&shown] { return shown; }, kWaitMs) && m_demonstration->settle();
    }
};

int main(int argc, char *argv[])
{
    qputenv("QTEST_FUNCTION_TIMEOUT", "86400000"); // ms; minutes pass in seconds
    fakeclock::setSpeed(100);
    QApplication application(argc, argv);
    QTEST_SET_MAIN_SOURCE_PATH
    TestDelivery test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_delivery.moc"
