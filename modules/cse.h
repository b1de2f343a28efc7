// What is kept of the cryptographic engine.
#pragma once

#include <QPointer>
#include <QSet>
#include <QTimer>

struct CsePanel {
    QSet<quint8> errorsShown;    // codes whose blinking or box is under way
    QPointer<QTimer> idleTimer; // the latest one; earlier ones run on
};
