#include "protocol/frame.h"

#include "protocol/payload.h"

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
    QByteArray carry;
    if (starts.empty())
        return carry;
    carry.reserve(data.size() - starts.front());
    for (auto start = starts.rbegin(); start != starts.rend(); ++start) {
        const int from = *start + carry.size();
        carry.append(data.constData() + from, data.size() - from);
    }
    return carry;
}

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
    frames.clear();
    if (data.isEmpty())
        return false;
    if (data.size() < kSmallestParsed) {
        ++partialCount;
        remainder = data;
        return true;
    }

    const char *const bytes = data.constData();
    const int size = data.size();
    const PayloadReader read(data);
    std::vector<int> incomplete;
    int at = 0;
    while (at < size) {
        const void *sync = std::memchr(bytes + at, kSync0, static_cast<size_t>(size - at));
        if (!sync)
            break;
        const int start = static_cast<int>(static_cast<const char *>(sync) - bytes);
        at = start + 2; // a first sync byte takes the byte behind it along, another sync byte too
        if (at >= size || bytes[start + 1] != kSync1)
            continue;

        const int length = size - at > kBehindSync ? read.u16be(start + 6) : kLargestPayload;
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
        if (bytes[end + 1] == kEnd1) {
            frames.append({read.u8(start + 4), read.u8(start + 5), read.u16be(start + 2),
                           static_cast<uint16_t>(length), QByteArray(bytes + start + kHeaderSize, length), false});
        }
        at = end + 2;
    }

    remainder = carryOf(data, incomplete);
    return !incomplete.empty();
}

} // namespace protocol
