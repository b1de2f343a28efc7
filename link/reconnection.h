// SPDX-License-Identifier: MIT
// Looks for a device that was lost, once per second, until it is back or nobody wants it any more.
#pragma once

#include "link/portidentity.h"

#include <QObject>
#include <QTimer>

class Reconnection : public QObject
{
    Q_OBJECT

public:
    /// Follows the program's line from now on: a loss starts the search, an opening or a closing ends it.
    explicit Reconnection(QObject *parent = nullptr);

    /// Identity of the port that was opened last.
    const PortInfo &port() const { return m_device.port; }
    void giveUp() { m_timer.stop(); }

signals:
    /// The device is there under this name. Said again each second as long as nobody opens it: it may not be ready.
    void found(const QString &portName);

private:
    PortIdentity m_device;
    QTimer m_timer;
};
