// SPDX-License-Identifier: MIT
// Reading and writing the bytes of a payload.
#pragma once

#include <QByteArray>

#include <cstring>
#include <utility>

namespace protocol {

/// Bounded reads from a payload. `at` counts bytes from its start; bytes beyond the end read as 0.
class PayloadReader
{
public:
    explicit PayloadReader(const QByteArray &payload) : m_bytes(payload) {}

    int size() const { return m_bytes.size(); }
    bool isEmpty() const { return m_bytes.isEmpty(); }

    quint8 u8(int at) const
    {
        return at >= 0 && at < m_bytes.size() ? static_cast<quint8>(m_bytes.constData()[at]) : quint8(0);
    }
    quint16 u16be(int at) const { return static_cast<quint16>(u8(at) << 8 | u8(at + 1)); }
    quint32 u24be(int at) const { return static_cast<quint32>(u8(at)) << 16 | u16be(at + 1); }
    quint32 u32be(int at) const { return static_cast<quint32>(u16be(at)) << 16 | u16be(at + 2); }
    quint32 u32le(int at) const
    {
        return u8(at) | static_cast<quint32>(u8(at + 1)) << 8 | static_cast<quint32>(u8(at + 2)) << 16
            | static_cast<quint32>(u8(at + 3)) << 24;
    }
    /// IEEE 754 single precision, most significant byte first.
    float f32be(int at) const
    {
        const quint32 bits = u32be(at);
        float value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    /// `size` bytes from `at` on, and the last `size` bytes: fewer where there are fewer.
    QByteArray part(int at, int size) const { return m_bytes.mid(at, size); }
    QByteArray tail(int size) const { return m_bytes.right(size); }

private:
    QByteArray m_bytes;
};

/// Builds a payload field by field.
class PayloadWriter
{
public:
    PayloadWriter &u8(unsigned value)
    {
        m_bytes.append(static_cast<char>(value & 0xFFu));
        return *this;
    }
    PayloadWriter &u16be(unsigned value) { return u8(value >> 8).u8(value); }
    PayloadWriter &u24be(quint32 value) { return u8(value >> 16).u16be(value); }
    PayloadWriter &u32be(quint32 value) { return u16be(value >> 16).u16be(value); }
    PayloadWriter &u32le(quint32 value) { return u8(value).u8(value >> 8).u8(value >> 16).u8(value >> 24); }
    /// IEEE 754 single precision, most significant byte first.
    PayloadWriter &f32be(float value)
    {
        quint32 bits;
        std::memcpy(&bits, &value, sizeof bits);
        return u32be(bits);
    }
    PayloadWriter &bytes(const QByteArray &more)
    {
        m_bytes.append(more);
        return *this;
    }

    QByteArray take() { return std::move(m_bytes); }

private:
    QByteArray m_bytes;
};

} // namespace protocol
