// SPDX-License-Identifier: MIT
#include "protocol/mechanism.h"

namespace protocol {

namespace {

struct Run {
    quint8 first;
    quint8 last;
    ModuleId module;
};

// clang-format off
constexpr Run runs[] = {
    {0, 3, ModuleId::Pmc},
    {13, 15, ModuleId::Swt},
    {16, 24, ModuleId::Memu},
    {25, 39, ModuleId::Cmu}, // clock generators and monitors
    {46, 50, ModuleId::Xbic},
    {75, 83, ModuleId::Intcm},
    {87, 90, ModuleId::Cmu},
    {95, 103, ModuleId::Memu}, // caches and tightly coupled memories
    {104, 105, ModuleId::Smpu},
    {107, 107, ModuleId::Xbic},
    {112, 114, ModuleId::Swt},
    {115, 115, ModuleId::Spt},
    {121, 121, ModuleId::Spt},
};
// clang-format on

} // namespace

ModuleId mechanismOf(quint8 fault)
{
    for (const Run &run : runs) {
        if (fault >= run.first && fault <= run.last)
            return run.module;
    }
    return ModuleId::Fccu;
}

} // namespace protocol
