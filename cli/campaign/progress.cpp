// SPDX-License-Identifier: MIT
#include "cli/campaign/progress.h"

#include <cstdio>

#include <unistd.h>

namespace {

constexpr std::size_t kWidth = 40;

} // namespace

Progress::Progress(std::size_t cases) : m_cases(cases), m_shown(isatty(STDERR_FILENO) != 0) {}

void Progress::hide() const
{
    if (m_shown)
        std::fputs("\r\x1B[K", stderr);
}

void Progress::show(std::size_t done, const QString &last) const
{
    if (!m_shown || m_cases == 0)
        return;
    const std::string full(kWidth * done / m_cases, '#');
    std::fprintf(stderr, "[%-*s] %zu of %zu %s", static_cast<int>(kWidth), full.c_str(), done, m_cases,
                 last.toLocal8Bit().constData());
    std::fflush(stderr);
}
