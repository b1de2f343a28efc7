// SPDX-License-Identifier: MIT
#include "demo/stage.h"

#include "link/commandchannel.h"

#include <QApplication>
#include <QCursor>
#include <QEasingCurve>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace {

constexpr int kBarHeight = 180;
constexpr int kFrameMs = 20;
constexpr int kPressMs = 180;
constexpr double kPixelsPerMs = 0.9;
constexpr QRgb kNavy = 0xFF0F2A52;
constexpr QRgb kBlue = 0xFF1A66CC;
constexpr QRgb kAmber = 0xFFFFB90F;
constexpr Qt::WindowFlags kOverlay =
    Qt::FramelessWindowHint | Qt::BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus;

QFont lettering(int pixels, bool bold = false)
{
    QFont result(QStringLiteral("DejaVu Sans"));
    result.setPixelSize(pixels);
    result.setBold(bold);
    return result;
}

// An arrow large enough for a small player window; pressed, with a ring around its tip.
QCursor pointer(bool pressed)
{
    QPixmap picture(64, 64);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    if (pressed) {
        painter.setPen(QPen(QColor(kAmber), 5));
        painter.drawEllipse(QPoint(20, 20), 16, 16);
    }
    QPainterPath arrow(QPointF(20, 20));
    for (const QPointF &corner :
         {QPointF(20, 52), QPointF(28, 45), QPointF(33, 57), QPointF(39, 54), QPointF(34, 43), QPointF(44, 42)})
        arrow.lineTo(corner);
    arrow.closeSubpath();
    painter.setPen(QPen(Qt::white, 2.5));
    painter.setBrush(Qt::black);
    painter.drawPath(arrow);
    return {picture, 20, 20};
}

void send(QWidget &widget, QEvent::Type type, const QPoint &place, Qt::MouseButtons held)
{
    QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

class Frame : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(kAmber), 5));
        painter.drawRoundedRect(rect().adjusted(3, 3, -3, -3), 8, 8);
    }
};

} // namespace

class CaptionBar : public QWidget
{
public:
    CaptionBar() : QWidget(nullptr, kOverlay) {}
    QString heading, text;

protected:
    void paintEvent(QPaintEvent *) override
    {
        constexpr int column = 360;
        QPainter painter(this);
        painter.fillRect(rect(), QColor(kNavy));
        painter.fillRect(0, 0, width(), 4, QColor(kAmber));
        painter.setPen(QColor(kAmber));
        painter.setFont(lettering(25, true));
        painter.drawText(QRect(30, 0, column - 40, height()), Qt::AlignVCenter | Qt::TextWordWrap, heading);
        painter.setPen(Qt::white);
        painter.setFont(lettering(29));
        painter.drawText(QRect(column, 0, width() - column - 40, height()), Qt::AlignVCenter | Qt::TextWordWrap, text);
    }
};

class Card : public QWidget
{
public:
    Card() : QWidget(nullptr, kOverlay) {}
    QString title;
    QStringList lines;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QLinearGradient background(0, 0, width(), height());
        background.setColorAt(0, QColor(kNavy));
        background.setColorAt(1, QColor(kBlue));
        QPainter painter(this);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.fillRect(rect(), background);
        painter.drawPixmap(QRect(120, 150, 160, 160), QPixmap(QStringLiteral(":/images/logo.png")));
        painter.setPen(Qt::white);
        painter.setFont(lettering(64, true));
        painter.drawText(QRect(320, 150, width() - 360, 160), Qt::AlignVCenter, title);
        painter.setFont(lettering(34));
        for (int i = 0; i < lines.size(); ++i)
            painter.drawText(QRect(120, 400 + 70 * i, width() - 160, 70), Qt::AlignVCenter, lines[i]);
    }
};

Stage::Stage(QWidget &window)
    : m_window(window),
      m_frame(std::make_unique<Frame>(&window)),
      m_bar(std::make_unique<CaptionBar>()),
      m_card(std::make_unique<Card>())
{
    m_window.move(0, 0);
    m_bar->setGeometry(0, m_window.height(), m_window.width(), kBarHeight);
    m_card->setGeometry(QRect(QPoint(0, 0), size()));
    m_frame->setAttribute(Qt::WA_TransparentForMouseEvents);
    QApplication::setActiveWindow(&m_window);
    QApplication::setOverrideCursor(pointer(false));
    QCursor::setPos(m_window.mapToGlobal(m_window.rect().center()));
}

Stage::~Stage()
{
    QApplication::restoreOverrideCursor();
}

QSize Stage::size() const
{
    return {m_window.width(), m_window.height() + kBarHeight};
}

void Stage::showCaption(const QString &heading, const QString &text)
{
    m_bar->heading = heading;
    m_bar->text = text;
    m_bar->show();
    m_bar->update();
}

void Stage::showCard(const QString &title, const QStringList &lines)
{
    m_card->title = title;
    m_card->lines = lines;
    QApplication::changeOverrideCursor(Qt::BlankCursor);
    m_card->show();
    m_card->raise();
}

void Stage::hideCard()
{
    m_card->hide();
    QApplication::changeOverrideCursor(pointer(false));
}

void Stage::frame(const QWidget *widget)
{
    m_frame->setVisible(widget != nullptr);
    if (!widget)
        return;
    m_frame->setGeometry(QRect(widget->mapTo(&m_window, QPoint(0, 0)), widget->size()).adjusted(-6, -6, 6, 6));
    m_frame->raise();
}

void Stage::pointAt(const QWidget &widget, const QPoint &place)
{
    const QPoint from = QCursor::pos();
    const QPoint way = widget.mapToGlobal(place) - from;
    const int durationMs = 250 + static_cast<int>(std::hypot(way.x(), way.y()) / kPixelsPerMs);
    const QEasingCurve easing(QEasingCurve::InOutQuad);
    for (int ms = 0; ms < durationMs; ms += kFrameMs) {
        QCursor::setPos(from + way * easing.valueForProgress(static_cast<double>(ms) / durationMs));
        delayMs(kFrameMs);
    }
    QCursor::setPos(from + way);
}

void Stage::press(QWidget &widget, const QPoint &place)
{
    QApplication::changeOverrideCursor(pointer(true));
    send(widget, QEvent::MouseButtonPress, place, Qt::LeftButton);
    delayMs(kPressMs);
    QApplication::changeOverrideCursor(pointer(false));
    send(widget, QEvent::MouseButtonRelease, place, Qt::NoButton);
}
