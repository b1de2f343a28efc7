// SPDX-License-Identifier: MIT
#include "simulator/command.h"

#include <limits>

namespace simulator {

Command::Command(const char *w, const char *h, std::function<void()> r)
    : Command(w, "", h, [r = std::move(r)](const QStringList &) { r(); })
{
}

Command::Command(const char *w, const char *a, const char *h, std::function<void(const QStringList &)> r)
    : words(QString::fromLatin1(w)),
      arguments(QString::fromLatin1(a)),
      help(QString::fromLatin1(h)),
      run(std::move(r))
{
    const QStringList names = arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const bool any = names == QStringList(QStringLiteral("..."));
    maxCount = any ? std::numeric_limits<int>::max() : static_cast<int>(names.size());
    minCount = any ? 0 : maxCount - static_cast<int>(names.filter(QStringLiteral("[")).size());
}

} // namespace simulator
