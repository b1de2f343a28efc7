// SPDX-License-Identifier: MIT
// The virtual board's command line, programs and people at it: bytes in pieces, time between them, and everything that
// the board sends must be well-formed frames. Byte 0: how the rest is cut and how much time passes.
#include "fuzz/input.h"
#include "protocol/extraction.h"
#include "simulator/board.h"
#include "simulator/shell.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

using namespace simulator;

namespace {

// Long enough for a restart, and for a watchdog's reset, now and then.
constexpr int gapsMs[] = {0, 0, 0, 1, 5, 20, 230, 1300};

void pass(int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    QTimer wake;
    wake.setTimerType(Qt::PreciseTimer);
    wake.start(std::max(milliseconds, 1));
    do
        QCoreApplication::processEvents(milliseconds > 0 ? QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents
                                                         : QEventLoop::AllEvents);
    while (clock.elapsed() < milliseconds);
}

// An empty frame at the end of an arrival waits for what follows; so a closing one stands behind all.
void requireFrames(const QByteArray &sent, int count)
{
    const QByteArray closing = protocol::encodeFrame(protocol::ModuleId::Text, 0, "end");
    QList<frameData> frames;
    QByteArray remainder;
    quint32 partial = 0;
    require(!protocol::extractFrames(sent + closing, frames, remainder, partial), "nothing left over");
    require(partial == 0 && frames.size() == count + 1, "every frame comes out again");
    QByteArray again;
    for (const frameData &frame : std::as_const(frames)) {
        require(frame.moduleId < protocol::kModuleCount, "a module that exists");
        again += protocol::encodeFrame(static_cast<protocol::ModuleId>(frame.moduleId), frame.dataType, frame.data,
                                       frame.frameTag);
    }
    require(again == sent + closing, "the same bytes");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *count, char ***arguments)
{
    new QCoreApplication(*count, *arguments); // for the life of the program; qApp holds it
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput input(data, size);
    Pieces pieces(input.byte());
    Board board;
    Shell shell(board);
    QByteArray sent;
    int count = 0;
    QObject::connect(&board, &Board::output, &board, [&](const QByteArray &frame) {
        sent += frame;
        ++count;
    });
    while (!input.isEmpty()) {
        shell.take(input.bytes(pieces.next()));
        pass(gapsMs[pieces.draw() % std::size(gapsMs)]);
        if (board.isHeld() && pieces.draw() % 2 == 0)
            board.powerCycle();
    }
    pass(250); // to the end of a restart
    requireFrames(sent, count);
    return 0;
}
