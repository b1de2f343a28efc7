// SPDX-License-Identifier: MIT
// record: the line's traffic, until interrupted.
#include "cli/conversation.h"
#include "cli/complain.h"
#include "cli/exitcode.h"
#include "cli/settings.h"
#include "cli/verbs.h"

#include <csignal>

int verbs::record(const Settings &settings)
{
    Settings toFile = settings;
    toFile.record = settings.arguments.first();
    // Who reads the pipe may leave: that is told as any other end of the recording.
    std::signal(SIGPIPE, SIG_IGN);
    Conversation board(toFile);
    quint64 packets = 0, bytes = 0;
    board.onPacket = [&](const session::Packet &packet) {
        ++packets;
        bytes += static_cast<quint64>(packet.bytes.size());
    };
    if (const int trouble = board.open())
        return trouble;
    const auto ended = board.wait(settings.forMs.value_or(-1), [&board] { return !board.recordingIsWhole(); });
    const int code = board.finish(board.codeOf(ended));
    complain(QStringLiteral("%1 packets, %2 bytes recorded").arg(packets).arg(bytes));
    return code;
}
