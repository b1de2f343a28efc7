#include "link/commandchannel.h"

#include "link/serialline.h"

#include <QCoreApplication>
#include <QTime>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int kRoundMs = 10;

} // namespace

void sendCommand(const QString &command)
{
    gSerialPort->write((command + QStringLiteral("\r\n")).toLatin1());
}

void delayMs(int milliseconds)
{
    const QTime deadline = QTime::currentTime().addMSecs(milliseconds);
    // Something to wake up for: a round without events would otherwise either spin or never end.
    QTimer wake;
    wake.setTimerType(Qt::PreciseTimer);
    while (QTime::currentTime() < deadline) {
        wake.start(std::clamp(QTime::currentTime().msecsTo(deadline), 1, kRoundMs));
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}
