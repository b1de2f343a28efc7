// SPDX-License-Identifier: MIT
#include "link/serialportconfig.h"

#include "link/serialline.h"
#include "link/serialports.h"
#include "ui_serialportconfig.h"

#include <QDebug>
#include <QSerialPortInfo>

namespace {

void logPort(const QString &name)
{
    const QSerialPortInfo port(name);
    qDebug() << "Name : " << name;
    qDebug() << "Description : " << port.description();
    qDebug() << "Manufacturer: " << port.manufacturer();
    qDebug() << "Serial Number: " << port.serialNumber();
    qDebug() << "System Location: " << port.systemLocation();
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
    m_portNames = availablePortNames();
    for (const QString &name : std::as_const(m_portNames)) {
        logPort(name);
        if (canBeOpened(name))
            ui->comboBox->addItem(name);
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
