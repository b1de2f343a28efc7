// SPDX-License-Identifier: MIT
#include "timeline/scale.h"

#include "session/clock.h"

#include <QDateTime>

#include <array>
#include <cmath>

namespace timeline {

namespace {

constexpr qint64 kMinute = 60 * session::kPerSecond;
constexpr qint64 kHour = 60 * kMinute;

// Beyond a second: steps that clocks have.
constexpr std::array longSteps = {session::kPerSecond,
                                  2 * session::kPerSecond,
                                  5 * session::kPerSecond,
                                  10 * session::kPerSecond,
                                  15 * session::kPerSecond,
                                  30 * session::kPerSecond,
                                  kMinute,
                                  2 * kMinute,
                                  5 * kMinute,
                                  10 * kMinute,
                                  15 * kMinute,
                                  30 * kMinute,
                                  kHour,
                                  2 * kHour,
                                  6 * kHour,
                                  12 * kHour,
                                  24 * kHour,
                                  48 * kHour,
                                  168 * kHour};

qint64 stepFor(double least)
{
    for (qint64 decade = 1; decade < session::kPerSecond; decade *= 10) {
        for (const qint64 step : {decade, 2 * decade, 5 * decade}) {
            if (static_cast<double>(step) >= least)
                return step;
        }
    }
    const auto found = std::find_if(longSteps.begin(), longSteps.end(),
                                    [least](qint64 step) { return static_cast<double>(step) >= least; });
    return found == longSteps.end() ? longSteps.back() : *found;
}

int decimalsOf(qint64 step)
{
    int decimals = 0;
    for (; step % session::kPerSecond != 0; step *= 10)
        ++decimals;
    return decimals;
}

QDateTime localTime(qint64 time)
{
    return QDateTime::fromSecsSinceEpoch(time / session::kPerSecond);
}

} // namespace

Span zoomed(const Span &span, qint64 centre, double factor)
{
    const double length = std::clamp(static_cast<double>(span.length()) * factor, static_cast<double>(kShortestSpan),
                                     static_cast<double>(kLongestSpan));
    const double before = static_cast<double>(centre - span.from) / static_cast<double>(span.length());
    const qint64 from = centre - std::llround(before * length);
    return {from, from + std::llround(length)};
}

Span moved(const Span &span, qint64 by)
{
    return {span.from + by, span.to + by};
}

int Scale::column(qint64 time) const
{
    const double part = static_cast<double>(time - m_span.from) / static_cast<double>(m_span.length());
    auto column = static_cast<int>(std::clamp(std::floor(part * m_width), -1.0, static_cast<double>(m_width)));
    while (column < m_width && start(column + 1) <= time)
        ++column;
    while (column >= 0 && start(column) > time)
        --column;
    return column;
}

qint64 Scale::start(int column) const
{
    return m_span.from + std::llround(static_cast<double>(m_span.length()) * column / m_width);
}

QString clockText(qint64 time, int decimals)
{
    QString whole = localTime(time).toString(QStringLiteral("HH:mm:ss"));
    if (decimals == 0)
        return whole;
    const QString fraction = QStringLiteral("%1").arg(time % session::kPerSecond, 9, 10, QLatin1Char('0'));
    return whole + QLatin1Char('.') + fraction.left(decimals);
}

std::vector<Tick> ticksOf(const Scale &scale, int apart)
{
    const Span &span = scale.span();
    const qint64 step = stepFor(static_cast<double>(span.length()) * apart / scale.width());
    const qint64 offset = localTime(span.from).offsetFromUtc() * session::kPerSecond;
    std::vector<Tick> ticks;
    for (qint64 time = (span.from + offset) / step * step - offset; time < span.to; time += step) {
        if (time >= span.from)
            ticks.push_back(
                {time,
                 step < 24 * kHour ? clockText(time, decimalsOf(step)) : localTime(time).date().toString(Qt::ISODate)});
    }
    return ticks;
}

} // namespace timeline
