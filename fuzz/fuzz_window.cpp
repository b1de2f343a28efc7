// SPDX-License-Identifier: MIT
// Frames into the real window over a real pseudo-terminal, pages turned and the line closed and opened meanwhile. The
// input is a list of steps:
//   byte 0    7-5 time until the next step (gapsMs), 4-0 module of a frame, or kTurnPage, kClose, kOpen
//        1    report type of a frame; number of a page
//        2    length of a frame's payload, 255: all that is left
//        3    payload
// Message boxes are answered, also nested ones. Waits take no time (support/fakeclock.cpp), and the steps go on inside
// them. Objects are kept for the whole run, so leak detection is off; longer inputs find nothing more.
// libFuzzer: -detect_leaks=0 -max_len=400
#include "fuzz/application.h"
#include "fuzz/input.h"
#include "link/serialline.h"
#include "protocol/frame.h"
#include "support/boxanswerer.h"
#include "support/fixtures.h"

#include <QTabWidget>
#include <QTimer>

#include <utility>

namespace {

constexpr int gapsMs[] = {0, 0, 1, 10, 60, 150, 500, 1400};
constexpr int kTurnPage = protocol::kModuleCount + 2; // two identifiers that no module has stay frames
constexpr int kClose = kTurnPage + 1;
constexpr int kOpen = kClose + 1;
// A window keeps the history of all faults: now and then a new one takes its place.
constexpr int kInputsPerWindow = 2000;

class Player : public QObject
{
public:
    Player(WindowFixture &bench, const FuzzInput &input) : m_bench(bench), m_input(input) { step(); }

    bool isDone() const { return m_done; }

private:
    void step()
    {
        if (m_input.isEmpty()) {
            flush();
            m_done = true;
            return;
        }
        const uint8_t what = m_input.byte();
        act(what & 31);
        const int gap = gapsMs[what >> 5];
        if (what >> 5 != 0)
            flush();
        QTimer::singleShot(gap, Qt::PreciseTimer, this, &Player::step);
    }

    void act(int what)
    {
        if (what >= kTurnPage)
            flush();
        if (what == kTurnPage)
            turnPage(m_input.byte());
        else if (what == kClose)
            m_bench.window().Serialport_close();
        else if (what == kOpen)
            m_bench.window().Serialport_open();
        else if (what < kTurnPage)
            addFrame(what);
    }

    void addFrame(int module)
    {
        const uint8_t type = m_input.byte();
        const uint8_t length = m_input.byte();
        m_bytes += protocol::encodeFrame(static_cast<protocol::ModuleId>(module), type,
                                         m_input.bytes(length == 255 ? SIZE_MAX : length));
    }

    void turnPage(uint8_t page)
    {
        const auto books = m_bench.window().findChildren<QTabWidget *>();
        QTabWidget *book = books.at(page % books.size());
        book->setCurrentIndex(page / 8 % book->count());
    }

    // The frames so far leave as one arrival.
    void flush()
    {
        if (m_bytes.isEmpty() || !gSerialPort->isOpen())
            return m_bytes.clear();
        m_bench.line().deliver(std::exchange(m_bytes, {}));
    }

    WindowFixture &m_bench;
    FuzzInput m_input;
    QByteArray m_bytes;
    bool m_done = false;
};

void pass(int milliseconds)
{
    bool over = false;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, [&over] { over = true; });
    while (!over)
        QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

WindowFixture &bench()
{
    static WindowFixture *window = nullptr; // the last one is never deleted: at exit there is no Qt to do that with
    static int inputs = 0;
    if (!window || ++inputs % kInputsPerWindow == 0) {
        delete std::exchange(window, nullptr);
        window = new WindowFixture;
        window->window().setUpdatesEnabled(false); // pixels are the library's own, and most of the time
    }
    return *window;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *count, char ***arguments)
{
    makeApplication(count, arguments);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static auto *const answers = new BoxAnswerer; // for the life of the program
    WindowFixture &window = bench();
    if (!gSerialPort->isOpen())
        window.window().Serialport_open();
    Player player(window, FuzzInput(data, size));
    while (!player.isDone())
        pass(1);
    pass(30);
    answers->clear();
    window.line().clear();
    return 0;
}
