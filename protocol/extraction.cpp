// SPDX-License-Identifier: MIT
#include "protocol/extraction.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace protocol {

namespace {

int u16be(const char *bytes)
{
    return static_cast<quint8>(bytes[0]) << 8 | static_cast<quint8>(bytes[1]);
}

// The next first sync byte, `size` where there is none. The bytes nearby, where it usually is, are compared one by one.
int nextSync(const char *bytes, int at, int size)
{
    for (const int nearby = std::min(at + 8, size); at < nearby; ++at) {
        if (bytes[at] == kSync0)
            return at;
    }
    const void *sync = std::memchr(bytes + at, static_cast<unsigned char>(kSync0), static_cast<size_t>(size - at));
    return sync ? static_cast<int>(static_cast<const char *>(sync) - bytes) : size;
}

// Sync pairs with at least one byte behind them, from the one at `at` on.
quint32 countStarts(const char *bytes, int at, int size)
{
    quint32 count = 0;
    for (; at < size - 2; ++at)
        count += bytes[at] == kSync0 && bytes[at + 1] == kSync1;
    return count;
}

bool endsWell(const char *bytes, int end)
{
    return bytes[end - 2] == kEnd0 && bytes[end - 1] == kEnd1;
}

// A dropped frame takes its whole length along; its last byte only where the first end byte is right.
int behindDropped(const char *bytes, int end)
{
    return bytes[end - 2] == kEnd0 ? end : end - 1;
}

// Bytes of a sync pair, or of its first half, that the data ends in.
int syncAtEnd(const QByteArray &data)
{
    if (data.endsWith(kSync0))
        return 1;
    return data.at(data.size() - 2) == kSync0 && data.endsWith(kSync1) ? 2 : 0;
}

} // namespace

// Replaces a list's frames and reuses their memory: most arrivals are like the one before.
class FrameScan::Sink
{
public:
    explicit Sink(QList<frameData> &frames) : m_frames(frames), m_next(frames.begin()), m_end(frames.end()) {}
    ~Sink() { m_frames.erase(m_next, m_end); }
    Q_DISABLE_COPY(Sink)

    // `frame` points at the sync pair of a whole frame.
    void add(const char *frame, int length)
    {
        if (m_next == m_end)
            grow();
        frameData &slot = *m_next++;
        slot.moduleId = static_cast<uint8_t>(frame[4]);
        slot.dataType = static_cast<uint8_t>(frame[5]);
        slot.frameTag = static_cast<uint16_t>(u16be(frame + 2));
        slot.dataLength = static_cast<uint16_t>(length);
        slot.data.resize(length);
        std::memcpy(slot.data.data(), frame + kHeaderSize, static_cast<size_t>(length));
        slot.handled = false;
    }

private:
    void grow()
    {
        m_frames.append(frameData());
        m_end = m_frames.end();
        m_next = m_end - 1;
    }

    QList<frameData> &m_frames;
    QList<frameData>::iterator m_next;
    QList<frameData>::iterator m_end;
};

bool extractFrames(const QByteArray &data, QList<frameData> &frames, QByteArray &remainder, quint32 &partialCount)
{
    return FrameScan().extract(data, frames, remainder, partialCount);
}

void FrameScan::reset()
{
    for (int k = 1; k < m_counted; ++k) {
        if (m_starts[static_cast<size_t>(k)].end < m_starts.front().end)
            m_endsAt[static_cast<size_t>(m_starts[static_cast<size_t>(k)].end)] = 0;
    }
    m_starts.clear();
    m_earliestEnd = INT_MAX;
    m_counted = 0;
    m_live = 0;
    m_size = 0;
    m_scanned = 0;
}

bool FrameScan::extract(const QByteArray &data, QList<frameData> &frames, QByteArray &remainder, quint32 &partialCount)
{
    const int from = advance(data, frames, partialCount);
    if (data.isEmpty())
        return false;
    remainder = from == 0 ? data : data.mid(from);
    return !remainder.isEmpty();
}

