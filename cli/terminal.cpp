// SPDX-License-Identifier: MIT
#include "cli/terminal.h"

#include <utility>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr int kLookMs = 5;
// Half of what the line holds before it loses.
constexpr int kMostInLine = simulator::PtyLine::kQueueLimit / 2;

// Bytes that the program has not read yet.
int unread(const QString &terminal)
{
    const int file = open(terminal.toLocal8Bit().constData(), O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    int count = 0;
    if (file < 0)
        return 0;
    ioctl(file, FIONREAD, &count);
    close(file);
    return count;
}

} // namespace

Terminal::Terminal()
{
    m_line.setPaced(false);
    connect(&m_line, &simulator::PtyLine::received, this, &Terminal::received);
    connect(&m_line, &simulator::PtyLine::connectedChanged, this, [this](bool connected) {
        if (connected)
            emit opened();
        else
            m_waiting.clear();
    });
    m_look.setInterval(kLookMs);
    connect(&m_look, &QTimer::timeout, this, &Terminal::look);
}

void Terminal::send(const QByteArray &bytes)
{
    m_waiting.push_back(bytes);
    m_quietLooks = 0;
    feed();
    if (!m_look.isActive())
        m_look.start();
}

void Terminal::feed()
{
    while (!m_waiting.empty() && m_line.pending() < kMostInLine) {
        const QByteArray next = std::move(m_waiting.front());
        m_waiting.pop_front();
        m_line.send(next); // may find the program gone, and clear the queue
    }
}

void Terminal::look()
{
    feed();
    m_quietLooks = isQuiet() ? m_quietLooks + 1 : 0;
    if (!isTaken())
        return;
    m_look.stop();
    emit taken();
}

bool Terminal::isQuiet() const
{
    return m_waiting.empty() && (!m_line.isConnected() || (m_line.pending() == 0 && unread(m_line.tty()) == 0));
}
