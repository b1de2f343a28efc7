// SPDX-License-Identifier: MIT
// A served tape under the command of another program: words on standard input, its state on standard output.
#pragma once

#include "cli/output.h"

#include <QObject>
#include <QTimer>

namespace session {
class Player;
}

/// Takes lines: "play", "pause", "step", "speed N", "to SECONDS", "fault", "mark", "quit"; the end of standard input is
/// "quit". Tells position, speed and state with each change, and ten times per second; and each command that was once sent,
/// when its place on the tape has come.
class ServeControl : public QObject
{
    Q_OBJECT

public:
    ServeControl(session::Player &player, bool json);

private:
    void readCommands();
    void obey(const QString &line);
    void tell();
    void tellCommand(const QString &command);

    session::Player &m_player;
    bool m_json;
    QByteArray m_unfinished;
    QTimer m_clock;
};