int FrameScan::advance(const QByteArray &data, QList<frameData> &frames, quint32 &partialCount)
{
    Sink sink(frames);
    if (data.isEmpty())
        return 0;
    if (data.size() < kMinParsedSize) {
        ++partialCount;
        return 0;
    }
    const int at = decideCarried(data, sink, partialCount);
    const int scanned = scan(at, data, sink, partialCount);
    int from = m_starts.empty() ? scanned : m_starts.front().at;
    if (from == data.size())
        from -= syncAtEnd(data);
    m_scanned = m_starts.empty() ? 0 : scanned - from;
    carryFrom(from, data.size());
    return from;
}

// Looks whether the new bytes complete a carried start. Returns where the scan goes on.
int FrameScan::decideCarried(const QByteArray &data, Sink &sink, quint32 &partialCount)
{
    if (m_starts.empty())
        return 0;
    const char *const bytes = data.constData();
    const Start first = m_starts.front();
    if (first.end <= data.size()) {
        reset();
        if (endsWell(bytes, first.end))
            sink.add(bytes, first.end - kFrameOverhead);
        return behindDropped(bytes, first.end);
    }
    if (!passEnds(data)) {
        partialCount += m_live;
        return m_scanned;
    }
    const auto incomplete = [&](const Start &start) { return start.end > data.size(); };
    const auto good = std::find_if(m_starts.begin(), m_starts.end(), [&](const Start &start) {
        return !incomplete(start) && endsWell(bytes, start.end);
    });
    partialCount += static_cast<quint32>(std::count_if(m_starts.begin(), good, incomplete));
    const Start found = *good;
    sink.add(bytes + found.at, found.end - found.at - kFrameOverhead);
    reset();
    return found.end;
}

// Walks over the new bytes as possible ends of carried starts. Returns whether one of them ends well.
bool FrameScan::passEnds(const QByteArray &data)
{
    bool good = false;
    for (int end = std::max(m_size + 1, m_earliestEnd); end <= data.size(); ++end) {
        const quint16 ending = m_endsAt[static_cast<size_t>(end)];
        m_live -= ending;
        good = good || (ending > 0 && endsWell(data.constData(), end));
    }
    return good;
}

// Meets every start from `at` on. Returns the place of the first whose length is not known yet, else the data's size.
int FrameScan::scan(int at, const QByteArray &data, Sink &sink, quint32 &partialCount)
{
    const char *const bytes = data.constData();
    const int size = data.size();
    for (;;) {
        const int start = nextSync(bytes, at, size);
        if (start >= size - 1)
            return start;
        at = start + 1;
        if (bytes[at] != kSync1)
            continue;
        ++at;
        if (size - start <= kFrameOverhead) {
            partialCount += countStarts(bytes, start, size);
            return start;
        }
        const int length = u16be(bytes + start + 6);
        const int end = start + kFrameOverhead + length;
        if (end > size) {
            ++partialCount;
            m_starts.push_back({start, end});
        } else if (endsWell(bytes, end)) {
            sink.add(bytes + start, length);
            if (!m_starts.empty())
                reset();
            at = end;
        } else if (m_starts.empty()) {
            at = behindDropped(bytes, end);
        }
    }
}

// Bytes before `from` are dropped; `from` becomes the first byte of the remainder.
void FrameScan::carryFrom(int from, int size)
{
    m_size = size - from;
    if (m_starts.empty())
        return;
    if (m_endsAt.empty())
        m_endsAt.resize(kFrameOverhead + kMaxPayloadSize);
    for (size_t k = static_cast<size_t>(m_counted); k < m_starts.size(); ++k) {
        Start &start = m_starts[k];
        start.at -= from;
        start.end -= from;
        if (k > 0 && start.end < m_starts.front().end) {
            ++m_endsAt[static_cast<size_t>(start.end)];
            m_earliestEnd = std::min(m_earliestEnd, start.end);
        }
    }
    m_live += static_cast<quint32>(m_starts.size()) - static_cast<quint32>(m_counted);
    m_counted = static_cast<int>(m_starts.size());
}

} // namespace protocol
