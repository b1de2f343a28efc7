// SPDX-License-Identifier: MIT
#include "app/startup.h"

#include "app/mainwindow.h"

#include <QApplication>
#include <QSplashScreen>

int runWorkbench(QApplication &application, const std::function<void(MainWindow &)> &shown)
{
    QSplashScreen splash(QPixmap(QStringLiteral("./VEK_logo_RGB_web.png")));
    splash.show();
    QApplication::processEvents();

    MainWindow window;
    if (window.startRefused())
        return 0;
    window.resize(1440, 900);
    window.show();
    splash.finish(&window);
    if (shown)
        shown(window);
    return application.exec();
}
