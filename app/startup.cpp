// SPDX-License-Identifier: MIT
#include "app/startup.h"

#include "app/datafiles.h"
#include "app/mainwindow.h"

#include <QApplication>
#include <QScreen>
#include <QScrollArea>
#include <QSplashScreen>

namespace {

constexpr QSize kSize(1440, 900);
constexpr int kTitleBar = 40; // pixels; that of the desktops around is 24 to 38

// Platforms without a screen of their own: the size of the one that they make up says nothing.
bool hasScreen()
{
    const QString platform = QGuiApplication::platformName();
    return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

void makeScrollable(QMainWindow &window)
{
    if (qobject_cast<QScrollArea *>(window.centralWidget()))
        return;
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setAccessibleName(QStringLiteral("Pages and side panel"));
    area->setWidget(window.takeCentralWidget());
    window.setCentralWidget(area);
}

// Before a widget has met the style sheet it asks for less.
QSize smallestSize(QMainWindow &window)
{
    const auto widgets = window.findChildren<QWidget *>();
    for (const QWidget *widget : widgets)
        widget->ensurePolished();
    return window.minimumSizeHint();
}

} // namespace

void fitWindow(QMainWindow &window, const QSize &room)
{
    const QSize least = smallestSize(window);
    if (least.width() > room.width() || least.height() > room.height() - kTitleBar)
        makeScrollable(window);
    window.resize(kSize.boundedTo(room));
    if (room.width() < kSize.width() || room.height() < kSize.height() + kTitleBar)
        window.setWindowState(Qt::WindowMaximized);
}

void keepOnScreen(QMainWindow &window)
{
    if (!hasScreen() || !window.isVisible())
        return;
    QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest); // its smallest size is then known
    const QRect room = window.screen()->availableGeometry();
    const QSize frame = window.frameGeometry().size() - window.size();
    const QSize least = smallestSize(window) + frame;
    if (least.width() > room.width() || least.height() > room.height())
        makeScrollable(window);
    if (window.isMaximized() || window.isFullScreen())
        return;
    window.resize(window.size().boundedTo(room.size() - frame));
    QRect place = window.frameGeometry();
    place.moveRight(qMin(place.right(), room.right()));
    place.moveBottom(qMin(place.bottom(), room.bottom()));
    place.moveTopLeft({qMax(place.left(), room.left()), qMax(place.top(), room.top())});
    window.move(place.topLeft());
}

int runWorkbench(QApplication &application, const std::function<void(MainWindow &)> &shown)
{
    QSplashScreen splash(QPixmap(dataFile(QStringLiteral("./VEK_logo_RGB_web.png"))));
    splash.show();
    QApplication::processEvents();

    MainWindow window;
    if (window.startRefused())
        return 0;
    if (hasScreen())
        fitWindow(window, window.screen()->availableSize());
    else
        window.resize(kSize);
    window.show();
    splash.finish(&window);
    if (shown)
        shown(window);
    return application.exec();
}
