// SPDX-License-Identifier: MIT
#include "link/serialportconfig.h"

#include "link/serialline.h"
#include "link/serialports.h"
#include "ui_serialportconfig.h"

#include <QDebug>

namespace {

void logPort(const PortInfo &port)
{
    qDebug() << "Name : " << port.name;
    qDebug() << "Description : " << port.description;
    qDebug() << "Manufacturer: " << port.manufacturer;
    qDebug() << "Serial Number: " << port.serialNumber;
    qDebug() << "System Location: " << port.location;
}

bool canBeOpened(const QString &name)
{
    QSerialPort probe;
    probe.setPortName(name);
    return probe.open(QIODevice::ReadWrite);
}

} // namespace

serialportconfig::serialportconfig(QWidget *parent) : QDialog(parent), ui(std::make_unique<Ui::serialportconfig>())
{
    ui->setupUi(this);
    const auto ports = availablePorts();
    for (const PortInfo &port : ports) {
        logPort(port);
        m_portNames.append(port.name);
        if (canBeOpened(port.name))
            ui->comboBox->addItem(port.name);
    }
}

serialportconfig::~serialportconfig() = default;

// OK opens a port of its own on the first port found, whatever the boxes say, and keeps it for the program's life.
void serialportconfig::on_pushButton_clicked()
{
    static QSerialPort *const port = new QSerialPort;
    const QString first = m_portNames.value(0);
    if (!openLine(*port, first))
        qDebug() << first;
}

// The dialog keeps its widgets: it can be shown again.
void serialportconfig::on_pushButton_2_clicked() {}
