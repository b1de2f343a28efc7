// SPDX-License-Identifier: MIT
// Numbers in command arguments.
#pragma once

#include <QString>

#include <optional>

namespace simulator {

/// A decimal number from 0 to `most`; nothing for any other text.
inline std::optional<unsigned> decimal(const QString &text, unsigned most)
{
    bool ok = false;
    const unsigned value = text.toUInt(&ok, 10);
    return ok && value <= most ? std::optional(value) : std::nullopt;
}

/// A hexadecimal number from 0 to `most`, "0x" before it or not; nothing for any other text.
inline std::optional<quint32> hexadecimal(const QString &text, quint32 most = 0xFFFFFFFF)
{
    bool ok = false;
    const quint32 value = text.toUInt(&ok, 16);
    return ok && value <= most ? std::optional(value) : std::nullopt;
}

} // namespace simulator
