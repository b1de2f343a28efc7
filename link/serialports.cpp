// SPDX-License-Identifier: MIT
#include "link/serialports.h"

#include <QFileInfo>
#include <QSerialPortInfo>

#include <utility>

namespace {

std::function<QList<PortInfo>()> &replacement()
{
    static std::function<QList<PortInfo>()> source;
    return source;
}

QString hexadecimal(quint16 identifier)
{
    return QStringLiteral("%1").arg(identifier, 4, 16, QLatin1Char('0')).toUpper();
}

PortInfo named(const QString &name)
{
    PortInfo port;
    port.name = name;
    return port;
}

} // namespace

QList<PortInfo> availablePorts()
{
    if (replacement())
        return replacement()();
    QList<PortInfo> ports;
    const auto infos = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &info : infos) {
        ports.append({info.portName(), info.description(), info.manufacturer(), info.serialNumber(),
                      info.systemLocation(), info.vendorIdentifier(), info.productIdentifier()});
    }
    return ports;
}

QStringList availablePortNames()
{
    QStringList names;
    const auto ports = availablePorts();
    for (const PortInfo &port : ports)
        names.append(port.name);
    return names;
}

PortInfo portNamed(const QString &name, const QList<PortInfo> &ports)
{
    for (const PortInfo &port : ports) {
        if (port.name == name)
            return port;
    }
    return named(name);
}

void setAvailablePorts(std::function<QList<PortInfo>()> source)
{
    replacement() = std::move(source);
}

void setAvailablePortNames(std::function<QStringList()> source)
{
    if (!source)
        return setAvailablePorts({});
    setAvailablePorts([source = std::move(source)] {
        QList<PortInfo> ports;
        const auto names = source();
        for (const QString &name : names)
            ports.append(named(name));
        return ports;
    });
}

QString deviceFile(const QString &portName)
{
    return portName.startsWith(QLatin1Char('/')) ? portName : QStringLiteral("/dev/") + portName;
}

bool isPseudoTerminal(const QString &portName)
{
    return QFileInfo(deviceFile(portName)).canonicalFilePath().startsWith(QLatin1String("/dev/pts/"));
}

QString portDescription(const PortInfo &port)
{
    if (isPseudoTerminal(port.name))
        return QStringLiteral("virtual board");
    QStringList parts;
    if (!port.description.isEmpty())
        parts.append(port.description);
    if (port.hasIdentifiers())
        parts.append(hexadecimal(port.vendor) + QLatin1Char(':') + hexadecimal(port.product));
    return parts.join(QStringLiteral(", "));
}
