// SPDX-License-Identifier: MIT
// soak [MINUTES [SEED]]: the window in front of a virtual board on a bad cable, used by a monkey. Prints once a minute
// what was done and what it costs in memory; fails where the memory is not explained by what the window keeps.
#include "app/linerecorder.h"
#include "support/boardprocess.h"
#include "app/application.h"
#include "help/introduce.h"
#include "link/commandchannel.h"
#include "link/serialline.h"
#include "link/serialports.h"
#include "support/boxanswerer.h"
#include "presenter/driver.h"
#include "support/monkey.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTextDocument>
#include <QTextEdit>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <vector>

#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
extern "C" std::size_t __sanitizer_get_current_allocated_bytes(); // its header does not come with every compiler
#else
#include <malloc.h>
#endif

namespace {

constexpr int kActMs = 50;
constexpr int kMostInside = 40;
constexpr int kCommandMs = 25;
constexpr int kReportMs = 60000;
constexpr int kOpenMs = 1000;

// What may stay allocated once the texts are cleared: the recorder's packets, the history of faults, the time line and the
// timers, which last as long as the window, and caches of fonts, styles and pictures that fill with use. Measured, and
// rounded up.
constexpr double kPerFault = 600;
constexpr double kPerTimer = 800;
constexpr double kCaches = 12e6;

const char *const traffic[] = {
    "get 0",
    "get 1",
    "get 2",
    "get 3",
    "get 4",
    "get 5",
    "get 6",
    "get 7",
    "get 8",
    "get 9",
    "get 10",
    "get 11",
    "cmu 13 4",
    "cmu 14 4",
    "cmu 4 90 60",
    "cmu 15",
    "cmu 16",
    "inject 5 2",
    "inject 5 3",
    "pmc 1",
    "pmc 4 3",
    "pmc 5",
    "pmc 6",
    "inject 4 1",
    "inject 4 4",
    "xbic 1 2",
    "xbic 3",
    "xbic 4",
    "inject 7 3",
    "smpu 3",
    "smpu 4",
    "inject 6 2",
    "inject 6 5",
    "memu 1",
    "inject 9 1 1F0",
    "inject 9 6 40 AA",
    "inject 9 7",
    "regP 1",
    "regP 2 1234",
    "regP 5 99",
    "crc 1 0 0",
    "crc 2 1 1",
    "crc 3 1 2",
    "swt 1 2 50",
    "swt 5",
    "inject 3 2",
    "intcm IACK 1 2 100 40",
    "intcm 1",
    "intcm 2",
    "inject 8 1",
    "cse 1",
    "cse 2 1 00112233445566778899AABBCCDDEEFF",
    "cse 3 2 00112233445566778899AABBCCDDEEFF",
    "cse 4 61",
    "cse 6 2",
    "cse 6 1",
    "inject 10 1",
    "spt 1",
    "resetEsca 1 2",
    "resetEsca 2 2",
    "status",
};

double residentBytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * static_cast<double>(sysconf(_SC_PAGESIZE));
}

// Bytes allocated and not freed.
double heapBytes()
{
#ifdef __SANITIZE_ADDRESS__
    return static_cast<double>(__sanitizer_get_current_allocated_bytes());
#else
    return static_cast<double>(mallinfo2().uordblks);
#endif
}

/// The window's contents, counted, and the memory in use.
struct Account {
    double heap = heapBytes();
    double faults = 0;
    double timers = 0; // of the security engine, one a status report
    double paragraphs = 0;
    double characters = 0;

    explicit Account(MainWindow &window)
        : faults(faultBox(window)->count()),
          timers(static_cast<double>(window.findChildren<QTimer *>().size()))
    {
        for (const QTextDocument *document : documents(window)) {
            paragraphs += document->blockCount();
            characters += document->characterCount();
        }
    }
    static QComboBox *faultBox(MainWindow &window)
    {
        return window.findChild<QComboBox *>(QStringLiteral("comboBox_FaultID"));
    }
    static std::vector<QTextDocument *> documents(MainWindow &window)
    {
        std::vector<QTextDocument *> all;
        for (auto *box : window.findChildren<QTextEdit *>())
            all.push_back(box->document());
        for (auto *box : window.findChildren<QPlainTextEdit *>())
            all.push_back(box->document());
        return all;
    }
};

class Soak : public QObject
{
public:
    Soak(MainWindow &window, BoxAnswerer &answers, quint32 seed)
        : m_window(window),
          m_answers(answers),
          m_monkey(window, seed, kMostInside),
          m_start(window)
    {
        m_monkey.addConsole(1, 1500);
        for (const char *action : {"actionclose", "actionFunctional_Reset", "actionDestructive_Reset",
                                   "actionGet_Status", "actionabout", "actionLicense"})
            m_monkey.addMenu(1, action);
        m_monkey.add(1, [this] { lookAtIntroduction(); });
        connect(&m_commands, &QTimer::timeout, this,
                [this] { sendCommand(QString::fromLatin1(traffic[m_monkey.below(std::size(traffic))])); });
        // Outside the timer's own handler, in which it would not fire again while a box is open.
        connect(&m_openings, &QTimer::timeout, this, [this] { QTimer::singleShot(0, this, &Soak::openAgain); });
        connect(&m_reports, &QTimer::timeout, this, [this] { report(); });
    }

