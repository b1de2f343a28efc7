// SPDX-License-Identifier: MIT
// Entering the console from the main window and leaving it again.
#include "app/mainwindow.h"
#include "console/consoleform.h"
#include "link/serialline.h"

#include <QEventLoop>

void MainWindow::console_mode()
{
    closeLine(*gSerialPort);
    showPortState(QStringLiteral("the console has it"));
    m_console = new consoleForm;
    m_console->setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    m_console->setWindowModality(Qt::ApplicationModal);
    m_console->setAttribute(Qt::WA_DeleteOnClose);
    m_console->show();
    QEventLoop untilClosed;
    connect(m_console, &consoleForm::finish, &untilClosed, &QEventLoop::quit);
    untilClosed.exec();
    if (m_console)
        m_console->close(); // the program ends
    showPortState(gSerialPort->isOpen() ? QString() : openFailureText(*gSerialPort));
}

/// The console is open and has the line.
bool MainWindow::hasConsole() const
{
    return m_console;
}
