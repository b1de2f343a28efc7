// The units that a board has. A further one: its file in units/, its line here, and its line in the table.
#pragma once

#include <memory>
#include <vector>

class Board;
class Unit;

std::unique_ptr<Unit> makeSystem(Board &board);

/// All units, in the order in which they are reset and speak.
std::vector<std::unique_ptr<Unit>> makeUnits(Board &board);
