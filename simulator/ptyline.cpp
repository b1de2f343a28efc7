// SPDX-License-Identifier: MIT
#include "simulator/ptyline.h"

#include "protocol/frame.h"

#include <QSocketNotifier>

#include <algorithm>

#include <errno.h>
#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

namespace simulator {

namespace {

constexpr int kPaceMs = 1;
constexpr int kWatchMs = 10;
// A late timer is made up for, but not beyond this many bytes at once.
constexpr double kMaxBudget = PtyLine::kMaxPacketSize;

int openRawTerminal()
{
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0)
        return master;
    termios settings = {};
    tcgetattr(master, &settings);
    cfmakeraw(&settings);
    tcsetattr(master, TCSANOW, &settings);
    // Open and close the other end once: from then on the terminal tells whether anybody has it open.
    const int slave = open(ptsname(master), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (slave >= 0)
        close(slave);
    return master;
}

bool isOpenedByProgram(int master)
{
    pollfd state = {master, 0, 0};
    return poll(&state, 1, 0) >= 0 && !(state.revents & POLLHUP);
}

} // namespace

PtyLine::PtyLine(QObject *parent) : QObject(parent)
{
    m_pace.setTimerType(Qt::PreciseTimer);
    m_pace.setInterval(kPaceMs);
    connect(&m_pace, &QTimer::timeout, this, &PtyLine::flush);
    connect(&m_watch, &QTimer::timeout, this, &PtyLine::lookForProgram);
    plugIn();
}

PtyLine::~PtyLine()
{
    hangUp();
}

void PtyLine::send(const QByteArray &bytes)
{
    lookForProgram();
    if (!m_connected || m_queue.size() - m_sent + bytes.size() > kQueueLimit)
        return;
    m_queue.append(bytes);
    if (m_pace.isActive())
        return;
    m_clock.start();
    m_budget = 0;
    m_pace.start();
    if (!m_paced)
        flush();
}

void PtyLine::setPacketSize(int bytes)
{
    m_packetSize = std::clamp(bytes, 1, kMaxPacketSize);
}

void PtyLine::hangUp()
{
    m_readable.reset();
    m_watch.stop();
    setConnected(false);
    if (m_master >= 0)
        close(m_master);
    m_master = -1;
}

void PtyLine::plugIn()
{
    hangUp();
    m_master = openRawTerminal();
    m_tty = m_master >= 0 ? QString::fromLocal8Bit(ptsname(m_master)) : QString();
    if (m_master < 0)
        return;
    m_readable = std::make_unique<QSocketNotifier>(m_master, QSocketNotifier::Read);
    m_readable->setEnabled(false);
    connect(m_readable.get(), &QSocketNotifier::activated, this, &PtyLine::readAvailable);
    m_watch.start(kWatchMs);
}

// A terminal that nobody has open is always "readable" and reports an error: it is watched by a slow timer instead.
void PtyLine::lookForProgram()
{
    if (m_master >= 0)
        setConnected(isOpenedByProgram(m_master));
}

void PtyLine::setConnected(bool connected)
{
    if (m_connected == connected)
        return;
    m_connected = connected;
    if (m_readable)
        m_readable->setEnabled(connected);
    if (!connected) {
        m_queue.clear();
        m_sent = 0;
        m_pace.stop();
        if (m_master >= 0)
            tcflush(m_master, TCIOFLUSH);
    }
    emit connectedChanged(connected);
}

void PtyLine::readAvailable()
{
    char buffer[4096];
    for (;;) {
        const ssize_t count = ::read(m_master, buffer, sizeof buffer);
        if (count > 0) {
            emit received(QByteArray(buffer, static_cast<int>(count)));
            if (m_master >= 0)
                continue;
        } else if (count < 0 && errno == EIO) {
            setConnected(false);
        }
        return;
    }
}

int PtyLine::allowance()
{
    if (!m_paced)
        return kQueueLimit;
    m_budget = std::min(m_budget + static_cast<double>(m_clock.nsecsElapsed()) * 1e-9 * kBytesPerSecond, kMaxBudget);
    m_clock.restart();
    return static_cast<int>(m_budget);
}

// Nothing waits for a packet to fill, but a packet waits until the line has had time for all of it.
bool PtyLine::writePacket(int most)
{
    const int packet = std::min(m_packetSize, m_queue.size() - m_sent);
    if (packet > most)
        return false;
    const ssize_t count = ::write(m_master, m_queue.constData() + m_sent, static_cast<size_t>(packet));
    if (count <= 0)
        return false;
    m_sent += static_cast<int>(count);
    m_budget -= static_cast<double>(count);
    return true;
}

void PtyLine::flush()
{
    for (int most = allowance(); most > 0 && m_sent < m_queue.size();) {
        const int before = m_sent;
        if (!writePacket(most))
            break;
        most -= m_sent - before;
    }
    if (m_sent >= m_queue.size()) {
        m_queue.clear();
        m_sent = 0;
        m_pace.stop();
    } else if (m_sent > 65536) {
        m_queue.remove(0, m_sent);
        m_sent = 0;
    }
}

} // namespace simulator
