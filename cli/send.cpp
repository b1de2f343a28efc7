// SPDX-License-Identifier: MIT
// send: command lines, and the board's answers until it is silent.
#include "cli/complain.h"
#include "cli/conversation.h"
#include "cli/exitcode.h"
#include "cli/modules.h"
#include "cli/printer.h"
#include "cli/settings.h"
#include "cli/verbs.h"

#include <algorithm>

namespace {

constexpr int kTimeoutMs = 2000;
// A restart is silent for 200 ms before the board's first report.
constexpr int kSilenceMs = 300;

class Dialogue
{
public:
    Dialogue(Conversation &board, const Settings &settings)
        : m_board(board),
          m_printer(settings),
          m_timeoutMs(settings.timeoutMs.value_or(kTimeoutMs)),
          m_gapMs(settings.gapMs.value_or(0))
    {
        board.onFrame = [this](const frameData &frame, qint64 time) {
            if (comesUnasked(frame))
                return;
            m_answered = true;
            m_printer.frame(frame, time);
        };
    }

    // Returns 0, or the exit code with the reason told; then the rest is better left.
    int say(const QString &word)
    {
        if (word.startsWith(QLatin1Char('#'))) {
            m_board.mark(word.mid(1).trimmed());
            return kAsAsked;
        }
        m_answered = false;
        m_board.send(word);
        auto ended = m_board.wait(m_timeoutMs, [this] { return m_answered; });
        if (ended == Conversation::Waited::TimedOut)
            complainOfSilence(word);
        else if (ended == Conversation::Waited::Done)
            ended = m_board.waitForSilence(kSilenceMs, m_timeoutMs);
        if (!m_printer.flush())
            return kUsageOrFile;
        return m_board.codeOf(ended);
    }
    // Between two commands.
    int pause() { return m_board.codeOf(m_board.wait(m_gapMs)); }
    bool isComplete() const { return m_complete; }

private:
    void complainOfSilence(const QString &command)
    {
        complain(QStringLiteral("no answer to \"%1\" within %2 s").arg(command).arg(m_timeoutMs / 1000.0));
        m_complete = false;
    }

    Conversation &m_board;
    Printer m_printer;
    int m_timeoutMs;
    int m_gapMs;
    bool m_answered = false;
    bool m_complete = true;
};

} // namespace

int verbs::send(const Settings &settings)
{
    if (!std::all_of(settings.arguments.begin(), settings.arguments.end(), &isCommandLine)) {
        complain(QStringLiteral("a command is one line of Latin-1"));
        return kUsageOrFile;
    }
    Conversation board(settings);
    Dialogue dialogue(board, settings);
    if (const int code = board.open())
        return code;
    for (int i = 0; i < settings.arguments.size(); ++i) {
        int code = i > 0 ? dialogue.pause() : kAsAsked;
        if (code == kAsAsked)
            code = dialogue.say(settings.arguments[i]);
        if (code != kAsAsked)
            return board.finish(code);
    }
    return board.finish(dialogue.isComplete() ? kAsAsked : kLineOrBoard);
}
