// SPDX-License-Identifier: MIT
// A tour through the pages of the window, one numbered picture a page.
#pragma once

#include <QString>

class MainWindow;

/// Turns to every page of every tab, waits for the board's answers and saves "01-safety-module-cmu.png" and so on in
/// `folder`, which is made where missing. Returns the number of pictures saved.
int takeTour(MainWindow &window, const QString &folder);
