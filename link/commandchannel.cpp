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

// Nested waits stay on the stack until the innermost one is over. From this depth on the user's clicks and keys are left
// in the queue, so that they start no further handler.
constexpr int kMaxNestedWaits = 32;
int depth = 0;

// Counts a wait for as long as it lasts.
class Nesting
{
public:
    Nesting() { ++depth; }
    ~Nesting() { --depth; }
    Nesting(const Nesting &) = delete;
    Nesting &operator=(const Nesting &) = delete;
};

} // namespace

void sendCommand(const QString &command)
{
    writeLine(*gSerialPort, command.toLatin1() + "\r\n");
}

void sendCommand(QLatin1String command)
{
    writeLine(*gSerialPort, QByteArray(command.data(), command.size()) + "\r\n");
}

bool isDelayed()
{
    return depth > 0;
}

void delayMs(int milliseconds)
{
    const QTime deadline = QTime::currentTime().addMSecs(milliseconds);
    // The time of day goes back at midnight and when somebody sets it: no wait grows longer by that.
    QElapsedTimer waited;
    waited.start();
    // Something to wake up for: a round without events would otherwise either spin or never end. Once a round: a box may
    // stay open inside one for minutes.
    QTimer wake;
    wake.setTimerType(Qt::PreciseTimer);
    wake.setSingleShot(true);
    const auto events = depth < kMaxNestedWaits ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents;
    const Nesting nesting;
    while (QTime::currentTime() < deadline && waited.elapsed() <= milliseconds) {
        wake.start(std::clamp(QTime::currentTime().msecsTo(deadline), 1, kRoundMs));
        QCoreApplication::processEvents(events | QEventLoop::WaitForMoreEvents);
    }
}
