// SPDX-License-Identifier: MIT
// monitor: every report as it comes.
#include "cli/conversation.h"
#include "cli/exitcode.h"
#include "cli/printer.h"
#include "cli/settings.h"
#include "cli/verbs.h"

int verbs::monitor(const Settings &settings)
{
    Conversation board(settings);
    Printer printer(settings);
    bool shown = true;
    board.onFrame = [&](const frameData &frame, qint64 time) { printer.frame(frame, time); };
    board.onPacket = [&](const session::Packet &packet) {
        for (const QString &comment : packet.comments)
            printer.note(session::noteOf(comment), packet.time);
    };
    if (const int code = board.open())
        return code;
    const auto ended = board.wait(settings.forMs.value_or(-1), [&] {
        shown = printer.flush();
        return !shown;
    });
    return board.finish(shown ? board.codeOf(ended) : kUsageOrFile);
}
