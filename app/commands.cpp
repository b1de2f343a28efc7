// SPDX-License-Identifier: MIT
#include "app/mainwindow.h"
#include "link/commandchannel.h"

#include <QThread>

#include <algorithm>

void MainWindow::Command_write(QString command)
{
    sendCommand(command);
}

void MainWindow::noblockdelay(int milliseconds)
{
    delayMs(milliseconds);
}

void MainWindow::blockdelay(int milliseconds)
{
    QThread::msleep(static_cast<unsigned long>(std::max(milliseconds, 0)));
}
