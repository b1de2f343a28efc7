// SPDX-License-Identifier: MIT
#include "link/reconnection.h"

#include "link/linetraffic.h"

namespace {

constexpr int kLookMs = 1000;

} // namespace

Reconnection::Reconnection(QObject *parent) : QObject(parent)
{
    m_timer.setInterval(kLookMs);
    const LineTraffic &line = lineTraffic();
    connect(&line, &LineTraffic::opened, this, [this](const QString &portName) {
        m_timer.stop();
        m_device = identityOf(portName);
    });
    connect(&line, &LineTraffic::closed, &m_timer, &QTimer::stop);
    connect(&line, &LineTraffic::lost, this, [this] {
        if (canComeBack(m_device.port.name))
            m_timer.start();
    });
    connect(&m_timer, &QTimer::timeout, this, [this] {
        const QString name = nameNow(m_device);
        if (!name.isEmpty())
            emit found(name);
    });
}
