// SPDX-License-Identifier: MIT
#include "link/portidentity.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace {

// Changes when the link is made anew, even to the same target. Empty: no link.
QByteArray stampOf(const QString &path)
{
#ifdef Q_OS_UNIX
    struct stat status = {};
    if (lstat(QFile::encodeName(path).constData(), &status) == 0 && S_ISLNK(status.st_mode)) {
        return QByteArray::number(static_cast<qulonglong>(status.st_ino)) + ' '
            + QByteArray::number(static_cast<qlonglong>(status.st_ctim.tv_sec)) + ' '
            + QByteArray::number(static_cast<qlonglong>(status.st_ctim.tv_nsec));
    }
#endif
    return {};
}

QStringList namesOfTheSame(const QList<PortInfo> &ports, const PortInfo &device)
{
    QStringList names;
    for (const PortInfo &port : ports) {
        const bool same = device.hasIdentifiers()
            ? port.vendor == device.vendor && port.product == device.product && port.serialNumber == device.serialNumber
            : port.name == device.name;
        if (same)
            names.append(port.name);
    }
    return names;
}

} // namespace

PortIdentity identityOf(const QString &portName)
{
    const QList<PortInfo> ports = availablePorts();
    const PortInfo port = portNamed(portName, ports);
    return {port, std::max(0, static_cast<int>(namesOfTheSame(ports, port).indexOf(portName))),
            stampOf(deviceFile(portName))};
}

QString nameNow(const PortIdentity &identity)
{
    const PortInfo &port = identity.port;
    if (!canComeBack(port.name))
        return {};
    if (!identity.linkStamp.isEmpty() && !port.hasIdentifiers()) {
        const QString link = deviceFile(port.name);
        return QFileInfo::exists(link) && stampOf(link) != identity.linkStamp ? port.name : QString();
    }
    const QStringList names = namesOfTheSame(availablePorts(), port);
    if (names.contains(port.name))
        return port.name;
    return port.serialNumber.isEmpty() && names.size() > 1 ? QString() : names.value(identity.sibling);
}

bool canComeBack(const QString &portName)
{
    return !portName.isEmpty() && !portName.startsWith(QLatin1String("/dev/pts/"));
}
