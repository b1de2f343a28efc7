// SPDX-License-Identifier: MIT
// The application object of every program that shows the window, and the look that it has on every desktop.
#pragma once

#include <QApplication>

class Application : public QApplication
{
public:
    /// Names the program (also to the desktop: `name`.desktop), follows the screen's resolution, and takes neither
    /// style, colours nor fonts from the desktop.
    Application(int &argc, char **argv, const QString &name = QStringLiteral("safety-workbench"));
};

/// Gives the application its light palette and its font, where the desktop or a test has set others.
void applyLook(double scale = 1);
