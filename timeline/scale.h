// SPDX-License-Identifier: MIT
// A span of time along a row of pixels, and the marks of its axis.
#pragma once

#include <QString>

#include <algorithm>
#include <vector>

namespace timeline {

struct Span {
    qint64 from = 0; // nanoseconds since 1970
    qint64 to = 1;

    qint64 length() const { return to - from; }
    bool operator==(const Span &) const = default;
};

inline constexpr qint64 kShortestSpan = 1'000;                          // a microsecond
inline constexpr qint64 kLongestSpan = qint64{30} * 86'400'000'000'000; // thirty days

/// `span` stretched about `centre`, within the limits.
Span zoomed(const Span &span, qint64 centre, double factor);
Span moved(const Span &span, qint64 by);

class Scale
{
public:
    Scale(const Span &span, int width) : m_span(span), m_width(std::max(width, 1)) {}

    int width() const { return m_width; }
    /// Column of a moment; beyond either end below 0 or at least width().
    int column(qint64 time) const;
    /// The first moment of a column.
    qint64 start(int column) const;
    const Span &span() const { return m_span; }

private:
    Span m_span;
    int m_width;
};

/// Calls `take(column, first, count)` for each column that has one of the sorted `times`: its first element's number, and
/// how many there are. The effort grows with the columns and hardly with the times, so that none is ever passed over.
template <class Take> void forEachColumn(const std::vector<qint64> &times, const Scale &scale, Take take)
{
    auto at = std::lower_bound(times.begin(), times.end(), scale.span().from);
    while (at != times.end() && *at < scale.span().to) {
        const int column = scale.column(*at);
        const qint64 end = std::min(scale.start(column + 1), scale.span().to);
        std::ptrdiff_t step = 1;
        auto low = at;
        while (times.end() - low > step && *(low + step) < end) {
            low += step;
            step *= 2;
        }
        const auto next = std::lower_bound(low + 1, low + std::min(step, times.end() - low), end);
        take(column, at - times.begin(), next - at);
        at = next;
    }
}

struct Tick {
    qint64 time = 0;
    QString text;
};
/// Round moments of local time at least `apart` pixels from each other.
std::vector<Tick> ticksOf(const Scale &scale, int apart);

/// "14:03:22.123456" local time, with as many decimals of the second as asked for.
QString clockText(qint64 time, int decimals);

} // namespace timeline
