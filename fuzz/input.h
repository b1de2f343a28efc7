// SPDX-License-Identifier: MIT
// The fuzzer's bytes, taken piece by piece.
#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

class FuzzInput
{
public:
    FuzzInput(const uint8_t *data, std::size_t size) : m_data(data), m_left(size) {}

    bool isEmpty() const { return m_left == 0; }
    /// The next byte; 0 behind the end.
    uint8_t byte()
    {
        if (m_left == 0)
            return 0;
        --m_left;
        return *m_data++;
    }
    /// Up to `most` bytes.
    QByteArray bytes(std::size_t most = SIZE_MAX)
    {
        const std::size_t count = std::min(most, m_left);
        QByteArray taken(reinterpret_cast<const char *>(m_data), static_cast<int>(count));
        m_data += count;
        m_left -= count;
        return taken;
    }

private:
    const uint8_t *m_data;
    std::size_t m_left;
};

/// Lengths of pieces: with seed 0 everything that is left, else 1 to 64, mostly short. The same seed gives the same lengths.
class Pieces
{
public:
    explicit Pieces(uint8_t seed) : m_state(seed) {}

    std::size_t next() { return m_state == 0 ? SIZE_MAX : 1 + draw() % (draw() % 4 == 0 ? 64 : 9); }
    /// From 0 to 2^16 - 1; always 0 with seed 0.
    uint32_t draw()
    {
        if (m_state != 0)
            m_state = m_state * 1103515245 + 12345;
        return m_state >> 16;
    }

private:
    uint32_t m_state;
};

/// Ends the program where `holds` is false: the fuzzer keeps the input.
inline void require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}
