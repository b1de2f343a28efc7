// SPDX-License-Identifier: MIT
// The serial ports with their identities.
#pragma once

#include <QList>
#include <QStringList>

#include <functional>

/// A serial port as the system lists it. Texts are empty and identifiers 0 where nothing is known.
struct PortInfo {
    QString name; // "ttyUSB0", or a path
    QString description;
    QString manufacturer;
    QString serialNumber; // of the USB adapter
    QString location;     // "/dev/ttyUSB0"
    quint16 vendor = 0;   // USB identifiers
    quint16 product = 0;

    bool hasIdentifiers() const { return vendor != 0 || product != 0; }
    bool operator==(const PortInfo &other) const = default;
};

/// All serial ports present, in the system's order.
QList<PortInfo> availablePorts();
/// Their names.
QStringList availablePortNames();
/// The port with this name among `ports`; where it is not listed, the name is all that is known.
PortInfo portNamed(const QString &name, const QList<PortInfo> &ports);

/// Puts `source` in the system's place; an empty function gives the place back. For the demonstration, tests and
/// benchmarks, which must never open a port of the machine they run on.
void setAvailablePorts(std::function<QList<PortInfo>()> source);
/// The same where names are all that is known.
void setAvailablePortNames(std::function<QStringList()> source);

/// The file of a port: its own path, or the one below /dev.
QString deviceFile(const QString &portName);
/// True for a pseudo-terminal, also behind a link: no hardware, a virtual board.
bool isPseudoTerminal(const QString &portName);
/// The adapter in words: "USB-Serial Controller, 067B:2303"; "virtual board"; empty where nothing is known.
QString portDescription(const PortInfo &port);
