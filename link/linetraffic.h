// SPDX-License-Identifier: MIT
// The serial line's traffic, announced as it happens: to the line's indicator, its counters, the recorder.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

class LineTraffic : public QObject
{
    Q_OBJECT

signals:
    void opened(const QString &portName);
    /// One read, as the operating system delivered it; never empty.
    void received(const QByteArray &bytes);
    /// One write that the port accepted.
    void sent(const QByteArray &bytes);
    /// Bytes that were once sent, told by a recording that is being played: nothing is sent now.
    void recalled(const QByteArray &bytes);
    /// Closed on request.
    void closed();
    /// Closed because the device is gone; `reason` is the port's error text.
    void lost(const QString &reason);
};

/// The program's only line: whichever port object has it open (the window's or the console's) reports here.
LineTraffic &lineTraffic();
