// SPDX-License-Identifier: MIT
// The time of a packet.
#pragma once

#include <QtGlobal>

#include <chrono>

namespace session {

/// Nanoseconds per second, the unit of all times here.
inline constexpr qint64 kPerSecond = 1'000'000'000;

/// Nanoseconds since 1970, UTC, that never go back: the time of day at the clock's making, then a steady count.
class Clock
{
public:
    qint64 now() const { return m_day + std::chrono::nanoseconds(std::chrono::steady_clock::now() - m_start).count(); }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    qint64 m_day = std::chrono::nanoseconds(std::chrono::system_clock::now().time_since_epoch()).count();
};

} // namespace session
