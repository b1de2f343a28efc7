// SPDX-License-Identifier: MIT
// What is kept of the cryptographic engine.
#pragma once

#include <QPointer>
#include <QSet>
#include <QTimer>

struct CsePanel {
    QSet<quint8> errorsShown;    // codes whose blinking or box is under way
    QSet<quint8> errorsAnswered; // of these the ones whose box is closed
    QPointer<QTimer> idleTimer;  // the latest one; earlier ones run on
};
