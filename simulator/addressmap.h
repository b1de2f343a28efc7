// SPDX-License-Identifier: MIT
// Address map of the microcontroller, as far as the units look at addresses.
#pragma once

#include <QtGlobal>

namespace simulator::addressmap {

struct Range {
    quint32 base;
    quint32 size; // bytes

    constexpr quint32 last() const { return base + (size - 1); }
    constexpr bool contains(quint32 address) const { return address - base < size; }
};

// clang-format off
inline constexpr Range utestFlash    = {0x00400000, 0x00004000};
inline constexpr Range eepromFlash   = {0x00800000, 0x00010000};
inline constexpr Range mainFlash     = {0x01000000, 0x00400000};
inline constexpr Range systemRam     = {0x40000000, 0x00100000};
inline constexpr Range sramBank0     = {0x40000000, 0x00010000}; // of the system RAM
inline constexpr Range radarData     = {0x40080000, 0x00020000}; // of the system RAM, filled by the DMA
inline constexpr Range k4Tcm         = {0x50800000, 0x00010000};
inline constexpr Range k7aTcm        = {0x51800000, 0x00010000};
inline constexpr Range peripherals1  = {0xFC000000, 0x00100000}; // behind PBRIDGE_1
inline constexpr Range peripheralRam = {0xFFE00000, 0x00004000};
// clang-format on

} // namespace simulator::addressmap
