// SPDX-License-Identifier: MIT
#include "link/serialline.h"

#include "link/linetraffic.h"
#include "link/serialports.h"

#include <QFileInfo>

#include <cstdlib>

#ifdef Q_OS_LINUX
#include <asm/termbits.h>
#include <sys/ioctl.h>
#endif

QSerialPort *gSerialPort = new QSerialPort;
QString gPortName;

namespace {

constexpr qint32 kTolerance = kLineBaudRate / 100 * 3; // what receivers of 10-bit characters put up with

QString permissionText(const QSerialPort &port)
{
#ifdef Q_OS_LINUX
    const QFileInfo device(deviceFile(port.portName()));
    if (device.exists() && !(device.isReadable() && device.isWritable()))
        return permissionRemedy(device.group(), device.permissions());
#endif
    return QStringLiteral("no permission, or another program holds it");
}

// The rate that the device really runs at, which may be another than the one asked for. 0: nobody knows.
qint32 deviceBaudRate(const QSerialPort &port)
{
#ifdef Q_OS_LINUX
    termios2 settings = {};
    if (ioctl(port.handle(), TCGETS2, &settings) == 0)
        return static_cast<qint32>(settings.c_ospeed);
#endif
    return 0;
}

} // namespace

bool openLine(QSerialPort &port, const QString &name)
{
    closeLine(port);
    port.setPortName(name);
    if (!port.open(QIODevice::ReadWrite))
        return false;
    port.setBaudRate(kLineBaudRate, QSerialPort::AllDirections);
    port.setDataBits(QSerialPort::Data8);
    port.setFlowControl(QSerialPort::NoFlowControl);
    port.setParity(QSerialPort::NoParity);
    port.setStopBits(QSerialPort::OneStop);
    if (!port.isOpen()) // a device that went away meanwhile has been closed
        return false;
    emit lineTraffic().opened(name);
    return port.isOpen();
}

void closeLine(QSerialPort &port)
{
    if (!port.isOpen())
        return;
    port.clear(QSerialPort::AllDirections);
    port.close();
    emit lineTraffic().closed();
}

void abandonLine(QSerialPort &port)
{
    if (!port.isOpen())
        return;
    const QString reason = port.errorString();
    port.close();
    emit lineTraffic().lost(reason);
}

QByteArray readLine(QSerialPort &port)
{
    QByteArray bytes = port.isOpen() ? port.readAll() : QByteArray();
    if (!bytes.isEmpty())
        emit lineTraffic().received(bytes);
    return bytes;
}

void writeLine(QSerialPort &port, const QByteArray &bytes)
{
    if (port.write(bytes) > 0)
        emit lineTraffic().sent(bytes);
}

bool isLineLost(QSerialPort::SerialPortError error)
{
    return error == QSerialPort::ReadError || error == QSerialPort::ResourceError;
}

QString openFailureText(const QSerialPort &port)
{
    if (port.portName().isEmpty()) {
        return QStringLiteral(
            "No serial port was found: plug the board in, or start the demonstration with a virtual board");
    }
    switch (port.error()) {
    case QSerialPort::DeviceNotFoundError:
        return QStringLiteral("no such device; is the board plugged in?");
    case QSerialPort::PermissionError:
        return permissionText(port);
    default:
        return port.errorString();
    }
}

QString permissionRemedy(const QString &group, QFileDevice::Permissions rights)
{
    constexpr QFileDevice::Permissions needed = QFileDevice::ReadGroup | QFileDevice::WriteGroup;
    if ((rights & needed) == needed && !group.isEmpty() && group != QLatin1String("root")) {
        return QStringLiteral("no permission: the device belongs to group %1; type "
                              "\"sudo usermod -aG %1 $USER\" and log in again")
            .arg(group);
    }
    return QStringLiteral("no permission: install the rule 60-safety-workbench.rules of this program's package in "
                          "/etc/udev/rules.d and plug the board in again");
}

QString lineTrouble(const QSerialPort &port)
{
    const qint32 rate = port.isOpen() ? deviceBaudRate(port) : 0;
    if (rate == 0 || std::abs(rate - kLineBaudRate) <= kTolerance)
        return {};
    return QStringLiteral("the adapter runs at %1 bit/s and refuses the %2 bit/s of the board")
        .arg(rate)
        .arg(kLineBaudRate);
}
