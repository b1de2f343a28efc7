// SPDX-License-Identifier: MIT
// The board at the other end: commands out, frames in, waits that always end.
#pragma once

#include "cli/transport.h"
#include "session/framestream.h"
#include "session/recorder.h"
#include "session/recordingwriter.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QObject>

#include <functional>

struct Settings;

class Conversation : public QObject
{
    Q_OBJECT

public:
    /// What ended a wait.
    enum class Waited { Done, TimedOut, Interrupted, Lost };

    explicit Conversation(const Settings &settings);
    /// Over this way, whatever line the settings name.
    Conversation(const Settings &settings, Way way);
    ~Conversation() override;

    /// Opens the line and begins the recording. Returns 0, or the exit code with the reason told.
    int open();

    void send(const QString &command);
    /// As a recording names the line; empty before open().
    const QString &lineName() const { return m_name; }
    /// Nanoseconds since 1970, as the packets have them.
    qint64 now() const { return m_recorder.now(); }
    /// Sets a mark in the recording.
    void mark(const QString &word) { m_recorder.mark(word, m_recorder.now()); }

    /// Handles arrivals until `done` holds or `milliseconds` have passed; negative: no limit but a signal or the
    /// line's loss. `done` is looked at whenever something has happened.
    Waited wait(int milliseconds, const std::function<bool()> &done = {});
    /// Waits until nothing has come for `silenceMs`, for at most `milliseconds`.
    Waited waitForSilence(int silenceMs, int milliseconds);

    /// Called with each frame and the time at which its last byte came, in nanoseconds since 1970.
    std::function<void(const frameData &, qint64)> onFrame;
    /// Called with each packet that passes, notes included.
    std::function<void(const session::Packet &)> onPacket;

    /// Ends the recording. Returns `code`, or 2 where it is 0 and the recording is not whole.
    int finish(int code);

    /// The exit code that a wait's end means, with the reason told: 0 for Done and TimedOut.
    int codeOf(Waited waited) const;
    /// False once the recording has failed; that has been told.
    bool recordingIsWhole() const { return m_writer.trouble().isEmpty(); }

private:
    void close();
    void take(const session::Packet &packet);

    const Settings &m_settings;
    Way m_way;
    session::Recorder m_recorder;
    session::RecordingWriter m_writer;
    session::FrameStream m_frames;
    QEventLoop m_loop;
    qint64 m_lastArrival = 0; // milliseconds of m_clock
    QElapsedTimer m_clock;
    QString m_name;
    QString m_lost;
};

/// True for what goes as one command line: Latin-1 without control characters.
bool isCommandLine(const QString &text);
