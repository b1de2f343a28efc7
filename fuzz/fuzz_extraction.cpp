// SPDX-License-Identifier: MIT
// Frame extraction in arrivals of any length against the literal model. Byte 0: how the rest is cut.
#include "fuzz/input.h"
#include "link/receivestate.h"
#include "support/literalextraction.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput input(data, size);
    Pieces pieces(input.byte());
    ReceiveState fast;
    ReceiveState plain;
    while (!input.isEmpty()) {
        const QByteArray chunk = input.bytes(pieces.next());
        const QByteArray joined = fast.join(chunk);
        require(joined == plain.join(chunk), "same bytes to parse");
        fast.rxPending = protocol::extractFrames(joined, fast.rxFrames, fast.rxRemainder, fast.rxPartialCount);
        plain.rxPending = literal::extractFrames(joined, plain.rxFrames, plain.rxRemainder, plain.rxPartialCount);
        require(fast.rxFrames == plain.rxFrames, "same frames");
        require(fast.rxPending == plain.rxPending && fast.rxRemainder == plain.rxRemainder, "same remainder");
        require(fast.rxPartialCount == plain.rxPartialCount, "same count of incomplete frames");
    }
    return 0;
}
