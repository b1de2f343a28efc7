// SPDX-License-Identifier: MIT
// check: a recording's commands to a board, its answers against the recording's.
#include "cli/conversation.h"
#include "cli/comparison.h"
#include "cli/complain.h"
#include "cli/exitcode.h"
#include "cli/printer.h"
#include "cli/recordingfile.h"
#include "cli/settings.h"
#include "cli/verbs.h"
#include "session/framestream.h"
#include "session/pcapng.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kTimeoutMs = 2000;
// What belongs to the last command has come by then.
constexpr int kSilenceMs = 300;

struct Command {
    QByteArray line;
    qint64 time = 0; // nanoseconds from the first packet
};

/// A recording's commands with the answers that a board owes them.
struct Script {
    std::vector<Command> commands;
    Comparison comparison;
};

// Commands are whole lines, however many writes they took.
class ScriptReader
{
public:
    explicit ScriptReader(Script &script) : m_script(script) {}

    void take(const session::PacketView &packet)
    {
        const QByteArray bytes(packet.bytes.data(), static_cast<int>(packet.bytes.size()));
        if (packet.direction == session::Direction::Sent)
            takeSent(bytes, packet.time);
        else if (packet.direction == session::Direction::Received)
            takeReceived(bytes);
    }

private:
    void takeSent(const QByteArray &bytes, qint64 time)
    {
        m_line += bytes;
        for (int end = m_line.indexOf('\n'); end >= 0; end = m_line.indexOf('\n')) {
            m_script.commands.push_back({m_line.left(end).trimmed(), time});
            m_line.remove(0, end + 1);
        }
    }
    void takeReceived(const QByteArray &bytes)
    {
        if (m_script.commands.empty())
            return; // an answer to nothing
        for (const frameData &frame : m_frames.take(bytes)) {
            if (const auto answer = answerOf(frame, static_cast<int>(m_script.commands.size()) - 1))
                m_script.comparison.expect(*answer);
        }
    }

    Script &m_script;
    QByteArray m_line;
    session::FrameStream m_frames;
};

class Check
{
public:
    Check(Conversation &board, Script &script, const Settings &settings)
        : m_board(board),
          m_script(script),
          m_speed(settings.speed),
          m_timeoutMs(settings.timeoutMs.value_or(kTimeoutMs))
    {
        board.onFrame = [this](const frameData &frame, qint64) {
            if (const auto answer = m_sent < 0 ? std::nullopt : answerOf(frame, m_sent))
                m_script.comparison.receive(*answer);
        };
    }

    Conversation::Waited run()
    {
        Conversation::Waited ended = Conversation::Waited::Done;
        const int count = static_cast<int>(m_script.commands.size());
        for (int i = 0; i < count && goesOn(ended); ++i) {
            ended = waitBefore(i);
            if (goesOn(ended))
                send(i);
        }
        if (goesOn(ended))
            ended = waitForAnswers(m_script.comparison.expected());
        return goesOn(ended) ? m_board.waitForSilence(kSilenceMs, m_timeoutMs) : ended;
    }

private:
    static bool goesOn(Conversation::Waited ended)
    {
        return ended == Conversation::Waited::Done || ended == Conversation::Waited::TimedOut;
    }

    void send(int i)
    {
        m_sent = i;
        m_sinceSent.start();
        m_board.send(QString::fromLatin1(m_script.commands[static_cast<std::size_t>(i)].line));
    }

    // A command goes as long after the one before as in the recording, and when the answers that came before it there
    // have come here.
    Conversation::Waited waitBefore(int i)
    {
        if (i == 0)
            return Conversation::Waited::Done;
        const auto ended = waitForAnswers(m_script.comparison.expectedBefore(i));
        if (!goesOn(ended))
            return ended;
        const auto at = static_cast<std::size_t>(i);
        const qint64 gap = m_script.commands[at].time - m_script.commands[at - 1].time;
        const qint64 left = std::llround(static_cast<double>(gap) / 1e6 / m_speed) - m_sinceSent.elapsed();
        return left > 0 ? m_board.wait(static_cast<int>(std::min<qint64>(left, m_timeoutMs))) : ended;
    }

    // Answers that never came are not waited for again.
    Conversation::Waited waitForAnswers(int wanted)
    {
        const auto ended =
            m_board.wait(m_timeoutMs, [this, wanted] { return m_script.comparison.received() + m_given >= wanted; });
        if (ended == Conversation::Waited::TimedOut)
            m_given = wanted - m_script.comparison.received();
        return ended;
    }

    Conversation &m_board;
    Script &m_script;
    double m_speed;
    int m_timeoutMs;
    int m_sent = -1;
    int m_given = 0; // up
    QElapsedTimer m_sinceSent;
};

QString kindText(Difference::Kind kind)
{
    static constexpr const char *kinds[] = {"changed", "missing", "extra"};
    return QLatin1String(kinds[kind]);
}

void print(Printer &printer, const Script &script, const Difference &difference)
{
    const QByteArray &command = script.commands[static_cast<std::size_t>(difference.command)].line;
    const QString shown = shownText(QString::fromLatin1(command));
    JsonLine json("difference");
    json.add("command_number", difference.command + 1)
        .add("command", QString::fromLatin1(command))
        .add("report", difference.report)
        .add("difference", kindText(difference.kind))
        .add("field", difference.field)
        .add("expected", difference.expected)
        .add("received", difference.received);
    const QString where = QStringLiteral("%1 \"%2\": %3 ").arg(difference.command + 1).arg(shown, difference.report);
    printer.finding(json,
                    difference.kind == Difference::Changed ? where
                            + QStringLiteral("%1: expected %2, received %3")
                                  .arg(difference.field, difference.expected, difference.received)
                                                           : where + kindText(difference.kind) + QStringLiteral(": ")
                            + difference.expected + difference.received);
}

} // namespace

int verbs::check(const Settings &settings)
{
    RecordingFile file;
    if (!file.open(settings))
        return kUsageOrFile;
    Script script;
    ScriptReader reader(script);
    for (session::PacketView packet; file.reader().next(packet);)
        reader.take(packet);
    if (!file.isWhole())
        return kUsageOrFile;
    if (script.commands.empty()) {
        complain(QStringLiteral("%1: no command was sent in it").arg(settings.arguments.first()));
        return kUsageOrFile;
    }

    Conversation board(settings);
    Printer printer(settings);
    Check check(board, script, settings);
    if (const int code = board.open())
        return code;
    const auto ended = check.run();
    if (const int code = board.codeOf(ended))
        return board.finish(code);
    if (script.comparison.received() == 0 && script.comparison.expected() > 0) {
        complain(QStringLiteral("the board does not answer"));
        return board.finish(kLineOrBoard);
    }
    const std::vector<Difference> differences = script.comparison.differences();
    for (const Difference &difference : differences)
        print(printer, script, difference);
    JsonLine json("checked");
    json.add("commands", script.commands.size())
        .add("reports", script.comparison.received())
        .add("differences", differences.size());
    printer.finding(json,
                    QStringLiteral("%1 commands, %2 reports, %3 differences")
                        .arg(script.commands.size())
                        .arg(script.comparison.received())
                        .arg(differences.size()));
    const bool shown = printer.flush();
    return board.finish(!shown ? kUsageOrFile : differences.empty() ? kAsAsked : kNotAsExpected);
}
