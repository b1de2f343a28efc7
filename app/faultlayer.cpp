// SPDX-License-Identifier: MIT
#include "app/faultlayer.h"

#include "app/zoom.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr QRgb kFault = 0xFFD01C2E;
constexpr QRgb kDrawing = 0xFF4E74A8;
constexpr QRgb kHalo = 0xE6FFFFFF;

QPen pen(QRgb colour, int width)
{
    return {QColor::fromRgba(colour), double(zoomed(width)), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

QPolygonF headOf(const QPolygonF &way)
{
    const QPointF tip = way.last();
    const QPointF along = tip - way[way.size() - 2];
    const double length = std::hypot(along.x(), along.y());
    if (length < 1)
        return {};
    const QPointF back = along * (zoomed(8) / length);
    const QPointF side(-back.y() * 0.6, back.x() * 0.6);
    return {QVector<QPointF>{tip, tip - back + side, tip - back - side}};
}

void paintWay(QPainter &painter, const QPolygonF &way, QRgb colour)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(pen(kHalo, 7));
    painter.drawPolyline(way);
    painter.setPen(pen(colour, 3));
    painter.drawPolyline(way);
    painter.setBrush(QColor::fromRgba(colour));
    painter.drawPolygon(headOf(way));
}

void paintOutline(QPainter &painter, const QRectF &outline, QRgb colour)
{
    const double radius = zoomed(4);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(pen(kHalo, 6));
    painter.drawRoundedRect(outline, radius, radius);
    painter.setPen(pen(colour, 3));
    painter.drawRoundedRect(outline, radius, radius);
}

// Beside a way's first corner, where it hides neither of its ends; at an outline's upper right corner, or across its
// right edge.
QRectF placeOfWords(const FaultMark &mark, const QSizeF &size)
{
    const bool low = mark.outline.height() < 3 * size.height();
    if (mark.way.size() < 2 && low) // where the text is, is no room
        return {mark.outline.right() - size.width() / 2, mark.outline.center().y() - size.height() / 2, size.width(),
                size.height()};
    if (mark.way.size() < 2)
        return {mark.outline.right() - size.width(), mark.outline.top() - size.height() / 2, size.width(),
                size.height()};
    const QPointF corner = mark.way.size() > 2 ? mark.way[1] : (mark.way[0] + mark.way[1]) / 2;
    const bool right = mark.way.last().x() >= corner.x();
    const double gap = zoomed(8);
    return {right ? corner.x() + gap : corner.x() - gap - size.width(), corner.y() - size.height() / 2, size.width(),
            size.height()};
}

void paintWords(QPainter &painter, const FaultMark &mark, QRgb colour)
{
    const QRectF text = painter.fontMetrics().boundingRect(mark.words);
    const QRectF place = placeOfWords(mark, {text.width() + zoomed(8), text.height() + zoomed(2)});
    painter.setPen(pen(kHalo, 1));
    painter.setBrush(QColor::fromRgba(colour));
    painter.drawRoundedRect(place, zoomed(3), zoomed(3));
    painter.setPen(Qt::white);
    painter.drawText(place, Qt::AlignCenter, mark.words);
}

// A record has up to 255 faults, but few places for them: the first at each is marked.
FaultLayer::Marks distinct(const FaultLayer::Marks &marks)
{
    FaultLayer::Marks kept;
    for (const FaultMark &mark : marks) {
        const auto isThere = [&mark](const FaultMark &other) {
            return other.outline == mark.outline && other.way == mark.way && other.isFault == mark.isFault;
        };
        if (std::none_of(kept.begin(), kept.end(), isThere))
            kept.push_back(mark);
    }
    return kept;
}

} // namespace

FaultLayer::FaultLayer(QWidget &covered) : QWidget(&covered)
{
    setObjectName(QStringLiteral("faultLayer_") + covered.objectName());
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    setGeometry(covered.rect());
    covered.installEventFilter(this);
    hide();
}

void FaultLayer::show(std::function<Marks()> marks)
{
    m_marks = std::move(marks);
    raise();
    setVisible(m_marks != nullptr);
    update();
}

QRectF FaultLayer::place(const QWidget &widget) const
{
    return QRectF(widget.mapTo(parentWidget(), QPoint(0, 0)), QSizeF(widget.size()));
}

bool FaultLayer::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

void FaultLayer::paintEvent(QPaintEvent *)
{
    Marks marks = distinct(m_marks ? m_marks() : Marks{});
    const QSize size = this->size() * devicePixelRatioF();
    if (marks != m_drawn || size != m_picture.size()) {
        m_drawn = std::move(marks);
        m_picture = QPixmap(size);
        m_picture.setDevicePixelRatio(devicePixelRatioF());
        m_picture.fill(Qt::transparent);
        drawMarks();
    }
    QPainter(this).drawPixmap(0, 0, m_picture);
}

void FaultLayer::drawMarks()
{
    QPainter painter(&m_picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    for (const FaultMark &mark : m_drawn) {
        const QRgb colour = mark.isFault ? kFault : kDrawing;
        if (!mark.outline.isEmpty())
            paintOutline(painter, mark.outline, colour);
        if (mark.way.size() > 1)
            paintWay(painter, mark.way, colour);
    }
    for (const FaultMark &mark : m_drawn) {
        if (!mark.words.isEmpty())
            paintWords(painter, mark, mark.isFault ? kFault : kDrawing);
    }
}
