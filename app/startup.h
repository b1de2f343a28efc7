// SPDX-License-Identifier: MIT
// The way from the application object to the event loop and back.
#pragma once

#include <functional>

class MainWindow;
class QApplication;

/// Shows the splash picture while the window is built and asks its first questions, then the window, and runs the event
/// loop. `shown` is called once the window stands. Returns the program's exit code; 0 when the user declined to start.
int runWorkbench(QApplication &application, const std::function<void(MainWindow &)> &shown = {});
