// SPDX-License-Identifier: MIT
#include "cli/nearest.h"

#include <algorithm>
#include <vector>

namespace {

int distance(const QString &a, const QString &b)
{
    const auto width = static_cast<std::size_t>(b.size()) + 1;
    std::vector<std::vector<int>> steps(static_cast<std::size_t>(a.size()) + 1, std::vector<int>(width));
    for (std::size_t i = 0; i < steps.size(); ++i) {
        for (std::size_t j = 0; j < width; ++j) {
            if (i == 0 || j == 0) {
                steps[i][j] = static_cast<int>(i + j);
                continue;
            }
            const auto x = static_cast<int>(i), y = static_cast<int>(j);
            const int change = a[x - 1] == b[y - 1] ? 0 : 1;
            steps[i][j] = std::min({steps[i - 1][j] + 1, steps[i][j - 1] + 1, steps[i - 1][j - 1] + change});
            if (i > 1 && j > 1 && a[x - 1] == b[y - 2] && a[x - 2] == b[y - 1])
                steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
        }
    }
    return steps.back().back();
}

} // namespace

QString nearest(const QString &word, const QStringList &words)
{
    QString best;
    int fewest = 0;
    for (const QString &candidate : words) {
        const int steps = distance(word.toLower(), candidate.toLower());
        if (steps <= std::max(1, static_cast<int>(candidate.size()) / 3) && (best.isEmpty() || steps < fewest)) {
            best = candidate;
            fewest = steps;
        }
    }
    return best;
}

QString unknownText(const QString &kind, const QString &word, const QStringList &words)
{
    const QString best = nearest(word, words);
    return best.isEmpty()
        ? QStringLiteral("no %1 \"%2\"; there are: %3").arg(kind, word, words.join(QLatin1String(", ")))
        : QStringLiteral("no %1 \"%2\"; did you mean \"%3\"?").arg(kind, word, best);
}
