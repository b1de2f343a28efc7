// SPDX-License-Identifier: MIT
#include "cli/output.h"

#include "cli/complain.h"

#include <cerrno>
#include <cstring>

#include <unistd.h>

namespace {

constexpr int kAtOnce = 64 * 1024;

} // namespace

Output::Output()
{
    m_waiting.reserve(2 * kAtOnce); // kept also when it is emptied
}

void Output::line(const QByteArray &utf8)
{
    m_waiting.append(utf8).append('\n');
    if (m_waiting.size() >= kAtOnce)
        flush();
}

void Output::flush()
{
    const char *from = m_waiting.constData();
    auto left = static_cast<std::size_t>(m_waiting.size());
    while (m_good && left > 0) {
        const ssize_t count = write(STDOUT_FILENO, from, left);
        if (count < 0 && errno == EINTR)
            continue;
        m_good = count > 0;
        // A reader that has seen enough is no trouble.
        if (!m_good && errno != EPIPE)
            complain(QStringLiteral("standard output: %1").arg(QString::fromLocal8Bit(std::strerror(errno))));
        from += m_good ? count : 0;
        left -= m_good ? static_cast<std::size_t>(count) : 0;
    }
    m_waiting.resize(0);
}

bool wantsColour()
{
    return isatty(STDOUT_FILENO) && qEnvironmentVariableIsEmpty("NO_COLOR");
}
