// SPDX-License-Identifier: MIT
#include "link/serialports.h"

#include <QSerialPortInfo>

#include <utility>

namespace {

std::function<QStringList()> &replacement()
{
    static std::function<QStringList()> source;
    return source;
}

} // namespace

QStringList availablePortNames()
{
    if (replacement())
        return replacement()();
    QStringList names;
    const auto ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &port : ports)
        names.append(port.portName());
    return names;
}

void setAvailablePortNames(std::function<QStringList()> source)
{
    replacement() = std::move(source);
}
