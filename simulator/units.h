// SPDX-License-Identifier: MIT
// The units of a board. To add one: a file in units/, a line here, and a line in the table of units.cpp.
#pragma once

#include <memory>
#include <vector>

namespace simulator {

class Board;
class Unit;

std::unique_ptr<Unit> makeSystem(Board &board);
std::unique_ptr<Unit> makeFaultCollection(Board &board);
std::unique_ptr<Unit> makeResetGeneration(Board &board);
std::unique_ptr<Unit> makeSelfTest(Board &board);
std::unique_ptr<Unit> makeClockMonitors(Board &board);
std::unique_ptr<Unit> makePowerManagement(Board &board);
std::unique_ptr<Unit> makePowerChip(Board &board);
std::unique_ptr<Unit> makeCrossbarCheckers(Board &board);
std::unique_ptr<Unit> makeMemoryProtection(Board &board);
std::unique_ptr<Unit> makeMemoryErrors(Board &board);
std::unique_ptr<Unit> makeRegisterProtection(Board &board);
std::unique_ptr<Unit> makeChecksumUnit(Board &board);
std::unique_ptr<Unit> makeWatchdogs(Board &board);
std::unique_ptr<Unit> makeInterruptMonitor(Board &board);
std::unique_ptr<Unit> makeCryptoEngine(Board &board);
std::unique_ptr<Unit> makeSignalProcessing(Board &board);

/// All units, in the order in which they are reset and announce themselves.
std::vector<std::unique_ptr<Unit>> makeUnits(Board &board);

} // namespace simulator
