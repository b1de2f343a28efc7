// SPDX-License-Identifier: MIT
// The rules of frame extraction step by step, a byte at a time: slow, and plain enough to be believed.
#pragma once

#include "protocol/frame.h"

namespace literal {

// Copies from `start` on to the front of the buffer, which never gets shorter.
inline void overwrite(QByteArray &buffer, const QByteArray &data, int start)
{
    for (int k = start; k < data.size(); ++k) {
        if (k - start < buffer.size())
            buffer[k - start] = data.at(k);
        else
            buffer.append(data.at(k));
    }
}

inline bool extractFrames(const QByteArray &data, QList<frameData> &frames, QByteArray &remainder,
                          quint32 &partialCount)
{
    frames.clear();
    const int size = data.size();
    if (size == 0)
        return false;
    if (size < 13) {
        ++partialCount;
        remainder = data;
        return true;
    }
    const auto byte = [&data](int at) { return static_cast<quint8>(data.at(at)); };
    QList<frameData> found;
    QByteArray payload, carry;
    bool pending = false;
    int state = 0, i = 0, start = 0;
    unsigned length = 0;
    while (i < size) {
        if (state == 0) {
            state = byte(i) == 0xA5 ? 1 : 0;
            ++i;
        } else if (state == 1) {
            state = byte(i) == 0xC3 ? 2 : 0;
            ++i;
        } else if (state == 2) {
            start = i - 2;
            length = size - i <= 10 ? 0 : unsigned(byte(i + 4)) << 8 | byte(i + 5);
            if (size - i <= 10 || i + int(length) + 9 >= size) {
                ++partialCount;
                overwrite(carry, data, start);
                pending = true;
                state = 0;
                ++i;
                continue;
            }
            payload.clear();
            for (int k = 0; k < int(length); ++k)
                payload.append(data.at(i + 6 + k));
            carry.clear();
            pending = false;
            state = byte(i + int(length) + 8) == 0xD4 ? 3 : 0;
            i += int(length) + 9;
        } else {
            if (byte(i) == 0xB2) {
                found.append({byte(start + 4), byte(start + 5), quint16(byte(start + 2) << 8 | byte(start + 3)),
                              quint16(length), payload, false});
            }
            state = 0;
            ++i;
        }
    }
    frames = found;
    remainder = pending ? carry : QByteArray();
    return pending;
}

} // namespace literal
