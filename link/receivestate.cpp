// SPDX-License-Identifier: MIT
#include "link/receivestate.h"

#include <utility>

void ReceiveState::take(const QByteArray &chunk)
{
    if (chunk.isEmpty())
        return;
    m_data.clear(); // the remainder may share its memory, and grows in place if it does not
    m_data = join(chunk);
    rxPending = m_scan.extract(m_data, m_arrived, rxRemainder, rxPartialCount);
    rxFrameCount += static_cast<quint64>(m_arrived.size());
    rxFrames.append(m_arrived);
}

// A pending remainder is used up; one that does not begin with the first sync byte is thrown away.
QByteArray ReceiveState::join(const QByteArray &chunk)
{
    QByteArray data;
    if (rxPending)
        data = std::exchange(rxRemainder, {});
    if (!data.startsWith(protocol::kSync0)) {
        data.clear();
        m_scan.reset();
    }
    return data.append(chunk);
}
