// SPDX-License-Identifier: MIT
// The one serial line to the board: its port object, its fixed settings, and what went wrong with it.
#pragma once

#include <QFileDevice>
#include <QSerialPort>
#include <QString>

/// The line in bits a second, both ways; 8 data bits, no parity, one stop bit, no flow control.
inline constexpr qint32 kLineBaudRate = 1958400;

/// The program's port. Made before main runs, never deleted.
extern QSerialPort *gSerialPort;
/// The port chosen at start-up; empty until then.
extern QString gPortName;

/// Opens `port` on `name` for reading and writing with the line's settings; closes it first where it is open.
/// Returns false with the port closed where that fails; the port's error tells why.
bool openLine(QSerialPort &port, const QString &name);

/// Empties both buffers and closes; a closed port is left alone.
void closeLine(QSerialPort &port);

/// Closes a port whose device is gone; a closed port is left alone.
void abandonLine(QSerialPort &port);

/// Everything that has arrived on `port`; empty where it is closed or nothing has.
QByteArray readLine(QSerialPort &port);

/// Queues `bytes` for sending, without waiting; a closed port loses them.
void writeLine(QSerialPort &port, const QByteArray &bytes);

/// True for the errors that a port reports when its device is gone, again and again until it is closed.
bool isLineLost(QSerialPort::SerialPortError error);

/// Why `port` could not be opened, for people; on Linux with the remedy where a permission is missing.
QString openFailureText(const QSerialPort &port);

/// The remedy where a device file with this group and these rights must not be opened. Membership of the group is a
/// remedy only where the group may read and write and is not root's.
QString permissionRemedy(const QString &group, QFileDevice::Permissions rights);

/// The trouble of an open line: an adapter that does not run at the line's rate, by more than 3 %. Else empty.
QString lineTrouble(const QSerialPort &port);
