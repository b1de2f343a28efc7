// SPDX-License-Identifier: MIT
#include "modules/servicewindow.h"

#include "app/zoom.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr QRgb kEarly = 0xFFDCE3EE;
constexpr QRgb kServed = 0xFF5BD761;
constexpr QRgb kLate = 0xFFD01C2E;
constexpr QRgb kOff = 0xFFECEEF2;
constexpr QRgb kInk = 0xFF101828;
constexpr QRgb kPale = 0xFF5A6474;
constexpr int kLargestBar = 150;

QString milliseconds(quint32 ms)
{
    return QStringLiteral("%1 ms").arg(ms);
}

} // namespace

void ServiceWindow::show(const Times &times, bool on)
{
    if (m_known && times == m_times && on == m_on)
        return;
    m_known = true;
    m_times = times;
    m_on = on;
    setAccessibleDescription(
        on ? QStringLiteral("Served between %1 and %2, time-out at %3")
                 .arg(milliseconds(times.opens), milliseconds(times.closes), milliseconds(times.timeout))
           : QStringLiteral("Off"));
    update();
}

QSize ServiceWindow::minimumSizeHint() const
{
    return {zoomed(150), 3 * fontMetrics().height()};
}

// The time-out stands at nine tenths of the width, unless the window closes later.
double ServiceWindow::across(quint32 ms) const
{
    const quint32 longest = std::max({m_times.timeout, m_times.closes, 1U});
    return width() * 0.9 * ms / longest;
}

// A line of text has room above and below.
QRectF ServiceWindow::bar(quint32 from, quint32 to) const
{
    const int high = std::min(height() - 2 * fontMetrics().height(), zoomed(kLargestBar));
    return {across(from), (height() - high) / 2.0, across(to) - across(from), double(high)};
}

void ServiceWindow::paintSpan(QPainter &painter, quint32 from, quint32 to, QRgb colour, const QString &words) const
{
    const QRectF place = bar(from, to);
    painter.fillRect(place, QColor::fromRgba(m_on ? colour : kOff));
    painter.setPen(QColor::fromRgba(m_on ? kInk : kPale));
    if (place.width() > fontMetrics().horizontalAdvance(words))
        painter.drawText(place, Qt::AlignCenter, words);
}

void ServiceWindow::paintTimeout(QPainter &painter) const
{
    const int line = fontMetrics().height();
    const QRectF place = bar(0, m_times.timeout);
    painter.setPen(QPen(QColor::fromRgba(m_on ? kLate : kPale), zoomed(3)));
    painter.drawLine(QPointF(place.right(), place.top() - line), place.bottomRight());
    painter.drawText(QRectF(0, place.top() - line, place.right() - zoomed(5), line), Qt::AlignRight | Qt::AlignVCenter,
                     QStringLiteral("time-out"));
}

void ServiceWindow::paintTimes(QPainter &painter) const
{
    painter.setPen(QColor::fromRgba(kInk));
    for (const quint32 ms : {0U, m_times.opens, m_times.closes}) {
        const QString text = milliseconds(ms);
        const double size = fontMetrics().horizontalAdvance(text) + 1;
        const double left = std::clamp(across(ms) - size / 2, 0.0, std::max(0.0, width() - size));
        painter.drawText(QRectF(left, bar(0, 0).bottom(), size, fontMetrics().height()), Qt::AlignCenter, text);
    }
}

void ServiceWindow::paintEvent(QPaintEvent *)
{
    if (!m_known)
        return;
    QPainter painter(this);
    paintSpan(painter, 0, m_times.opens, kEarly, QStringLiteral("too early"));
    paintSpan(painter, m_times.opens, m_times.closes, kServed,
              m_on ? QStringLiteral("service") : QStringLiteral("off"));
    paintTimeout(painter);
    paintTimes(painter);
}
