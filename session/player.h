// SPDX-License-Identifier: MIT
// Plays a tape against the clock: each arrival at its own moment, however late the one before was.
#pragma once

#include "session/tape.h"

#include <QByteArray>
#include <QObject>

#include <memory>

namespace session {

/// A moment of the steady clock at which a function is called from the event loop.
class Alarm;

class Player : public QObject
{
    Q_OBJECT

public:
    /// `tape` outlives the player. It stands at its beginning, paused.
    explicit Player(const Tape &tape, QObject *parent = nullptr);
    ~Player() override;

    void play();
    void pause();
    /// So many times as fast as recorded, from now on.
    void setSpeed(double times);
    /// Pauses and plays the next arrival alone.
    void step();
    /// Moves to `time` on the tape. On the way forward all that lies between arrives at once, so that who listens ends in
    /// the state that playing would have brought; on the way back the tape starts again.
    void moveTo(qint64 time);
    /// Moves just behind the next fault or mark; to the end where there is none.
    void moveToNextFault() { moveBehind(m_tape.faults()); }
    void moveToNextMark() { moveBehind(m_tape.marks()); }

    bool isPlaying() const { return m_playing; }
    bool isAtEnd() const { return m_next >= m_tape.arrivals().size() && m_nextTurn >= m_tape.turns().size(); }
    double speed() const { return m_speed; }
    qint64 length() const { return m_tape.length(); }
    /// Where the tape stands now, in nanoseconds.
    qint64 position() const;

signals:
    /// Bytes from the board whose moment has come.
    void arrived(const QByteArray &bytes);
    /// A command that was sent before the next arrival.
    void recalled(const QString &command);
    /// The port was lost or closed at this place, or opened again. Of losses that a move passes over only the last counts.
    void lineChanged(bool there);
    /// Playing, speed or position has been changed, or the end has been reached.
    void changed();

private:
    void playDue();
    void arm();
    void anchor(qint64 position);
    void emitUpTo(std::size_t next);
    void emitUntil(qint64 time);
    void turnTo(qint64 time);
    bool isThereAt(qint64 time) const;
    void recallUpTo(qint64 time);
    void rewind();
    void moveBehind(const std::vector<Tape::Event> &events);

    const Tape &m_tape;
    std::unique_ptr<Alarm> m_alarm;
    std::size_t m_next = 0; // arrival
    std::size_t m_nextCommand = 0;
    std::size_t m_nextTurn = 0;
    bool m_there = true; // the line
    bool m_playing = false;
    double m_speed = 1;
    qint64 m_anchorTape = 0;  // the tape stood here
    qint64 m_anchorClock = 0; // at this moment of the steady clock
};

} // namespace session
