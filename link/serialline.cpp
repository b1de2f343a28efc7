// SPDX-License-Identifier: MIT
#include "link/serialline.h"

#include "link/linetraffic.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSerialPortInfo>

QSerialPort *gSerialPort = new QSerialPort;
QString gPortName;

namespace {

QString deviceFile(const QSerialPort &port)
{
    const QString name = port.portName();
    return name.startsWith(QLatin1Char('/')) ? name : QStringLiteral("/dev/") + name;
}

QString permissionText(const QSerialPort &port)
{
#ifdef Q_OS_LINUX
    const QFileInfo device(deviceFile(port));
    if (device.exists() && !(device.isReadable() && device.isWritable()) && !device.group().isEmpty()) {
        return QCoreApplication::translate("SerialLine",
                                           "no permission: the device belongs to group %1; type "
                                           "\"sudo usermod -aG %1 $USER\" and log in again")
            .arg(device.group());
    }
#endif
    return QCoreApplication::translate("SerialLine", "no permission, or another program holds it");
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
    emit lineTraffic().opened(name);
    return true;
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
    const QByteArray bytes = port.isOpen() ? port.readAll() : QByteArray();
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
    switch (port.error()) {
    case QSerialPort::DeviceNotFoundError:
        return QCoreApplication::translate("SerialLine", "no such device; is the board plugged in?");
    case QSerialPort::PermissionError:
        return permissionText(port);
    default:
        return port.errorString();
    }
}
