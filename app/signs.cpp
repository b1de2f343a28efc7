// SPDX-License-Identifier: MIT
#include "app/signs.h"

#include "app/zoom.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QPointer>

#include <algorithm>

namespace sign {

namespace {

constexpr char kProperty[] = "sign";
constexpr int kSide = 11; // pixels at 100 %
constexpr int kLeastSide = 9;
constexpr int kLargeSide = 15;
constexpr int kSmallSide = 7; // where the text needs nearly all
constexpr int kMargin = 4;
constexpr int kCornerMargin = 2;

constexpr QRgb kDark = 0xFF101C2E;
constexpr QRgb kWhite = 0xFFFFFFFF;

// The shapes lie in a square from 0 to 10.
QPainterPath polyline(std::initializer_list<QPointF> points)
{
    QPainterPath path(*points.begin());
    for (const QPointF &point : points)
        path.lineTo(point);
    return path;
}

QPainterPath lines(std::initializer_list<QLineF> lines)
{
    QPainterPath path;
    for (const QLineF &line : lines) {
        path.moveTo(line.p1());
        path.lineTo(line.p2());
    }
    return path;
}

QPainterPath stroked(const QPainterPath &path, double width = 2)
{
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(path);
}

QPainterPath dots()
{
    QPainterPath path;
    for (const double x : {1.3, 5.0, 8.7})
        path.addEllipse(QPointF(x, 5), 1.3, 1.3);
    return path;
}

QPainterPath square()
{
    QPainterPath path;
    path.addRect(1.5, 1.5, 7, 7);
    return path;
}

QPainterPath pathOf(Shape shape)
{
    switch (shape) {
    case Shape::Tick:
        return stroked(polyline({{1.2, 5.4}, {4, 8.4}, {8.8, 1.8}}));
    case Shape::Cross:
        return stroked(lines({{1.5, 1.5, 8.5, 8.5}, {8.5, 1.5, 1.5, 8.5}}));
    case Shape::Dash:
        return stroked(lines({{1.5, 5, 8.5, 5}}));
    case Shape::Triangle:
        return stroked(polyline({{5, 1.2}, {9, 8.8}, {1, 8.8}, {5, 1.2}}), 1.4)
            | stroked(lines({{5, 4.4, 5, 6.4}}), 1.5);
    case Shape::Diamond:
        return stroked(polyline({{5, 1}, {9, 5}, {5, 9}, {1, 5}, {5, 1}}), 1.8);
    case Shape::Square:
        return square();
    case Shape::Dots:
        return dots();
    case Shape::Pause:
        return stroked(lines({{3, 1.5, 3, 8.5}, {7, 1.5, 7, 8.5}}));
    case Shape::Arrow:
        return polyline({{2, 0.8}, {9.2, 5}, {2, 9.2}, {2, 0.8}});
    case Shape::None:
        break;
    }
    return {};
}

// Over a cell that its number fills: a folded corner, a line below.
QPainterPath smallPathOf(Shape shape)
{
    switch (shape) {
    case Shape::Tick:
        return polyline({{4, 0}, {10, 0}, {10, 6}, {4, 0}});
    case Shape::Dash:
        return polyline({{1.43, 7.15}, {8.57, 7.15}, {8.57, 10}, {1.43, 10}, {1.43, 7.15}}); // whole pixels
    default:
        return pathOf(shape);
    }
}

QPixmap drawn(Shape shape, Ink ink, int side, qreal ratio)
{
    QPixmap picture(QSizeF(side * ratio, side * ratio).toSize());
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / 10.0, side / 10.0);
    painter.fillPath(side > zoomed(kSmallSide) ? pathOf(shape) : smallPathOf(shape),
                     QColor(ink == Ink::Dark ? kDark : kWhite));
    return picture;
}

template <class Widget> QSize roomOfText(const QWidget *widget, QString &text)
{
    const auto *shower = qobject_cast<const Widget *>(widget);
    if (!shower)
        return {};
    text = shower->text();
    return widget->fontMetrics().size(0, text);
}

// What the widget's text takes of it.
QSize textSize(const QWidget *widget)
{
    QString text;
    QSize size = roomOfText<QLabel>(widget, text);
    if (text.isEmpty())
        size = roomOfText<QLineEdit>(widget, text);
    if (text.isEmpty())
        size = roomOfText<QAbstractButton>(widget, text);
    return text.isEmpty() ? QSize() : size;
}

bool isCentred(const QWidget *widget)
{
    const auto *label = qobject_cast<const QLabel *>(widget);
    const auto *field = qobject_cast<const QLineEdit *>(widget);
    const Qt::Alignment alignment = label ? label->alignment() : field ? field->alignment() : Qt::AlignHCenter;
    return alignment & Qt::AlignHCenter;
}

QRect corner(const QWidget *widget, int side)
{
    return {widget->width() - side - zoomed(kCornerMargin), zoomed(kCornerMargin), side, side};
}

// In the middle where there is no text; above it in the corner where that leaves room; beside it; else small in the corner.
QRect placeIn(const QWidget *widget, Shape shape)
{
    const QSize room = widget->size();
    const QSize text = textSize(widget);
    if (text.isEmpty()) {
        const int side = std::max(std::min({zoomed(kLargeSide), room.width() - 2, room.height() - 2}), 1);
        return {(room.width() - side) / 2, (room.height() - side) / 2, side, side};
    }
    const int above = (room.height() - text.height()) / 2 - zoomed(kCornerMargin);
    if (above >= zoomed(kLeastSide))
        return corner(widget, std::min(above, zoomed(kLargeSide)));
    const int spare = room.width() - text.width();
    const int beside = isCentred(widget) ? spare / 2 - zoomed(kMargin) : spare - 2 * zoomed(kMargin);
    const int side = std::min({beside, room.height() - 2, std::max(zoomed(kSide), room.height() / 3)});
    if (side >= zoomed(kLeastSide))
        return {isCentred(widget) ? zoomed(kMargin) : room.width() - side - zoomed(kMargin), (room.height() - side) / 2,
                side, side};
    const int small = zoomed(kSmallSide);
    if (shape == Shape::Dash)
        return {(room.width() - small) / 2, room.height() - small - 1, small, small};
    return corner(widget, small).translated(1, -1);
}

// Lives as long as the application: pictures cannot live longer.
class Painter : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Paint)
            return false;
        watched->event(event);
        auto *widget = static_cast<QWidget *>(watched);
        const Shape shape = over(widget);
        if (shape != Shape::None) {
            const QRect place = placeIn(widget, shape);
            QPainter painter(widget);
            painter.drawPixmap(place.topLeft(),
                               picture(shape, inkOf(widget), place.width(), widget->devicePixelRatioF()));
        }
        return true;
    }

