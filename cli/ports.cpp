// SPDX-License-Identifier: MIT
// ports: the serial ports, who may open them, and the remedy for those who may not.
#include "cli/exitcode.h"
#include "cli/jsonline.h"
#include "cli/output.h"
#include "cli/settings.h"
#include "cli/verbs.h"
#include "link/serialline.h"

#include <QFileInfo>
#include <QSerialPort>
#include <QSerialPortInfo>

namespace {

struct Port {
    QSerialPortInfo info;
    QString owner, group;
    bool mayOpen = false;
    QString remedy; // empty where it may be opened
};

Port factsOf(const QSerialPortInfo &info)
{
    const QFileInfo device(info.systemLocation());
    Port port{info, device.owner(), device.group(), device.isReadable() && device.isWritable(), {}};
    if (!port.mayOpen) {
        QSerialPort probe(info);
        if (!probe.open(QIODevice::ReadWrite))
            port.remedy = openFailureText(probe);
    }
    return port;
}

QString identifierOf(const QSerialPortInfo &info)
{
    return info.hasVendorIdentifier() && info.hasProductIdentifier()
        ? QStringLiteral("%1:%2")
              .arg(info.vendorIdentifier(), 4, 16, QLatin1Char('0'))
              .arg(info.productIdentifier(), 4, 16, QLatin1Char('0'))
        : QString();
}

QByteArray jsonOf(const Port &port)
{
    return JsonLine("port")
        .add("name", port.info.portName())
        .add("path", port.info.systemLocation())
        .add("id", identifierOf(port.info))
        .add("description", port.info.description())
        .add("manufacturer", port.info.manufacturer())
        .add("serial", port.info.serialNumber())
        .add("owner", port.owner)
        .add("group", port.group)
        .add("may_open", port.mayOpen)
        .add("remedy", port.remedy)
        .take();
}

QString textOf(const Port &port)
{
    QStringList about{port.info.description(), port.info.manufacturer(), port.info.serialNumber()};
    about.removeAll(QString());
    return QStringLiteral("%1 %2 %3  %4, group %5: %6")
        .arg(port.info.portName(), -12)
        .arg(identifierOf(port.info), -9)
        .arg(about.join(QLatin1String(", ")), port.owner, port.group,
             port.mayOpen ? QStringLiteral("you may open it") : port.remedy);
}

} // namespace

int verbs::ports(const Settings &settings)
{
    Output output;
    const auto infos = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &info : infos) {
        const Port port = factsOf(info);
        output.line(settings.json ? jsonOf(port) : textOf(port).toUtf8());
    }
    if (infos.isEmpty() && !settings.json)
        output.line("no serial ports");
    output.flush();
    return output.isGood() ? kAsAsked : kUsageOrFile;
}
