// SPDX-License-Identifier: MIT
#include "timeline/picture.h"

#include <QPainter>
#include <QVector>

#include <bit>
#include <cmath>
#include <numeric>

namespace timeline {

namespace {

constexpr int kNames = 64;    // pixels left of the rows
constexpr int kFigures = 128; // right of them
constexpr int kAxis = 20;
constexpr int kHeading = 22;
constexpr int kTickDistance = 110;
constexpr int kReach = 6; // of a click
constexpr int kLetters = 12;

constexpr QRgb kPaper = 0xFFFFFFFF;
constexpr QRgb kStripe = 0xFFF4F7FB;
constexpr QRgb kLine = 0xFFD3DBE7;
constexpr QRgb kInk = 0xFF21324A;
constexpr QRgb kFaint = 0xFF51617A;
constexpr QRgb kFault = 0xFFC81E2D;
constexpr QRgb kInjection = 0xFF1A66CC;
constexpr QRgb kClear = 0xFF14783A;
constexpr QRgb kRestart = 0xFF5A3C8C;
constexpr QRgb kGap = 0xFF8E9BB0;
constexpr QRgb kHaze = 0x308E9BB0;

QFont lettering(int pixels, bool bold = false)
{
    QFont font;
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

// A bar is two pixels wide where it stands alone, and the higher the more faults share its column.
int heightOf(std::ptrdiff_t faults, int room)
{
    const int doublings = std::min(static_cast<int>(std::bit_width(static_cast<quint64>(faults))) - 1, 6);
    return room * (8 + doublings) / 14;
}

QString decadeText(int decade)
{
    constexpr const char *texts[] = {"1 ns",   "10 ns", "0.1 µs", "1 µs",  "10 µs",
                                     "0.1 ms", "1 ms",  "10 ms",  "0.1 s", "1 s"};
    return QString::fromUtf8(texts[decade]);
}

// "0.02 µs", "12.4 µs", "35.1 ms"
QString durationText(double us)
{
    const bool isLong = us >= 1000;
    return QString::number(isLong ? us / 1000 : us, 'g', 3) + QString::fromUtf8(isLong ? " ms" : " µs");
}

double medianOf(const Histogram &counts, quint32 all)
{
    quint32 below = 0;
    for (int bin = 0; bin < kBins; ++bin) {
        below += counts[static_cast<std::size_t>(bin)];
        if (2 * below >= all)
            return std::sqrt(startOfBin(bin) * startOfBin(bin + 1));
    }
    return 0;
}

} // namespace

Picture::Picture(const Chronicle &chronicle, const Span &span, const QSize &size, int selected)
    : m_chronicle(chronicle),
      m_size(size.expandedTo(kLeast)),
      m_selected(selected),
      m_left(kNames),
      m_top(kAxis),
      m_bandHeight((m_size.height() - 2 * kAxis - kHeading) * 62 / 100 / kBandCount),
      m_histogramTop(m_top + m_bandHeight * kBandCount + kHeading),
      m_rowHeight((m_size.height() - kAxis - m_histogramTop) / (kBandCount - 1)),
      m_scale(span, m_size.width() - kNames - kFigures)
{
}

void Picture::paint(QPainter &painter) const
{
    painter.fillRect(QRect(QPoint(), m_size), QColor(kPaper));
    paintRows(painter);
    paintAxis(painter);
    paintGaps(painter);
    paintRestarts(painter);
    for (int number = 0; number < kBandCount; ++number)
        paintMarks(painter, number);
    paintSelection(painter);
    paintLegend(painter);
    paintHistograms(painter);
}

void Picture::paintRows(QPainter &painter) const
{
    painter.setFont(lettering(std::min(kLetters, m_bandHeight - 1)));
    for (int number = 0; number < kBandCount; ++number) {
        const QRect row = band(number);
        painter.fillRect(row, QColor(number % 2 ? kPaper : kStripe));
        painter.setPen(QColor(kInk));
        painter.drawText(QRect(8, row.top(), kNames - 12, row.height()), Qt::AlignVCenter, nameOfBand(number));
    }
}

void Picture::paintAxis(QPainter &painter) const
{
    painter.setFont(lettering(kLetters - 1));
    for (const Tick &tick : ticksOf(m_scale, kTickDistance)) {
        const int x = m_left + m_scale.column(tick.time);
        painter.setPen(QColor(kLine));
        painter.drawLine(x, m_top - 4, x, marks().bottom());
        painter.setPen(QColor(kFaint));
        painter.drawText(QRect(x + 3, 0, kTickDistance, m_top - 2), Qt::AlignVCenter, tick.text);
    }
    painter.setPen(QColor(kLine));
    painter.drawRect(marks().adjusted(-1, -1, 0, 0));
}

void Picture::paintLegend(QPainter &painter) const
{
    struct Row {
        QRgb colour;
        const char *text;
    };
    constexpr Row rows[] = {
        {kInjection, "injected"}, {kFault, "detected"}, {kClear, "cleared"}, {kRestart, "restart"}, {kGap, "no line"}};
    int y = m_top + 2;
    painter.setFont(lettering(kLetters - 1));
    for (const Row &row : rows) {
        const int x = marks().right() + 14;
        painter.fillRect(QRect(x, y + 2, 10, 10), QColor(row.colour));
        painter.setPen(QColor(kInk));
        painter.drawText(QRect(x + 18, y, kFigures, 14), Qt::AlignVCenter, QLatin1String(row.text));
        y += 18;
    }
}

void Picture::paintGaps(QPainter &painter) const
{
    const Span &span = m_scale.span();
    painter.setFont(lettering(kLetters - 1));
    for (const Gap &gap : m_chronicle.gaps()) {
        const qint64 to = gap.to != 0 ? gap.to : span.to;
        if (to <= span.from || gap.from >= span.to)
            continue;
        const int left = m_left + std::max(m_scale.column(gap.from), 0);
        const int right = m_left + std::min(m_scale.column(to), m_scale.width());
        const QRect area(left, m_top, std::max(right - left, 2), marks().height());
        painter.fillRect(area, QColor::fromRgba(kHaze));
        painter.fillRect(area, QBrush(QColor(kGap), Qt::BDiagPattern));
        painter.setPen(QColor(kInk));
        if (area.width() > 60)
            painter.drawText(area.adjusted(6, 0, -6, 0), Qt::AlignCenter | Qt::TextWordWrap, gap.reason);
    }
}

void Picture::paintRestarts(QPainter &painter) const
{
    painter.setPen(QPen(QColor(kRestart), 1.5, Qt::DashLine));
    forEachColumn(m_chronicle.times(kChipBand, Mark::Restart), m_scale,
                  [&](int column, std::ptrdiff_t, std::ptrdiff_t) {
                      painter.drawLine(m_left + column, m_top, m_left + column, marks().bottom());
                  });
}

// Neighbouring columns of one height become one rectangle.
void Picture::paintMarks(QPainter &painter, int number) const
{
    const QRect row = band(number);
    QVector<QRect> bars;
    forEachColumn(m_chronicle.times(number, Mark::Fault), m_scale,
                  [&](int column, std::ptrdiff_t, std::ptrdiff_t count) {
                      const int height = heightOf(count, row.height() - 2);
                      const QRect bar(m_left + column, row.bottom() - height, 2, height);
                      if (!bars.isEmpty() && bars.last().height() == height && bars.last().right() + 1 >= bar.left())
                          bars.last().setRight(bar.right());
                      else
                          bars.append(bar);
                  });
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(kFault));
    painter.drawRects(bars);
    paintFlags(painter, number, Mark::Injection, kInjection);
    paintFlags(painter, number, Mark::Clear, kClear);
}

// An injection hangs from the row's top, a clear stands on its bottom.
void Picture::paintFlags(QPainter &painter, int number, Mark mark, QRgb colour) const
{
    const QRect row = band(number).adjusted(0, 1, 0, -1);
    const double base = mark == Mark::Injection ? row.top() : row.bottom() + 1;
    const double tip = base + (mark == Mark::Injection ? 1 : -1) * row.height() * 0.45;
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(colour));
    painter.setRenderHint(QPainter::Antialiasing);
    forEachColumn(m_chronicle.times(number, mark), m_scale, [&](int column, std::ptrdiff_t, std::ptrdiff_t) {
        const double x = m_left + column + 0.5;
        const QPointF corners[] = {{x - 4.5, base}, {x + 4.5, base}, {x, tip}};
        painter.drawConvexPolygon(corners, 3);
    });
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void Picture::paintSelection(QPainter &painter) const
{
    if (m_selected < 0 || m_selected >= static_cast<int>(m_chronicle.faults().size()))
        return;
    const Fault &fault = m_chronicle.faults()[static_cast<std::size_t>(m_selected)];
    if (fault.time < m_scale.span().from || fault.time >= m_scale.span().to)
        return;
    const int x = m_left + m_scale.column(fault.time);
    painter.setPen(QColor(kInk));
    painter.setBrush(Qt::NoBrush);
    painter.drawLine(x, m_top, x, marks().bottom());
    painter.setPen(QPen(QColor(kInk), 2));
    painter.drawRoundedRect(QRect(x - 4, band(fault.band).top() + 1, 10, m_bandHeight - 2), 3, 3);
}

int Picture::faultAt(const QPoint &point) const
{
    if (!marks().contains(point))
        return -1;
    const int number = (point.y() - m_top) / m_bandHeight;
    const std::vector<qint64> &times = m_chronicle.times(number, Mark::Fault);
    const qint64 wanted = timeAt(point.x());
    auto after = std::lower_bound(times.begin(), times.end(), wanted);
    if (after != times.begin() && (after == times.end() || wanted - *(after - 1) < *after - wanted))
        --after;
    if (after == times.end() || std::abs(m_left + m_scale.column(*after) - point.x()) > kReach)
        return -1;
    return static_cast<int>(m_chronicle.faultNumbers(number)[static_cast<std::size_t>(after - times.begin())]);
}

void Picture::paintHistograms(QPainter &painter) const
{
    painter.setFont(lettering(kLetters, true));
    painter.setPen(QColor(kInk));
    painter.drawText(QRect(8, m_histogramTop - kHeading, m_size.width() - 16, kHeading), Qt::AlignVCenter,
                     QStringLiteral("Detection times of the span above"));
    const int bottom = m_histogramTop + m_rowHeight * (kBandCount - 1);
    painter.setFont(lettering(kLetters - 1));
    for (int decade = 0; decade <= kDecades; ++decade) {
        const int x = m_left + m_scale.width() * decade / kDecades;
        painter.setPen(QColor(kLine));
        painter.drawLine(x, m_histogramTop, x, bottom + 3);
        painter.setPen(QColor(kFaint));
        painter.drawText(QRect(x - 40, bottom, 80, kAxis), Qt::AlignCenter, decadeText(decade));
    }
    for (int number = 0; number < kChipBand; ++number)
        paintHistogram(painter, number, {m_left, m_histogramTop + number * m_rowHeight, m_scale.width(), m_rowHeight});
}

void Picture::paintHistogram(QPainter &painter, int number, const QRect &row) const
{
    const Histogram counts = m_chronicle.histogram(number, m_scale.span().from, m_scale.span().to);
    const quint32 all = std::accumulate(counts.begin(), counts.end(), 0U);
    const quint32 most = *std::max_element(counts.begin(), counts.end());
    painter.setFont(lettering(std::min(kLetters - 1, std::max(m_rowHeight, 8))));
    painter.setPen(QColor(all ? kInk : kFaint));
    painter.drawText(QRect(8, row.top(), kNames - 12, row.height()), Qt::AlignVCenter, nameOfBand(number));
    painter.setPen(QColor(kLine));
    painter.drawLine(row.bottomLeft(), row.bottomRight());
    if (all == 0)
        return;
    for (int bin = 0; bin < kBins; ++bin) {
        const quint32 count = counts[static_cast<std::size_t>(bin)];
        if (count == 0)
            continue;
        const int height = std::max(
            2, static_cast<int>(std::lround((row.height() - 2) * std::sqrt(static_cast<double>(count) / most))));
        const int left = row.left() + row.width() * bin / kBins;
        const int right = row.left() + row.width() * (bin + 1) / kBins;
        painter.fillRect(QRect(left, row.bottom() - height, std::max(right - left - 1, 2), height), QColor(kFault));
    }
    painter.setPen(QColor(kInk));
    painter.drawText(QRect(row.right() + 10, row.top(), kFigures - 14, row.height()), Qt::AlignVCenter,
                     QStringLiteral("%1 · ~%2").arg(all).arg(durationText(medianOf(counts, all))));
}

} // namespace timeline
