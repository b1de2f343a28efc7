// SPDX-License-Identifier: MIT
// A tour through the pages of the window, one numbered picture per page.
#pragma once

#include <QString>

class MainWindow;

/// Turns to every page of every tab, waits for the board's answers and saves "01-safety-module-cmu.png" and so on in
/// `folder`, which is made where missing; on a bad cable without the answers that got lost. False, with a message on
/// standard error, where a picture cannot be saved.
bool takeTour(MainWindow &window, const QString &folder);
