// SPDX-License-Identifier: MIT
#include "link/receivestate.h"

QByteArray ReceiveState::join(const QByteArray &chunk)
{
    QByteArray data;
    if (rxPending) {
        data.swap(rxRemainder);
        if (!data.startsWith(protocol::kSync0))
            data.clear();
    }
    return data.append(chunk);
}
