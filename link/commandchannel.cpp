// SPDX-License-Identifier: MIT
#include "link/commandchannel.h"

#include "link/serialline.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTime>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int kRoundMs = 10;

// A wait inside a wait inside a wait ... : each stands on the stack until the innermost one is over. From this depth on
// the user's clicks and keys are left in the queue, so that they start no further handler.
constexpr int kDeepest = 32;
int depth = 0;

} // namespace

void sendCommand(const QString &command)
{
    writeLine(*gSerialPort, (command + QStringLiteral("\r\n")).toLatin1());
}

void delayMs(int milliseconds)
{
    const QTime deadline = QTime::currentTime().addMSecs(milliseconds);
    // The time of day goes back at midnight and when somebody sets it: no wait grows longer by that.
    QElapsedTimer waited;
    waited.start();
    // Something to wake up for: a round without events would otherwise either spin or never end.
    QTimer wake;
    wake.setTimerType(Qt::PreciseTimer);
    const auto events = depth < kDeepest ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents;
    ++depth;
    while (QTime::currentTime() < deadline && waited.elapsed() <= milliseconds) {
        wake.start(std::clamp(QTime::currentTime().msecsTo(deadline), 1, kRoundMs));
        QCoreApplication::processEvents(events | QEventLoop::WaitForMoreEvents);
    }
    --depth;
}
