// SPDX-License-Identifier: MIT
// The board: its units, the commands they answer, and the frames they send.
#pragma once

#include "protocol/moduleid.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <random>
#include <vector>

class Unit;

enum class ResetKind { PowerOn, Functional, Destructive };

class Board : public QObject
{
    Q_OBJECT

public:
    using Handler = std::function<void(const QStringList &arguments)>;

    /// A command: the literal words it begins with ("cmu 13"), what stands behind them in words for people
    /// ("<monitor>"), how many that may be, and what to do.
    struct Command {
        QString words;
        QString arguments;
        QString help;
        int minimum = 0;
        int maximum = 0;
        Handler run;
    };

    /// What collects the faults of all units: called with a fault source's identifier.
    struct FaultCollector {
        std::function<void(quint8)> report;
        std::function<void(quint8)> clear;
    };

    /// Makes all units and powers them on. The same seed gives the same values.
    explicit Board(quint32 seed = 1, QObject *parent = nullptr);
    ~Board() override;

    /// Several units may answer the same words: all are run, in the order in which they registered.
    void addCommand(Command command);
    const std::vector<Command> &commands() const { return m_commands; }

    /// Carries out one command line. The longest registered words that it begins with win; an unknown command or a
    /// wrong number of arguments is answered by a text message and changes nothing.
    void execute(const QString &line);

    /// Sends a frame; nothing leaves while the board restarts or is held in reset.
    void send(protocol::ModuleId module, quint8 type, const QByteArray &payload);
    /// Sends a text message.
    void say(const QString &text);

    void setFaultCollector(FaultCollector collector) { m_faults = std::move(collector); }
    /// A unit has detected a fault: the collector reports it to the program.
    void reportFault(quint8 source);
    /// The unit's fault status has been cleared.
    void clearFault(quint8 source);

    /// Restarts: silence for kRestartMs, then every unit is reset, the restart notice goes out, and every unit says
    /// what it says after a restart. `reason` is the reset-reason flag that the reset unit then reports.
    /// A reset by the fault collection unit names the fault source that caused it.
    void restart(ResetKind kind, int reason, int source = -1);
    /// Asked before a restart; true when another reset takes its place or the board stays in reset.
    using ResetRule = std::function<bool(ResetKind kind, int reason, int source)>;
    void setResetRule(ResetRule rule) { m_resetRule = std::move(rule); }
    /// Holds the board in reset until powerCycle(): it takes no command and sends nothing.
    void holdInReset();
    bool isHeld() const { return m_held; }
    /// Takes the power away and gives it back.
    void powerCycle();
    bool isRestarting() const { return m_restarting; }

    /// Runs `work` once after `milliseconds` of the board's time; a restart calls it off.
    void after(int milliseconds, std::function<void()> work);
    /// The one source of chance.
    std::mt19937 &random() { return m_random; }
    /// Evenly drawn from `low` to `high`, both included.
    int drawn(int low, int high);

    const std::vector<std::unique_ptr<Unit>> &units() const { return m_units; }
    template <class U> U *unit() const
    {
        for (const auto &unit : m_units) {
            if (auto *wanted = dynamic_cast<U *>(unit.get()))
                return wanted;
        }
        return nullptr;
    }

    static constexpr int kRestartMs = 200;

signals:
    void output(const QByteArray &frame);
    void executed(const QString &line);
    void said(const QString &text);
    void heldInReset();
    void faultReported(quint8 source);

private:
    void startAgain(ResetKind kind, int reason);

    std::mt19937 m_random;
    std::vector<Command> m_commands;
    FaultCollector m_faults;
    ResetRule m_resetRule;
    std::vector<std::unique_ptr<Unit>> m_units;
    bool m_restarting = false;
    bool m_held = false;
    unsigned m_life = 0; // counts restarts, so that work of an earlier life is called off
};
