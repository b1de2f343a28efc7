// SPDX-License-Identifier: MIT
// Frame extraction in arrivals of any length against the literal model. Byte 0: how the rest is cut. Longer inputs find
// nothing more, and the model is slow.
// libFuzzer: -max_len=256
#include "fuzz/input.h"
#include "link/receivestate.h"
#include "support/literalextraction.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput input(data, size);
    Pieces pieces(input.byte());
    ReceiveState state;
    ReceiveState plain; // the literal model's: the same bytes joined by hand, parsed anew with each arrival
    while (!input.isEmpty()) {
        const QByteArray chunk = input.bytes(pieces.next());
        state.rxFrames.clear();
        state.take(chunk);
        if (chunk.isEmpty())
            continue;
        const bool continues = plain.rxPending && plain.rxRemainder.startsWith(protocol::kSync0);
        const QByteArray joined = continues ? plain.rxRemainder + chunk : chunk;
        plain.rxRemainder.clear();
        plain.rxPending = literal::extractFrames(joined, plain.rxFrames, plain.rxRemainder, plain.rxPartialCount);
        require(state.rxFrames == plain.rxFrames, "same frames");
        require(state.rxPending == plain.rxPending && state.rxRemainder == plain.rxRemainder, "same remainder");
        require(state.rxPartialCount == plain.rxPartialCount, "same count of incomplete frames");
    }
    return 0;
}
