// SPDX-License-Identifier: MIT
// The way from the application object to the event loop and back.
#pragma once

#include <functional>

class MainWindow;
class QApplication;
class QMainWindow;
class QSize;

/// Shows the splash picture while the window is built and asks its first questions, then the window, and runs the event
/// loop. `shown` is called once the window stands. Returns the program's exit code; 0 when the user declined to start.
int runWorkbench(QApplication &application, const std::function<void(MainWindow &)> &shown = {});

/// Gives the window, not shown yet, its size of 1440 by 900 pixels. Where `room`, the screen without its panels, is
/// smaller or has no place left for a title bar, the window will be maximised; where even its smallest size does not
/// fit, its content scrolls.
void fitWindow(QMainWindow &window, const QSize &room);

/// Lets the content of a window scroll that has grown beyond its screen, and keeps the window within the screen.
void keepOnScreen(QMainWindow &window);
