// SPDX-License-Identifier: MIT
// What is kept between two arrivals of bytes.
#pragma once

#include "protocol/frame.h"

#include <QString>

struct ReceiveState {
    QList<frameData> rxFrames;  // extracted from the latest arrival
    QByteArray rxRemainder;     // bytes of an incomplete frame, carried over
    bool rxPending = false;     // rxRemainder holds a frame's start
    quint32 rxPartialCount = 0; // incomplete frames met; never shown
    quint64 rxFrameCount = 0;   // frames handed on; never shown
    QString rxText;             // the latest arrival as text, up to its first NUL; never shown

    /// The data to parse for an arrival of `chunk`: behind a carried frame start, else alone. A pending remainder is
    /// used up either way; one that does not begin with the first sync byte is thrown away.
    QByteArray join(const QByteArray &chunk);
};
