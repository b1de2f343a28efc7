// SPDX-License-Identifier: MIT
// Receive state carried from one read to the next.
#pragma once

#include "protocol/extraction.h"

#include <QString>

struct ReceiveState {
    QList<frameData> rxFrames;  // extracted and not decoded yet, in order of arrival
    QByteArray rxRemainder;     // bytes of an incomplete frame, carried over
    bool rxPending = false;     // rxRemainder holds bytes to put before the next read
    quint32 rxPartialCount = 0; // incomplete frames met; never shown
    quint64 rxFrameCount = 0;   // frames extracted; never shown

    /// The latest read with what was carried over, as text up to its first NUL; never shown.
    QString rxText() const { return QString::fromUtf8(m_data.constData()); }

    /// Extracts the frames of one read and queues them behind those that still wait. An empty read changes nothing.
    void take(const QByteArray &chunk);

private:
    QByteArray join(const QByteArray &chunk);

    QByteArray m_data;
    QList<frameData> m_arrived;
    protocol::FrameScan m_scan;
};
