// SPDX-License-Identifier: MIT
#include "cli/campaign/figures.h"

#include <algorithm>
#include <cmath>

namespace campaign {

namespace {

// Of values in ascending order.
double percentile(const std::vector<double> &values, double share)
{
    const auto rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(values.size())));
    return values[std::clamp<std::size_t>(rank, 1, values.size()) - 1];
}

} // namespace

Figures figuresOf(std::vector<double> values)
{
    if (values.empty())
        return {};
    std::ranges::sort(values);
    Figures figures;
    figures.least = values.front();
    figures.median = percentile(values, 0.5);
    figures.p95 = percentile(values, 0.95);
    figures.most = values.back();
    figures.values = std::move(values);
    return figures;
}

std::optional<double> measured(const Finding &run, Measure measure)
{
    if (measure == Measure::Detection)
        return run.detectionUs;
    if (measure == Measure::Handling || !run.handlingMs)
        return run.handlingMs;
    return *run.handlingMs - run.detectionUs.value_or(0) / 1000;
}

Figures figuresOf(const CaseResult &result, Measure measure)
{
    std::vector<double> values;
    for (const Finding &run : result.runs) {
        if (const auto value = measured(run, measure))
            values.push_back(*value);
    }
    return figuresOf(std::move(values));
}

QString figureText(double value)
{
    const double size = std::abs(value);
    return QString::number(value, 'f', size >= 100 ? 0 : size >= 10 ? 1 : size >= 1 ? 2 : 3);
}

} // namespace campaign
