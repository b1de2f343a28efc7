// SPDX-License-Identifier: MIT
#include "protocol/bist.h"

#include "protocol/payload.h"

namespace protocol::bist {

namespace {

QBitArray partitions(quint8 byte)
{
    QBitArray flags(kLbistCount);
    for (int i = 0; i < kLbistCount; ++i)
        flags.setBit(i, byte >> (kLbistCount - 1 - i) & 1);
    return flags;
}

QBitArray cuts(const PayloadReader &read, int at)
{
    constexpr int bytes = kMbistCount / 8;
    QBitArray flags(kMbistCount);
    for (int i = 0; i < kMbistCount; ++i)
        flags.setBit(i, read.u8(at + bytes - 1 - i / 8) >> (i % 8) & 1);
    return flags;
}

} // namespace

Results decodeResults(const QByteArray &payload)
{
    const PayloadReader read(payload);
    return {partitions(read.u8(1)), partitions(read.u8(2)), cuts(read, 3), cuts(read, 15)};
}

} // namespace protocol::bist
