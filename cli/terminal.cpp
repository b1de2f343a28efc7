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

Terminal::Terminal(const QString &link) : m_link(link), m_name(m_link.pointTo(m_line.tty()))
{
    m_line.setPaced(false);
    connect(&m_line, &simulator::PtyLine::received, this, &Terminal::received);
    connect(&m_line, &simulator::PtyLine::connectedChanged, this, [this](bool connected) {
        if (connected) {
            m_expected = false;
            emit opened();
        }
        while (!connected && !m_waiting.empty() && std::holds_alternative<QByteArray>(m_waiting.front()))
            m_waiting.pop_front();
    });
    m_look.setInterval(kLookMs);
    connect(&m_look, &QTimer::timeout, this, &Terminal::look);
}

void Terminal::send(const QByteArray &bytes)
{
    put(bytes);
}

void Terminal::hangUp()
{
    put(Plug::Out);
}

void Terminal::plugIn()
{
    put(Plug::In);
}

void Terminal::put(const Item &item)
{
    m_waiting.push_back(item);
    m_quietLooks = 0;
    feed();
    if (!m_look.isActive())
        m_look.start();
}

void Terminal::feed()
{
    while (!m_waiting.empty()) {
        const Item next = m_waiting.front();
        if (!feed(next))
            return;
    }
}

// False where its time has not come.
bool Terminal::feed(const Item &item)
{
    const auto *bytes = std::get_if<QByteArray>(&item);
    if (bytes && (m_expected || m_line.pending() >= kMostInLine))
        return false;
    if (item == Item(Plug::Out) && m_quietLooks < kQuietLooks)
        return false;
    m_waiting.pop_front(); // first: sending may find the program gone, and clear the queue
    if (bytes) {
        m_line.send(*bytes);
    } else if (std::get<Plug>(item) == Plug::Out) {
        m_link.remove();
        m_line.hangUp();
        emit hungUp();
    } else {
        m_line.plugIn();
        m_name = m_link.pointTo(m_line.tty());
        m_expected = true;
        emit pluggedIn();
    }
    return true;
}

void Terminal::look()
{
    m_quietLooks = isLineQuiet() ? m_quietLooks + 1 : 0;
    feed();
    if (!isTaken())
        return;
    m_look.stop();
    emit taken();
}

bool Terminal::isTaken() const
{
    return m_waiting.empty() && m_quietLooks >= kQuietLooks;
}

bool Terminal::isLineQuiet() const
{
    return !m_line.isConnected() || (m_line.pending() == 0 && unread(m_line.tty()) == 0);
}
