// SPDX-License-Identifier: MIT
#include "app/linelamp.h"

#include "app/zoom.h"

#include <QPainter>
#include <QPainterPath>
#include <QTextDocument>
#include <QVector>

namespace {

// Pixels at 100 %.
constexpr int kLampPixels = 14;
constexpr int kGapPixels = 6;
constexpr int kMarginPixels = 8;
constexpr int kWidestPort = 320;
constexpr int kLeastPort = 60;

constexpr QRgb kGreen = 0xFF1E9E46;
constexpr QRgb kAmber = 0xFFF0A000;
constexpr QRgb kRed = 0xFFC81E2D;
constexpr QRgb kGrey = 0xFF6A7688;
constexpr QRgb kBlue = 0xFF1A66CC;
constexpr QRgb kInk = 0xFF21324A;
constexpr QRgb kFaint = 0xFF51617A;
constexpr QRgb kHover = 0xFFD0DDEE;

QPen pen(QRgb colour, const QRectF &square, double width = 0.14)
{
    return {QColor(colour), square.width() * width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

QRectF inner(const QRectF &square, double share)
{
    const double margin = square.width() * (1 - share) / 2;
    return square.adjusted(margin, margin, -margin, -margin);
}

void paintReceiving(QPainter &painter, const QRectF &square)
{
    QRadialGradient glow(square.center(), square.width() / 2);
    glow.setColorAt(0, QColor(0xFF7BE495));
    glow.setColorAt(0.55, QColor(kGreen));
    glow.setColorAt(1, QColor(0xFF14783A));
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow);
    painter.drawEllipse(inner(square, 0.96));
}

void paintQuiet(QPainter &painter, const QRectF &square)
{
    painter.setPen(pen(kGreen, square, 0.18));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(inner(square, 0.76));
}

void paintSilent(QPainter &painter, const QRectF &square)
{
    QPainterPath triangle(QPointF(square.center().x(), square.top()));
    triangle.lineTo(square.bottomRight());
    triangle.lineTo(square.bottomLeft());
    triangle.closeSubpath();
    painter.setPen(Qt::NoPen);
    painter.fillPath(triangle, QColor(kAmber));
    const double x = square.center().x();
    painter.setPen(pen(0xFF201800, square));
    painter.drawLine(QPointF(x, square.top() + square.height() * 0.38),
                     QPointF(x, square.top() + square.height() * 0.64));
    painter.drawPoint(QPointF(x, square.top() + square.height() * 0.84));
}

void paintLost(QPainter &painter, const QRectF &square)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(kRed));
    painter.drawEllipse(square);
    const QRectF cross = inner(square, 0.42);
    painter.setPen(pen(0xFFFFFFFF, square));
    painter.drawLine(cross.topLeft(), cross.bottomRight());
    painter.drawLine(cross.bottomLeft(), cross.topRight());
}

void paintClosed(QPainter &painter, const QRectF &square)
{
    painter.setPen(pen(kGrey, square));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(inner(square, 0.84), 2, 2);
    const QRectF bar = inner(square, 0.4);
    painter.drawLine(QPointF(bar.left(), bar.center().y()), QPointF(bar.right(), bar.center().y()));
}

// A terminal's prompt.
void paintConsole(QPainter &painter, const QRectF &square)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(kBlue));
    painter.drawRoundedRect(square, 3, 3);
    const QRectF sign = inner(square, 0.44);
    painter.setPen(pen(0xFFFFFFFF, square));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(
        QVector<QPointF>{sign.topLeft(), QPointF(sign.center().x(), sign.center().y()), sign.bottomLeft()});
    painter.drawLine(QPointF(sign.center().x() + 1, sign.bottom()), sign.bottomRight());
}

} // namespace

void paintLamp(QPainter &painter, const QRectF &square, LineMonitor::State state)
{
    constexpr void (*painters[])(QPainter &, const QRectF &) = {paintClosed,    paintConsole, paintQuiet,
                                                                paintReceiving, paintSilent,  paintLost};
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painters[static_cast<int>(state)](painter, square);
    painter.restore();
}

LineLamp::LineLamp(QWidget *parent) : QToolButton(parent)
{
    setObjectName(QStringLiteral("toolButton_line"));
    setAccessibleName(QStringLiteral("Line to the board"));
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
}

void LineLamp::show(LineMonitor::State state, const QString &word, const QString &port)
{
    if (state == m_state && word == m_word && port == m_port && !text().isEmpty())
        return;
    m_state = state;
    m_word = word;
    m_port = port;
    setText(port.isEmpty() ? word : word + QStringLiteral(", ") + port);
    setAccessibleDescription(text());
    setToolTip(
        Qt::convertFromPlainText(text() + QStringLiteral("\nPress for the ports and what has passed the line.")));
    updateGeometry();
    update();
}

QFont LineLamp::wordFont() const
{
    QFont bold = font();
    bold.setBold(true);
    return bold;
}

QSize LineLamp::sizeFor(int widestPort) const
{
    const int gap = zoomed(kGapPixels);
    const int word = QFontMetrics(wordFont()).horizontalAdvance(m_word);
    const int port = m_port.isEmpty() ? 0 : gap + qMin(widestPort, fontMetrics().horizontalAdvance(m_port) + 1);
    return {zoomed(kLampPixels) + gap + word + port + 2 * zoomed(kMarginPixels), fontMetrics().height() + zoomed(8)};
}

QSize LineLamp::sizeHint() const
{
    return sizeFor(zoomed(kWidestPort));
}

QSize LineLamp::minimumSizeHint() const
{
    return sizeFor(zoomed(kLeastPort));
}

void LineLamp::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (underMouse() || isDown() || hasFocus()) {
        painter.setPen(hasFocus() ? QPen(QColor(kBlue), 1.5) : QPen(Qt::NoPen));
        painter.setBrush(underMouse() || isDown() ? QColor(kHover) : QColor(Qt::transparent));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
    }
    const int lamp = zoomed(kLampPixels);
    const int gap = zoomed(kGapPixels);
    const int margin = zoomed(kMarginPixels);
    paintLamp(painter, QRectF(margin, (height() - lamp) / 2.0, lamp, lamp), m_state);
    QRect place = rect().adjusted(margin + lamp + gap, 0, -margin, 0);
    painter.setPen(QColor(kInk));
    painter.setFont(wordFont());
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft, m_word);
    place.setLeft(place.left() + painter.fontMetrics().horizontalAdvance(m_word) + gap);
    painter.setFont(font());
    painter.setPen(QColor(kFaint));
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(m_port, Qt::ElideMiddle, place.width()));
}
