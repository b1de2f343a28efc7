// SPDX-License-Identifier: MIT
// Ctrl+C and its relatives.
#pragma once

#include <functional>

class QObject;

/// From now on SIGINT, SIGTERM and SIGHUP are noted, and `woken` is called from the event loop while `context` lives.
void onInterrupt(QObject *context, std::function<void()> woken);

/// True once one of them has come.
bool interrupted();
