// SPDX-License-Identifier: MIT
// Signals of the operating system as events of the program.
#pragma once

#include <functional>
#include <initializer_list>

class QObject;

namespace simulator {

/// Calls `handler` with the number of each of these signals that arrives, from the event loop, while `context` lives.
/// To be called once per program.
void onSignals(std::initializer_list<int> numbers, QObject *context, std::function<void(int)> handler);

} // namespace simulator
