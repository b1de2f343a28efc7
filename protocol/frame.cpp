// SPDX-License-Identifier: MIT
#include "protocol/frame.h"

#include "protocol/payload.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace protocol {

namespace {

// A tag, the identifiers, the length, the payload's trailing bytes and the first end byte lie behind the sync pair.
constexpr int kBehindSync = kFrameOverhead - 2;
constexpr unsigned kSyncWord = 0xA5C3;
constexpr unsigned kEndWord = 0xD4B2;

// Every incomplete start copies itself to the front of the carry buffer and leaves what is longer behind it. Seen
// from the end: the last start gives the first bytes, each earlier one only those beyond its successor's length.
QByteArray carryOf(const QByteArray &data, const std::vector<int> &starts)
{
    if (starts.empty())
        return {};
    QByteArray carry(data.size() - starts.front(), Qt::Uninitialized);
    char *const to = carry.data();
    int filled = 0;
    for (auto start = starts.rbegin(); start != starts.rend(); ++start) {
        const int length = data.size() - *start;
        std::memcpy(to + filled, data.constData() + *start + filled, static_cast<size_t>(length - filled));
        filled = length;
    }
    return carry;
}

int u16be(const char *bytes)
{
    return static_cast<quint8>(bytes[0]) << 8 | static_cast<quint8>(bytes[1]);
}

// The next first sync byte, `size` where there is none. It is looked for by hand nearby, where it mostly stands.
int nextSync(const char *bytes, int at, int size)
{
    for (const int nearby = std::min(at + 8, size); at < nearby; ++at) {
        if (bytes[at] == kSync0)
            return at;
    }
    const void *sync = std::memchr(bytes + at, static_cast<unsigned char>(kSync0), static_cast<size_t>(size - at));
    return sync ? static_cast<int>(static_cast<const char *>(sync) - bytes) : size;
}

// Replaces a list's frames, in the memory of those that it holds: most arrivals are like the one before.
class FrameSink
{
public:
    explicit FrameSink(QList<frameData> &frames) : m_frames(frames), m_next(frames.begin()), m_end(frames.end()) {}
    ~FrameSink() { m_frames.erase(m_next, m_end); }
    Q_DISABLE_COPY(FrameSink)

    // `frame` is a whole frame from its sync pair on.
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

} // namespace

QByteArray encodeFrame(ModuleId module, quint8 type, const QByteArray &payload, quint16 tag)
{
    const QByteArray body = payload.left(kLargestPayload);
    PayloadWriter frame;
    frame.u16be(kSyncWord).u16be(tag).u8(static_cast<quint8>(module)).u8(type);
    frame.u16be(static_cast<quint16>(body.size())).bytes(body).u16be(0).u16be(kEndWord);
    return frame.take();
}

bool extractFrames(const QByteArray &data, QList<frameData> &frames, QByteArray &remainder, quint32 &partialCount)
{
    FrameSink sink(frames);
    if (data.isEmpty())
        return false;
    if (data.size() < kSmallestParsed) {
        ++partialCount;
        remainder = data;
        return true;
    }

    const char *const bytes = data.constData();
    const int size = data.size();
    std::vector<int> incomplete;
    incomplete.reserve(static_cast<size_t>(size) / 8); // as many starts as lie densely, without growing on the way
    for (int at = 0; at < size;) {
        const int start = nextSync(bytes, at, size);
        at = start + 2; // a first sync byte takes the byte behind it along, another sync byte too
        if (at >= size || bytes[start + 1] != kSync1)
            continue;

        const int length = size - at > kBehindSync ? u16be(bytes + start + 6) : kLargestPayload;
        const int end = start + kHeaderSize + length + 2;
        if (end + 1 >= size) {
            ++partialCount;
            incomplete.push_back(start);
            at = start + 3;
            continue;
        }
        incomplete.clear();
        at = end + 1;
        if (bytes[end] != kEnd0)
            continue;
        if (bytes[end + 1] == kEnd1)
            sink.add(bytes + start, length);
        at = end + 2;
    }

    remainder = carryOf(data, incomplete);
    return !incomplete.empty();
}

} // namespace protocol
