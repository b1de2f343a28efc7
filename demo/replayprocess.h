// SPDX-License-Identifier: MIT
// A recording in the board's place: served by a process of its own, which keeps the time.
#pragma once

#include <QObject>
#include <QProcess>

class ReplayProcess : public QObject
{
    Q_OBJECT

public:
    struct Position {
        double seconds = 0;
        double length = 0;
        double speed = 1;
        QString state; // "playing", "paused", "ended"
    };

    /// Starts to serve the file; it plays when its terminal is opened. isRunning() tells whether that worked.
    ReplayProcess(const QString &file, const QString &speed, const QString &from, QObject *parent = nullptr);
    ~ReplayProcess() override;

    bool isRunning() const { return !m_tty.isEmpty(); }
    /// Path of the terminal line, a symbolic link.
    QString tty() const { return m_tty; }
    /// As it was told last.
    const Position &position() const { return m_position; }

    void play() { say("play"); }
    void pause() { say("pause"); }
    void step() { say("step"); }
    void nextFault() { say("fault"); }
    void nextMark() { say("mark"); }
    void setSpeed(double times) { say("speed " + QByteArray::number(times)); }
    void moveTo(double seconds) { say("to " + QByteArray::number(seconds, 'f', 3)); }

signals:
    void moved(const ReplayProcess::Position &position);
    /// A command that was sent when the recording was made.
    void recalled(const QByteArray &command);

private:
    void say(const QByteArray &command);
    void readPositions();

    QProcess m_process;
    QString m_tty;
    Position m_position;
};
