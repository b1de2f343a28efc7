// SPDX-License-Identifier: MIT
// The application object of the targets that need one, without a display.
#pragma once

#include <QApplication>

inline void makeApplication(int *count, char ***arguments)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*=false");
    qputenv("QT_NO_GLIB", "1"); // the plain event loop: it waits by the call that support/fakeclock.cpp replaces
    new QApplication(*count, *arguments); // for the life of the program; qApp holds it
    QApplication::setQuitOnLastWindowClosed(false);
}
