// SPDX-License-Identifier: MIT
#include "simulator/units.h"

#include "simulator/unit.h"

namespace simulator {

namespace {

using Factory = std::unique_ptr<Unit> (*)(Board &);

constexpr Factory factories[] = {
    makeSystem,           makeFaultCollection,  makeResetGeneration,    makeSelfTest,
    makeClockMonitors,    makePowerManagement,  makePowerChip,          makeCrossbarCheckers,
    makeMemoryProtection, makeMemoryErrors,     makeRegisterProtection, makeChecksumUnit,
    makeWatchdogs,        makeInterruptMonitor, makeCryptoEngine,       makeSignalProcessing,
};

} // namespace

std::vector<std::unique_ptr<Unit>> makeUnits(Board &board)
{
    std::vector<std::unique_ptr<Unit>> units;
    for (const Factory make : factories)
        units.push_back(make(board));
    return units;
}

} // namespace simulator
