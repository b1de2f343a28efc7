// SPDX-License-Identifier: MIT
// The application object of the targets that need one, without a display.
#pragma once

#include <QApplication>

inline void makeApplication(int *count, char ***arguments)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*=false");
    new QApplication(*count, *arguments); // for the life of the program; qApp holds it
    QApplication::setQuitOnLastWindowClosed(false);
}
