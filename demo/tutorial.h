// SPDX-License-Identifier: MIT
// The tutorial: five faults, injected, caught and explained in the real window, and recorded.
#pragma once

#include <QString>

class MainWindow;

/// Plays the tutorial on the display, which it needs for itself, and records it in `file`. False, with a message on
/// standard error, where the recording failed or the board did not do what the captions say.
bool recordTutorial(MainWindow &window, const QString &file);
