// SPDX-License-Identifier: MIT
#include "support/rawline.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr int kDeliveryMs = 1000; // a program in another process may have read them before

} // namespace

RawLine::RawLine() : m_master(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
{
    if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0)
        qFatal("no pseudo-terminal");
    termios settings = {};
    tcgetattr(m_master, &settings);
    cfmakeraw(&settings);
    tcsetattr(m_master, TCSANOW, &settings);
    m_tty = QString::fromLocal8Bit(ptsname(m_master));
    m_notifier = std::make_unique<QSocketNotifier>(m_master, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &RawLine::readAvailable);
    m_slave = open(m_tty.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
}

RawLine::~RawLine()
{
    hangUp();
}

void RawLine::write(const QByteArray &bytes)
{
    for (int done = 0; done < bytes.size();) {
        const ssize_t count = ::write(m_master, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (count > 0) {
            done += static_cast<int>(count);
            continue;
        }
        pollfd room = {m_master, POLLOUT, 0};
        if (poll(&room, 1, 5000) <= 0)
            qFatal("the program takes no bytes");
    }
}

void RawLine::deliver(const QByteArray &bytes)
{
    write(bytes);
    // The terminal passes bytes on in its own time.
    pollfd there = {m_slave, POLLIN, 0};
    poll(&there, 1, kDeliveryMs);
}

bool RawLine::isTaken() const
{
    int bytes = 0;
    return ioctl(m_slave, FIONREAD, &bytes) == 0 && bytes == 0;
}

void RawLine::hangUp()
{
    m_notifier.reset();
    for (int *end : {&m_slave, &m_master}) {
        if (*end >= 0)
            close(*end);
        *end = -1;
    }
}

void RawLine::readAvailable()
{
    char buffer[4096];
    for (ssize_t count; (count = ::read(m_master, buffer, sizeof buffer)) > 0;) {
        m_received.append(buffer, static_cast<int>(count));
        emit arrived(QByteArray(buffer, static_cast<int>(count)));
    }
}
