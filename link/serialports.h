// SPDX-License-Identifier: MIT
// Which serial ports there are.
#pragma once

#include <QStringList>

#include <functional>

/// Names of all serial ports present, in the system's order.
QStringList availablePortNames();

/// Puts `source` in the system's place; an empty function gives the place back. For the demonstration, tests and
/// benchmarks, which must never open a port of the machine they run on.
void setAvailablePortNames(std::function<QStringList()> source);
