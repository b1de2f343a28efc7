// SPDX-License-Identifier: MIT
#include "cli/servecontrol.h"

#include "cli/complain.h"
#include "cli/exitcode.h"
#include "cli/jsonline.h"
#include "session/player.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QStringList>

#include <algorithm>

#include <unistd.h>

namespace {

constexpr int kTellMs = 100;
constexpr int kLongestLine = 1000;
constexpr double kSlowest = 0.001;
constexpr double kFastest = 1000;

} // namespace

ServeControl::ServeControl(session::Player &player, bool json) : m_player(player), m_json(json)
{
    auto *input = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, this);
    connect(input, &QSocketNotifier::activated, this, &ServeControl::readCommands);
    connect(&player, &session::Player::changed, this, &ServeControl::tell);
    connect(&player, &session::Player::recalled, this, &ServeControl::tellCommand);
    connect(&m_clock, &QTimer::timeout, this, [this] {
        if (m_player.isPlaying())
            tell();
    });
    m_clock.start(kTellMs);
}

void ServeControl::readCommands()
{
    char bytes[256];
    const ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
    if (count <= 0) {
        QCoreApplication::exit(kAsAsked);
        return;
    }
    m_unfinished.append(bytes, static_cast<int>(count));
    for (auto end = m_unfinished.indexOf('\n'); end >= 0; end = m_unfinished.indexOf('\n')) {
        obey(QString::fromUtf8(m_unfinished.left(end)).simplified());
        m_unfinished.remove(0, end + 1);
    }
    if (m_unfinished.size() > kLongestLine)
        m_unfinished.clear();
}

void ServeControl::obey(const QString &line)
{
    const QString word = line.section(QLatin1Char(' '), 0, 0);
    const double number = line.section(QLatin1Char(' '), 1).toDouble();
    if (word == QLatin1String("play"))
        m_player.play();
    else if (word == QLatin1String("pause"))
        m_player.pause();
    else if (word == QLatin1String("step"))
        m_player.step();
    else if (word == QLatin1String("speed") && number > 0)
        m_player.setSpeed(std::clamp(number, kSlowest, kFastest));
    else if (word == QLatin1String("to") && number >= 0)
        m_player.moveTo(static_cast<qint64>(std::min(number, 1e6) * 1e9));
    else if (word == QLatin1String("fault"))
        m_player.moveToNextFault();
    else if (word == QLatin1String("mark"))
        m_player.moveToNextMark();
    else if (word == QLatin1String("quit"))
        QCoreApplication::exit(kAsAsked);
    else
        complain(
            QStringLiteral("no command \"%1\"; there are: play, pause, step, speed N, to SECONDS, fault, mark, quit")
                .arg(line));
}

void ServeControl::tellCommand(const QString &command)
{
    Output output;
    output.line(m_json ? JsonLine("recalled").add("command", command).take() : "sent: " + command.toUtf8());
}

void ServeControl::tell()
{
    const double seconds = static_cast<double>(m_player.position()) / 1e9;
    const double length = static_cast<double>(m_player.length()) / 1e9;
    const char *state = m_player.isPlaying() ? "playing" : m_player.isAtEnd() ? "ended" : "paused";
    Output output;
    output.line(m_json ? JsonLine("position")
                             .add("seconds", seconds)
                             .add("length", length)
                             .add("speed", m_player.speed())
                             .add("state", state)
                             .take()
                       : QStringLiteral("%1 of %2 s, %3 times, %4")
                             .arg(seconds, 0, 'f', 3)
                             .arg(length, 0, 'f', 3)
                             .arg(m_player.speed())
                             .arg(QLatin1String(state))
                             .toUtf8());
}
