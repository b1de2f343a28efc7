// SPDX-License-Identifier: MIT
// State and counters of the line to the board: the one source of everything that the window says about it.
#pragma once

#include "protocol/moduleid.h"
#include "link/commandlines.h"
#include "session/framestream.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <array>
#include <chrono>

/// Counts since the program started. A frame of an unknown module counts in `frames` alone.
struct LineCounts {
    quint64 bytesIn = 0;
    quint64 bytesOut = 0;
    quint64 commands = 0; // lines sent
    quint64 frames = 0;
    quint64 frameBytes = 0;
    std::array<quint64, protocol::kModuleCount> byModule = {};
};

class LineMonitor : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Closed,    // on request, or never opened
        Console,   // open, but the console has it
        Quiet,     // open; nothing is said and nothing was asked
        Receiving, // bytes within the patience
        Silent,    // a request has had no byte in answer for longer than the patience
        Lost,      // closed because the device is gone
    };

    /// How long a board may be silent before it is said: also how long a byte counts as a sign of life.
    static constexpr std::chrono::milliseconds kPatience{2000};

    /// Listens to the program's line from now on.
    explicit LineMonitor(std::chrono::milliseconds patience = kPatience, QObject *parent = nullptr);

    State state() const { return m_state; }
    /// The state in a few words: "receiving", "no answer for 3 s", "lost, waiting for ttyUSB0".
    QString word() const;
    /// When the state began; of Silent, when the request was sent that got no answer.
    QDateTime since() const { return m_since; }
    /// The port that is or was open last; empty before the first one.
    QString port() const { return m_port; }

    const LineCounts &counts() const { return m_counts; }
    /// Bytes that belong to no whole frame.
    quint64 damagedBytes() const;
    /// The latest frame: when, and of which module; an invalid time before the first one.
    QDateTime lastAnswer() const { return m_lastAnswer; }
    int lastModule() const { return m_lastModule; }

    /// True if a frame has arrived in the line's present state: the screen is current.
    bool isCurrent() const { return m_current; }
    /// Something has been shown that is no longer current.
    bool isStale() const { return !m_current && m_shown; }

    /// The user no longer wants a lost line back.
    void giveUp();

signals:
    /// The state or its words.
    void changed();
    /// Text messages of the board that came in one read, each up to its first NUL; not while the console shows them.
    void messagesArrived(const QStringList &texts);

private:
    void onOpened(const QString &port);
    void onReceived(const QByteArray &bytes);
    void onSent(const QByteArray &bytes);
    void onCommand(const QByteArray &line);
    void end(State state);
    void look();
    void enter(State state, const QDateTime &since = QDateTime::currentDateTime());
    void countFrames(const QList<frameData> &frames);

    const qint64 m_patienceMs;
    State m_state = State::Closed;
    QDateTime m_since = QDateTime::currentDateTime();
    QString m_port;
    LineCounts m_counts;
    session::FrameStream m_frames;
    CommandLines m_lines;
    QElapsedTimer m_heard; // since the last byte
    QElapsedTimer m_asked; // since the first request without an answer; invalid: none
    QDateTime m_askedAt;
    QDateTime m_lastAnswer;
    int m_lastModule = -1;
    bool m_current = false;
    bool m_shown = false; // a frame has been shown
    QTimer m_tick;
};

/// The module's short name, "CMU"; "text" of 0; its number where it is unknown.
QString moduleName(int module);
