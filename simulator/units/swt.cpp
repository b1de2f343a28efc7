// SPDX-License-Identifier: MIT
// Software watchdogs, one per core. The firmware serves them in time, unless told not to.
#include "protocol/swt.h"

#include "protocol/payload.h"
#include "simulator/arguments.h"
#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

#include <QElapsedTimer>

#include <array>

namespace simulator {

namespace {

using protocol::ModuleId;
using protocol::PayloadWriter;
namespace swt = protocol::swt;

struct Watchdog {
    bool on = true;
    unsigned mode = 0;
    unsigned timeoutMs = 100;
};

constexpr quint8 kFirstFault = 13; // of watchdog 0
constexpr int kReactionMs = 1000;  // from the report of a time-out to the reset that it causes
constexpr unsigned kMaxTimeoutMs = 65535;
constexpr unsigned kLastMode = 3;

class Watchdogs : public Unit
{
public:
    explicit Watchdogs(Board &board) : m_board(board)
    {
        board.addCommands({
            {"get 2", "watchdogs", [this] { sendAll(); }},
            {"swt 1", "<watchdog> <ms>", "fixed service sequence and time-out",
             [this](const auto &a) { configure(0, a); }},
            {"swt 2", "<watchdog> <ms>", "keyed service sequence and time-out",
             [this](const auto &a) { configure(1, a); }},
            {"swt 3", "<watchdog>", "switch a watchdog on (4: all)", [this](const auto &a) { turn(a[0], true); }},
            {"swt 4", "<watchdog>", "switch a watchdog off (4: all)", [this](const auto &a) { turn(a[0], false); }},
            {"swt 5", "watchdogs to their defaults", [this] { restore(); }},
            {"inject 3 1", "watchdog 0 runs out", [this] { starve(); }},
            {"inject 3 2", "invalid access to watchdog 0", [this] { accessWrongly(); }},
            {"sick service", "<watchdog> <0-3>", "another service mode", [this](const auto &a) { setMode(a); }},
        });
    }

    QString name() const override { return QStringLiteral("swt"); }
    void reset(ResetKind) override
    {
        serve();
        m_watchdogs = {};
        m_served.start();
    }
    void announce() override { sendAll(); }
    QString status() const override
    {
        const auto count = [this](const Watchdog &w) {
            return w.on ? QStringLiteral("%1 of %2 ms").arg(m_served.elapsed() % w.timeoutMs).arg(w.timeoutMs)
                        : QStringLiteral("off");
        };
        return QStringLiteral("%1, %2, %3").arg(count(m_watchdogs[0]), count(m_watchdogs[1]), count(m_watchdogs[2]));
    }

private:
    void send(unsigned number)
    {
        const Watchdog &watchdog = m_watchdogs[number];
        const quint32 counts = watchdog.timeoutMs * swt::kCountsPerMs;
        m_board.send(ModuleId::Swt, swt::StatusReport,
                     PayloadWriter()
                         .u8(number << 6 | watchdog.mode << 4 | (watchdog.on ? 8U : 0U))
                         .u32be(counts / 2)
                         .u32be(counts)
                         .take());
    }

    void sendAll()
    {
        for (unsigned i = 0; i < m_watchdogs.size(); ++i)
            send(i);
    }

    void restore()
    {
        serve();
        m_watchdogs = {};
        sendAll();
    }

    void configure(unsigned mode, const QStringList &arguments)
    {
        const auto number = decimal(arguments[0], swt::kWatchdogCount);
        const auto timeout = decimal(arguments[1], kMaxTimeoutMs);
        if (!number || *number == 0 || !timeout || *timeout == 0) {
            m_board.say(QStringLiteral("usage: swt <mode> <watchdog 1-3> <1-65535 ms>"));
            return;
        }
        Watchdog &watchdog = m_watchdogs[*number - 1];
        if (*number == 1)
            serve();
        watchdog.mode = mode;
        watchdog.timeoutMs = *timeout;
        send(*number - 1);
    }

    void turn(const QString &text, bool on)
    {
        const auto number = decimal(text, swt::kAll);
        if (!number || *number == 0) {
            m_board.say(QStringLiteral("a watchdog is a number from 1 to 3, 4 for all"));
            return;
        }
        for (unsigned i = 0; i < m_watchdogs.size(); ++i) {
            if (*number == swt::kAll || *number == i + 1) {
                if (i == 0)
                    serve();
                m_watchdogs[i].on = on;
                send(i);
            }
        }
    }

    void setMode(const QStringList &arguments)
    {
        const auto number = decimal(arguments[0], swt::kWatchdogCount);
        const auto mode = decimal(arguments[1], kLastMode);
        if (!number || *number == 0 || !mode) {
            m_board.say(QStringLiteral("usage: sick service <watchdog 1-3> <mode 0-3>"));
            return;
        }
        m_watchdogs[*number - 1].mode = *mode;
        send(*number - 1);
    }

    // From now on watchdog 0 is not served, until it is configured or switched.
    void starve()
    {
        if (!m_watchdogs[0].on) {
            m_board.say(QStringLiteral("SWT0 is off: it does not count"));
            return;
        }
        if (m_starved)
            return;
        m_starved = true;
        const unsigned timeoutMs = m_watchdogs[0].timeoutMs;
        m_board.after(static_cast<int>(timeoutMs), [this, timeoutMs, run = m_run] {
            if (run == m_run)
                bark(timeoutMs * 1000.0);
        });
    }

    void serve()
    {
        m_starved = false;
        ++m_run;
    }

    void accessWrongly()
    {
        if (m_watchdogs[0].on)
            bark(0);
        else
            m_board.say(QStringLiteral("SWT0 is off: the access goes unnoticed"));
    }

    // The firmware shows the fault before the reset follows.
    void bark(double elapsedUs)
    {
        m_board.detect(kFirstFault, elapsedUs, [this] {
            m_board.after(kReactionMs, [this] { m_board.restart(Reason::FccuLong, kFirstFault); });
        });
    }

    Board &m_board;
    std::array<Watchdog, swt::kWatchdogCount> m_watchdogs;
    bool m_starved = false; // watchdog 0 is no longer served
    unsigned m_run = 0;     // counts services, which call a pending run-out off
    QElapsedTimer m_served;
};

} // namespace

std::unique_ptr<Unit> makeWatchdogs(Board &board)
{
    return std::make_unique<Watchdogs>(board);
}

} // namespace simulator
