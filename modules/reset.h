// SPDX-License-Identifier: MIT
// What is kept of the board's resets.
#pragma once

#include <QBitArray>
#include <QPointer>
#include <QTimer>

struct ResetPanel {
    QBitArray resetReasonBits; // 24 flags of the last reset report
    QBitArray resetSourceBits; // 128 flags of the last reset report
    bool destructiveResetSeen = false;
    bool bistResetPending = false;
    int refreshes = 0;           // under way, one inside the wait of another
    bool refreshMissed = false;  // one was put off because too many were under way
    QPointer<QTimer> resetTimer; // the latest one; earlier ones run on
};
