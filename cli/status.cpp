// SPDX-License-Identifier: MIT
// status: the state of the modules.
#include "cli/conversation.h"
#include "cli/complain.h"
#include "cli/exitcode.h"
#include "cli/modules.h"
#include "cli/nearest.h"
#include "cli/printer.h"
#include "cli/settings.h"
#include "cli/verbs.h"

#include <vector>

namespace {

constexpr int kTimeoutMs = 1000;
// An answer of several reports has no longer gaps than this.
constexpr int kSilenceMs = 30;

bool hasState(const Module &module)
{
    return *module.requests;
}

// The modules that are named, or all that have something to tell; empty, with the complaint made, where a word is wrong.
std::vector<const Module *> wanted(const QStringList &words)
{
    std::vector<const Module *> found;
    if (words.isEmpty()) {
        for (const Module &module : modules()) {
            if (hasState(module))
                found.push_back(&module);
        }
    }
    for (const QString &word : words) {
        const Module *module = moduleOf(word);
        if (!module || !hasState(*module)) {
            complain(module ? QStringLiteral("%1 has no state to ask for").arg(nameOf(*module))
                            : unknownText(QStringLiteral("module"), word, moduleNames(&hasState)));
            return {};
        }
        found.push_back(module);
    }
    return found;
}

class Inquiry
{
public:
    Inquiry(Conversation &board, Printer &printer, int timeoutMs)
        : m_board(board),
          m_printer(printer),
          m_timeoutMs(timeoutMs)
    {
        board.onFrame = [this](const frameData &frame, qint64 time) {
            if (comesUnasked(frame))
                return;
            m_answered = m_answered || frame.moduleId == static_cast<quint8>(m_module->id);
            m_printer.frame(frame, time);
        };
    }

    Conversation::Waited ask(const Module &module)
    {
        m_module = &module;
        const QStringList requests = QString::fromLatin1(module.requests).split(QLatin1Char('|'));
        for (const QString &request : requests) {
            m_answered = false;
            m_board.send(request);
            Conversation::Waited ended = m_board.wait(m_timeoutMs, [this] { return m_answered; });
            if (ended == Conversation::Waited::Done)
                ended = m_board.waitForSilence(kSilenceMs, m_timeoutMs);
            else if (ended == Conversation::Waited::TimedOut)
                missing(request);
            if (ended == Conversation::Waited::Interrupted || ended == Conversation::Waited::Lost)
                return ended;
        }
        return Conversation::Waited::Done;
    }
    bool isComplete() const { return m_missing == 0; }

private:
    void missing(const QString &request)
    {
        ++m_missing;
        JsonLine json("missing");
        json.add("module", nameOf(*m_module)).add("request", request);
        m_printer.finding(json,
                          QStringLiteral("%1 no answer to \"%2\" within %3 s")
                              .arg(nameOf(*m_module), -6)
                              .arg(request)
                              .arg(m_timeoutMs / 1000.0));
    }

    Conversation &m_board;
    Printer &m_printer;
    int m_timeoutMs;
    const Module *m_module = nullptr;
    bool m_answered = false;
    int m_missing = 0;
};

} // namespace

int verbs::status(const Settings &settings)
{
    const std::vector<const Module *> asked = wanted(settings.arguments);
    if (asked.empty())
        return kUsageOrFile;
    Conversation board(settings);
    Printer printer(settings, Printer::Times::Hidden);
    if (const int code = board.open())
        return code;
    Inquiry inquiry(board, printer, settings.timeoutMs.value_or(kTimeoutMs));
    for (const Module *module : asked) {
        const auto ended = inquiry.ask(*module);
        if (!printer.flush())
            return board.finish(kUsageOrFile);
        if (const int code = board.codeOf(ended))
            return board.finish(code);
    }
    return board.finish(inquiry.isComplete() ? kAsAsked : kLineOrBoard);
}
