// SPDX-License-Identifier: MIT
// The port: choosing, opening and closing it, and its text in the status bar.
#include "app/mainwindow.h"
#include "app/linestatus.h"
#include "app/messagebox.h"
#include "link/portidentity.h"
#include "link/serialline.h"
#include "link/serialportconfig.h"
#include "link/serialports.h"

#include <QCloseEvent>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QStatusBar>

namespace {

// A box with nothing but ports in it can still be left without choosing one: by Escape or its close button.
class PortBox : public QMessageBox
{
public:
    explicit PortBox(QWidget *parent) : QMessageBox(parent)
    {
        connect(new QShortcut(QKeySequence::Cancel, this), &QShortcut::activated, this, &QDialog::reject);
    }

protected:
    void closeEvent(QCloseEvent *event) override
    {
        event->accept();
        reject();
    }
};

// Its own copy of the names: while the box is open the list can be made anew.
QString selectPort(QWidget *parent, const QStringList names)
{
    PortBox box(boxParent(parent));
    box.setTextFormat(Qt::PlainText);
    box.setText(QStringLiteral("Please select"));
    box.setInformativeText(QStringLiteral("Please select serialport name which used by GUI."));
    QList<QAbstractButton *> buttons;
    for (const QString &name : names) {
        QAbstractButton *button = box.addButton(name, QMessageBox::AcceptRole);
        button->ensurePolished(); // gives it the style sheet's least width, which a long name does not fit into
        button->setMinimumWidth(button->sizeHint().width());
        buttons.append(button);
    }
    box.exec();
    return names.value(buttons.indexOf(box.clickedButton()));
}

} // namespace

/// Without a port the user is asked whether to go on; returns the answer.
bool MainWindow::askForPort()
{
    return inform(this, QStringLiteral("Please check"), QStringLiteral("Can not open serial port. Are you continue?"),
                  QMessageBox::Yes | QMessageBox::No, QMessageBox::No,
                  QStringLiteral("No serial port was found: plug the board in, or start the demonstration with a "
                                 "virtual board."))
        == QMessageBox::Yes;
}

/// Returns false when there is no port and the user does not want to go on.
bool MainWindow::choosePort()
{
    portNameList = availablePortNames();
    if (portNameList.isEmpty())
        return askForPort();
    closeLine(*gSerialPort);
    gPortName = portNameList.size() == 1 ? portNameList.first() : selectPort(this, portNameList);
    gSerialPort->setPortName(gPortName);
    return true;
}

void MainWindow::openChosenPort()
{
    if (!openLine(*gSerialPort, gPortName)) {
        const QString reason = openFailureText(*gSerialPort);
        showPortState(reason);
        inform(this, QStringLiteral("Warning"), QStringLiteral("Serialport can not open, please check."),
               QMessageBox::Yes, QMessageBox::NoButton, reason);
        return;
    }
    listenToPort();
}

void MainWindow::listenToPort()
{
    showPortState(lineTrouble(*gSerialPort));
    // Required: each opening adds one more connection. The calls beyond the first find no bytes and change nothing.
    connect(gSerialPort, &QSerialPort::readyRead, this, qOverload<>(&MainWindow::receiveData), Qt::QueuedConnection);
}

void MainWindow::Serialport_open()
{
    if (gPortName.isEmpty()) {
        if (!choosePort() || (gPortName.isEmpty() && !portNameList.isEmpty()))
            return;
    }
    openChosenPort();
}

// Chosen in the line's panel: whatever stood open before, this is the port from now on.
void MainWindow::usePort(const QString &name)
{
    gPortName = name;
    openChosenPort();
    if (gSerialPort->isOpen())
        askAsAtStart();
}

// The device that was lost is back, perhaps under another name. While it is not ready, nothing is said: it is tried again.
void MainWindow::reopenPort(const QString &name)
{
    if (hasConsole() || gSerialPort->isOpen() || !openLine(*gSerialPort, name))
        return;
    gPortName = name;
    listenToPort();
    askAsAtStart();
}

void MainWindow::Serialport_close()
{
    closeLine(*gSerialPort);
    m_line->giveUp();
    showPortState();
}

void MainWindow::reOpenSerialPort()
{
    if (inform(this, QStringLiteral("Please select"), QStringLiteral("Contiue or quit.?"),
               QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
        == QMessageBox::Yes)
        Serialport_open();
}

void MainWindow::SP_config()
{
    if (m_portDialog)
        m_portDialog->exec();
}

void MainWindow::NoSP_config()
{
    inform(this, QStringLiteral("Warning"), QStringLiteral("No Available Serialport is found"), QMessageBox::Yes);
}

// A device that is gone reports this as fast as events are processed, until the port is closed.
void MainWindow::onPortError(QSerialPort::SerialPortError error)
{
    if (!gSerialPort->isOpen() || !isLineLost(error))
        return;
    abandonLine(*gSerialPort);
    showPortState(canComeBack(gPortName)
                      ? QStringLiteral("connection lost; plug the board in, and the port is opened by itself")
                      : QStringLiteral("connection lost; plug the board in and choose \"open\" again"));
}

void MainWindow::showPortState(const QString &trouble)
{
    const QString name = gPortName.isEmpty() ? QStringLiteral("no port chosen") : gPortName;
    const QString state = gSerialPort->isOpen() ? QStringLiteral("open") : QStringLiteral("closed");
    m_portState->setText(trouble.isEmpty() ? QStringLiteral("Port: %1 - %2").arg(name, state)
                                           : QStringLiteral("Port: %1 - %2: %3").arg(name, state, trouble));
    m_portState->setToolTip(trouble);
    m_portState->setVisible(!gSerialPort->isOpen() || !trouble.isEmpty()); // the lamp says it while all is well
    m_line->setTrouble(trouble);
}
