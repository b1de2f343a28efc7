// SPDX-License-Identifier: MIT
// The board: its units, the commands they answer, and the frames they send.
#pragma once

#include "protocol/moduleid.h"
#include "protocol/reset.h"
#include "simulator/command.h"
#include "simulator/defects.h"

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QString>

#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <random>
#include <vector>

namespace simulator {

class Unit;
enum class ResetKind;

using protocol::reset::Reason;

class Board : public QObject
{
    Q_OBJECT

public:
    /// Makes all units and powers them on. The same seed gives the same values.
    explicit Board(quint32 seed = 1, QObject *parent = nullptr);
    ~Board() override;

    /// Several units may answer the same words: all are run, in the order in which they were added.
    void addCommands(std::initializer_list<Command> commands);
    const std::vector<Command> &commands() const { return m_commands; }

    /// Carries out one command line: the command with the most words that the line begins with and whose number of
    /// arguments fits. An unknown command or a wrong number of arguments is answered by a text message and changes
    /// nothing. A board that restarts or is held in reset ignores the line.
    void execute(const QString &line);

    /// Sends a frame; nothing leaves while the board restarts or is held in reset.
    void send(protocol::ModuleId module, quint8 type, const QByteArray &payload);
    /// Sends a text message.
    void say(const QString &text);

    /// The fault of this source, that began `elapsedUs` microseconds ago, comes to its mechanism: reports it, with what
    /// the mechanism itself takes (simulator/detection.h) added, and then runs `record`, which keeps it in the
    /// module's record and does what else follows.
    void detect(quint8 source, double elapsedUs, const std::function<void()> &record);
    void detect(quint8 source)
    {
        detect(source, 0, [] {});
    }
    /// The fault status of this source has been cleared.
    void clearFault(quint8 source);
    /// Repairs what "sick" commands broke.
    void heal();

    /// Restarts: silence for kRestartMs, then every unit is reset, the restart notice goes out, and every unit sends
    /// its reports after a restart. A reset by the fault collection unit names the fault source that caused it.
    void restart(Reason reason, std::optional<quint8> source = {});
    /// Holds the board in reset until powerCycle(): it takes no command and sends nothing.
    void holdInReset();
    bool isHeld() const { return m_state == State::Held; }
    /// Takes the power away and gives it back.
    void powerCycle();

    /// Runs `work` once after `milliseconds` of the board's time; a restart calls it off.
    void after(int milliseconds, std::function<void()> work);
    /// Evenly drawn from `low` to `high`, both included.
    int drawn(int low, int high);
    QByteArray drawnBytes(int count);

    const std::vector<std::unique_ptr<Unit>> &units() const { return m_units; }

    /// Gives the board a defect, see allDefects(); false where there is none of this name.
    bool addDefect(const QString &name) { return m_defects.add(name); }

    static constexpr int kRestartMs = 200;

signals:
    void output(const QByteArray &frame);
    void executed(const QString &line);
    void said(const QString &text);
    void heldInReset();

private:
    enum class State { Running, Restarting, Held };

    const std::vector<std::size_t> *find(const QStringList &words) const;
    void report(quint8 source, double elapsedUs);
    void beginRestart(Reason reason, std::optional<quint8> source = {});
    void finishRestart(Reason reason);
    void reset(Unit &unit, ResetKind kind);
    void sayHelp();
    void sayStatus();

    State m_state = State::Running;
    unsigned m_life = 0; // counts restarts, so that work of an earlier life is called off
    std::mt19937 m_random;
    Defects m_defects;
    std::vector<Command> m_commands;
    QHash<QString, std::vector<std::size_t>> m_index; // places in m_commands by words
    std::vector<std::unique_ptr<Unit>> m_units;
};

} // namespace simulator
