// SPDX-License-Identifier: MIT
// The rules of frame extraction step by step, a byte at a time: slow, and plain enough to be believed.
#pragma once

#include "protocol/frame.h"

namespace literal {

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
    int first = -1; // incomplete start behind the last good frame
    int state = 0, i = 0;
    while (i < size) {
        if (state == 0) {
            state = byte(i) == 0xA5 ? 1 : 0;
            ++i;
        } else if (state == 1) {
            state = byte(i) == 0xC3 ? 2 : byte(i) == 0xA5 ? 1 : 0;
            ++i;
        } else {
            state = 0;
            const int start = i - 2;
            const int length = size - i <= 10 ? 0 : byte(i + 4) << 8 | byte(i + 5);
            const int end = start + length + 12;
            if (size - i <= 10 || end > size) {
                ++partialCount;
                if (first < 0)
                    first = start;
            } else if (byte(end - 2) == 0xD4 && byte(end - 1) == 0xB2) {
                found.append({byte(start + 4), byte(start + 5), quint16(byte(start + 2) << 8 | byte(start + 3)),
                              quint16(length), data.mid(start + 8, length), false});
                first = -1;
                i = end;
            } else if (first < 0) {
                i = byte(end - 2) == 0xD4 ? end : end - 1;
            }
        }
    }
    if (first < 0 && byte(size - 1) == 0xA5)
        first = size - 1;
    if (first < 0 && byte(size - 2) == 0xA5 && byte(size - 1) == 0xC3)
        first = size - 2;
    frames = found;
    remainder = first < 0 ? QByteArray() : data.mid(first);
    return first >= 0;
}

} // namespace literal