private:
    static Ink inkOf(const QWidget *widget) { return static_cast<Ink>(widget->property(kProperty).toInt() & 1); }

    const QPixmap &picture(Shape shape, Ink ink, int side, qreal ratio)
    {
        const auto key = QPair(static_cast<int>(shape) * 2 + static_cast<int>(ink), qRound(side * 64 + ratio * 8));
        auto it = m_pictures.constFind(key);
        if (it == m_pictures.constEnd())
            it = m_pictures.insert(key, drawn(shape, ink, side, ratio));
        return *it;
    }

    QHash<QPair<int, int>, QPixmap> m_pictures;
};

Painter &thePainter()
{
    static QPointer<Painter> painter;
    if (!painter)
        painter = new Painter(QCoreApplication::instance());
    return *painter;
}

} // namespace

void put(QWidget *widget, Shape shape, Ink ink)
{
    const QVariant old = widget->property(kProperty);
    const int value = static_cast<int>(shape) * 2 + static_cast<int>(ink);
    if (old.isValid() && old.toInt() == value)
        return;
    if (!old.isValid())
        widget->installEventFilter(&thePainter());
    widget->setProperty(kProperty, value);
    widget->update();
}

Shape over(const QWidget *widget)
{
    return static_cast<Shape>(widget->property(kProperty).toInt() / 2);
}

} // namespace sign
