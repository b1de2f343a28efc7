// SPDX-License-Identifier: MIT
#include "demo/screenshots.h"

#include "app/mainwindow.h"
#include "demo/screenshotsteps.h"
#include "link/serialline.h"
#include "link/serialports.h"

namespace {

constexpr QSize kWindow(1200, 760);

// As at a start with two boards plugged in.
void askForPort(MainWindow &window, const QStringList &ports)
{
    gPortName.clear();
    setAvailablePortNames([ports] { return ports + QStringList{QStringLiteral("ttyUSB0")}; });
    window.Serialport_open();
    setAvailablePortNames([ports] { return ports; });
}

} // namespace

bool takeScreenshots(MainWindow &window, const QString &folder, const QStringList &ports)
{
    window.resize(kWindow);
    script::Player player(window);
    player.setFolder(folder);
    player.addCall("askForPort", [&] { askForPort(window, ports); });
    return player.play(screenshots::steps);
}
