// SPDX-License-Identifier: MIT
// The pictures of the manual, taken from the running program in front of a virtual board.
#pragma once

#include <QString>
#include <QStringList>

class MainWindow;

/// Carries out the steps of screenshotsteps.h and saves their pictures in `folder`, which is made where missing. `ports`
/// are the names that the program was given. False, with a message on standard error, where a step cannot be taken.
bool takeScreenshots(MainWindow &window, const QString &folder, const QStringList &ports);