    void run(int minutes)
    {
        std::printf("%6s %8s %9s %7s %6s %10s %10s %9s %9s %5s %5s\n", "minute", "actions", "frames", "faults",
                    "opened", "paragraphs", "characters", "heap MB", "RSS MB", "boxes", "depth");
        report();
        m_monkey.start(kActMs);
        m_commands.start(kCommandMs);
        m_openings.start(kOpenMs);
        m_reports.start(kReportMs);
        QTimer::singleShot(minutes * kReportMs, this, &Soak::end);
    }

private:
    void openAgain()
    {
        if (gSerialPort->isOpen() || m_monkey.below(2) != 0)
            return;
        m_window.Serialport_open();
        m_opened += gSerialPort->isOpen();
    }

    void lookAtIntroduction()
    {
        m_window.GUI_Introduce();
        if (QWidget *introduction = driver::topLevel<introduce>())
            QTimer::singleShot(2000, introduction, &QWidget::close);
    }

    Account report()
    {
        const Account now(m_window);
        m_boxes += static_cast<int>(m_answers.seen().size());
        m_answers.clear();
        std::printf("%6d %8d %9llu %7.0f %6d %10.0f %10.0f %9.1f %9.1f %5d %5d\n", m_minute++, m_monkey.actions(),
                    static_cast<unsigned long long>(m_window.receiveState().rxFrameCount), now.faults, m_opened,
                    now.paragraphs, now.characters, now.heap / 1e6, residentBytes() / 1e6, m_boxes, m_monkey.deepest());
        std::fflush(stdout);
        return now;
    }

    void end()
    {
        m_monkey.stop();
        m_commands.stop();
        m_reports.stop();
        m_clock.start();
        m_window.findChild<QLineEdit *>(QStringLiteral("lineEdit_sysworkmode"))->clear();
        waitForQuiet();
    }

    // All handlers return, and the window shows what the board answers.
    void waitForQuiet()
    {
        const bool answers =
            m_window.findChild<QLineEdit *>(QStringLiteral("lineEdit_sysworkmode"))->text() == QLatin1String("RUN0");
        if (m_clock.elapsed() > kReportMs) {
            std::printf("FAILED: the window does not recover (%s)\n",
                        m_monkey.isIdle() ? "no answer" : "a handler still waits");
            QApplication::exit(1);
        } else if (m_monkey.isIdle() && answers) {
            judge();
        } else {
            sendCommand(QStringLiteral("get 1"));
            QTimer::singleShot(kActMs, this, &Soak::waitForQuiet);
        }
    }

    // With the texts gone the memory is to be back.
    void judge()
    {
        const Account kept = report();
        for (QTextDocument *document : Account::documents(m_window))
            document->clear();
        Account::faultBox(m_window)->clear();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const double texts = kept.heap - heapBytes();
        const double rest = kept.heap - texts - m_start.heap;
        const double timers = kept.timers - m_start.timers;
        const double allowed = kCaches + kPerFault * kept.faults + kPerTimer * timers
            + static_cast<double>(m_window.findChild<LineRecorder *>()->heldBytes());
        std::printf("the texts take %.1f MB, %.0f bytes a fault and %.1f a character; beside them, %.0f faults and "
                    "%.0f timers in "
                    "the window, %.2f MB more than at the start, of %.2f explained\n",
                    texts / 1e6, texts / std::max(1.0, kept.faults), texts / kept.characters, kept.faults, timers,
                    rest / 1e6, allowed / 1e6);
        std::printf(rest <= allowed ? "passed\n" : "FAILED: more memory in use than is explained\n");
        QApplication::exit(rest <= allowed ? 0 : 1);
    }

    MainWindow &m_window;
    BoxAnswerer &m_answers;
    Monkey m_monkey;
    Account m_start;
    QTimer m_commands, m_openings, m_reports;
    QElapsedTimer m_clock;
    int m_minute = 0;
    int m_opened = 0;
    int m_boxes = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    Application application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList words = QApplication::arguments();
    const int minutes = std::max(1, words.value(1, QStringLiteral("20")).toInt());
    const QString seed = words.value(2, QStringLiteral("1"));
    const QTemporaryDir folder;
    const BoardProcess board({"--seed", seed, "--power-cycle-after", "2", "--noise", "0.00002", "--drop", "0.0001",
                              "--duplicate", "0.0001", "--stall", "0.3", "--hang-up", "40", "--link",
                              folder.filePath("board")});
    if (!board.isRunning())
        qFatal("the virtual board did not start");
    setAvailablePortNames([&board] { return QStringList{board.tty()}; });
    int result = 1;
    {
        BoxAnswerer answers;
        MainWindow window;
        window.resize(1440, 900);
        window.show();
        Soak soak(window, answers, seed.toUInt());
        soak.run(minutes);
        result = QApplication::exec();
    }
    closeLine(*gSerialPort);
    return result;
}
