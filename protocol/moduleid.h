// SPDX-License-Identifier: MIT
// The modules of the board that send frames.
#pragma once

#include <QtGlobal>

namespace protocol {

/// Module identifier, byte 4 of a frame.
enum class ModuleId : quint8 {
    Text = 0,
    Sys = 1,
    Cmu = 2,
    Xbic = 3,
    Smpu = 4,
    RegProt = 5,
    Crc = 6,
    Memu = 7,
    Intcm = 8,
    Bist = 9,
    Pmc = 10,
    Swt = 11,
    Fccu = 12,
    Reset = 13,
    Vg5k = 14,
    Cse = 15,
    Spt = 16,
};

/// Number of module identifiers in use: 0 to 16.
inline constexpr int kModuleCount = 17;
static_assert(static_cast<int>(ModuleId::Spt) + 1 == kModuleCount);

} // namespace protocol
