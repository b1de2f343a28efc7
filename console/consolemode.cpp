// Entering the console from the main window and leaving it again.
#include "app/mainwindow.h"
#include "console/consoleform.h"
#include "link/serialline.h"

#include <QEventLoop>

void MainWindow::console_mode()
{
    closeLine(*gSerialPort);
    auto *console = new consoleForm;
    console->setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    console->setWindowModality(Qt::ApplicationModal);
    console->setAttribute(Qt::WA_DeleteOnClose);
    console->show();
    m_console = console;
    QEventLoop untilClosed;
    connect(console, &consoleForm::finish, &untilClosed, &QEventLoop::quit);
    untilClosed.exec();
    if (m_console)
        m_console->close(); // the program ends
    showPortState(gSerialPort->isOpen() ? QString() : openFailureText(*gSerialPort));
}
