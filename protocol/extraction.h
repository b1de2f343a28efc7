// SPDX-License-Identifier: MIT
// Cutting frames out of a byte stream that arrives in pieces.
//
// For an undamaged stream every way to cut it into arrivals gives the same frames, each once and in order, unless a
// payload itself holds a whole good frame. There is no checksum, so a sync pair inside a payload looks like a frame's
// start; a start that is not yet complete is therefore only a candidate, and the first good frame behind it wins.
#pragma once

#include "protocol/frame.h"

#include <climits>
#include <vector>

namespace protocol {

/// Fewer bytes than this are never parsed, only carried over.
inline constexpr int kMinParsedSize = 13;

/// Cuts `data` into frames: `frames` is replaced by the complete ones, `remainder` by the bytes to put before the next
/// arrival: everything from the first incomplete start behind the last good frame, or a sync pair's beginning at the end.
/// Returns true when there are such bytes; empty `data` returns false and leaves `remainder` as it is. `partialCount`
/// grows by one per incomplete start. Linear in the data.
bool extractFrames(const QByteArray &data, QList<frameData> &frames, QByteArray &remainder, quint32 &partialCount);

/// The same over several arrivals, scanning each byte once however long a remainder is carried.
class FrameScan
{
public:
    /// As extractFrames(). `data` is the remainder that the last call returned with the new bytes behind it; where it
    /// is not, reset() must come first.
    bool extract(const QByteArray &data, QList<frameData> &frames, QByteArray &remainder, quint32 &partialCount);

    /// The same for a caller with a buffer of its own: returns where in `data` the remainder begins.
    int advance(const QByteArray &data, QList<frameData> &frames, quint32 &partialCount);

    /// The next data is not a continuation.
    void reset();

private:
    class Sink;
    struct Start {
        int at;
        int end; // one beyond the last byte that it announces
    };

    int decideCarried(const QByteArray &data, Sink &sink, quint32 &partialCount);
    bool passEnds(const QByteArray &data);
    int scan(int at, const QByteArray &data, Sink &sink, quint32 &partialCount);
    void carryFrom(int from, int size);

    // Offsets count from the carried remainder's first byte, which is where the first start stands.
    std::vector<Start> m_starts;   // incomplete when met, in order; their lengths are known
    std::vector<quint16> m_endsAt; // starts behind the first that end here, before the first one does
    int m_earliestEnd = INT_MAX;   // of those
    int m_counted = 0;             // of m_starts, those that m_endsAt and m_live include
    quint32 m_live = 0;            // of m_starts, those that are still incomplete
    int m_size = 0;                // of the remainder
    int m_scanned = 0;             // its bytes in which every start has been met
};

} // namespace protocol
