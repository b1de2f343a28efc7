// SPDX-License-Identifier: MIT
#include "modules/lockpath.h"

#include "app/zoom.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr QRgb kOpen = 0xFF1C7A28;
constexpr QRgb kShut = 0xFFD01C2E;
constexpr QRgb kUnknown = 0xFF8A94A6;
constexpr QRgb kBox = 0xFFE6EDF6;
constexpr QRgb kEdge = 0xFF4E74A8;
constexpr QRgb kInk = 0xFF101828;
constexpr double kLargestText = 2; // times the font

// Three stations of a way from left to right; the one in the middle is a lock.
struct Way {
    const char *from = "";
    const char *lock = "";
    const char *to = "";
    std::optional<bool> shut; // none: not known
};

class WayPainter
{
public:
    WayPainter(QPainter &painter, const QRectF &row) : m_painter(painter), m_row(row) {}

    void paint(const Way &way)
    {
        const bool shut = way.shut.value_or(false);
        const QRgb colour = !way.shut ? kUnknown : shut ? kShut : kOpen;
        const char *const state = !way.shut ? "" : shut ? ": on" : ": off";
        paintArrow(0, colour, shut);
        if (!shut)
            paintArrow(1, colour, false);
        paintBox(station(0), kEdge, QLatin1String(way.from));
        paintBox(station(1), colour, QLatin1String(way.lock) + QLatin1String(state));
        paintBox(station(2), kEdge, QLatin1String(way.to));
    }

private:
    QRectF station(int number) const
    {
        const double wide = m_row.width() * 0.25;
        return {m_row.left() + number * (m_row.width() - wide) / 2, m_row.top(), wide, m_row.height()};
    }

    void paintBox(const QRectF &box, QRgb edge, const QString &words)
    {
        m_painter.setPen(QPen(QColor::fromRgba(edge), zoomed(2)));
        m_painter.setBrush(QColor::fromRgba(kBox));
        m_painter.drawRoundedRect(box, zoomed(5), zoomed(5));
        m_painter.setPen(QColor::fromRgba(kInk));
        m_painter.drawText(box, Qt::AlignCenter | Qt::TextWordWrap, words);
    }

    // From a station to the next one; a shut lock ends it in a cross.
    void paintArrow(int from, QRgb colour, bool shut)
    {
        const double high = m_row.center().y();
        const double begin = station(from).right();
        const double end = station(from + 1).left() - zoomed(3);
        const double head = zoomed(8);
        m_painter.setPen(QPen(QColor::fromRgba(colour), zoomed(3)));
        m_painter.setBrush(QColor::fromRgba(colour));
        m_painter.drawLine(QPointF(begin, high), QPointF(shut ? end : end - head, high));
        if (!shut) {
            m_painter.drawPolygon(QVector<QPointF>{
                {end - zoomed(2), high}, {end - head, high - head / 2}, {end - head, high + head / 2}});
            return;
        }
        const double middle = (begin + end) / 2;
        m_painter.drawLine(QPointF(middle - head, high - head), QPointF(middle + head, high + head));
        m_painter.drawLine(QPointF(middle - head, high + head), QPointF(middle + head, high - head));
    }

    QPainter &m_painter;
    QRectF m_row;
};

} // namespace

LockPath::LockPath()
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    setObjectName(QStringLiteral("lockPath"));
    setAccessibleName(QStringLiteral("Ways through the locks"));
}

void LockPath::show(bool softLocked, bool hardLocked)
{
    const Locks locks = {softLocked, hardLocked};
    if (m_locks == locks)
        return;
    m_locks = locks;
    setAccessibleDescription(
        QLatin1String(softLocked ? "The soft lock stops a write." : "A write reaches the register.") + QLatin1Char(' ')
        + QLatin1String(hardLocked ? "The hard lock keeps the soft lock as it is."
                                   : "The soft lock can be taken off."));
    update();
}

QSize LockPath::minimumSizeHint() const
{
    return {zoomed(400), 4 * fontMetrics().height()};
}

void LockPath::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont large = font();
    const double room = std::min(height() / 7.0, width() / 40.0) / fontMetrics().height();
    large.setPointSizeF(large.pointSizeF() * std::clamp(room, 1.0, kLargestText));
    painter.setFont(large);
    const QRectF area = QRectF(rect()).adjusted(zoomed(2), zoomed(2), -zoomed(2), -zoomed(2));
    const double gap = area.height() / 9;
    const double high = (area.height() - gap) / 2;
    const QRectF upper(area.left(), area.top(), area.width(), high);
    const auto soft = m_locks ? std::optional(m_locks->soft) : std::nullopt;
    const auto hard = m_locks ? std::optional(m_locks->hard) : std::nullopt;
    WayPainter(painter, upper).paint({"Write", "Soft lock", "Register", soft});
    WayPainter(painter, upper.translated(0, high + gap)).paint({"Lock bits", "Hard lock", "Soft lock", hard});
}
