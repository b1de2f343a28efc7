// SPDX-License-Identifier: MIT
#include "timeline/view.h"

#include "session/clock.h"
#include "timeline/observer.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace timeline {

namespace {

constexpr qint64 kFirstSpan = 60 * session::kPerSecond;
constexpr qint64 kLatestEnd = qint64{8} * 1'000'000'000 * session::kPerSecond; // far from where times run over
constexpr int kRepaintMs = 40;
constexpr int kSlowestMs = 1000;
constexpr double kStep = 1.25; // of the wheel
constexpr int kMovePixels = 60;

} // namespace

View::View(const Observer &observer, QWidget *parent) : QWidget(parent), m_observer(observer)
{
    setFocusPolicy(Qt::StrongFocus);
    setObjectName(QStringLiteral("timeLineView"));
    setAccessibleName(QStringLiteral("Time line of the faults"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_span = {observer.now() - kFirstSpan, observer.now()};
    m_soon.setSingleShot(true);
    m_soon.setInterval(kRepaintMs);
    connect(&m_soon, &QTimer::timeout, this, &View::keepUp);
    connect(&m_clock, &QTimer::timeout, this, &View::keepUp);
    connect(&observer, &Observer::grown, this, &View::repaintSoon);
}

const Chronicle &View::chronicle() const
{
    return m_observer.chronicle();
}

void View::repaintSoon()
{
    if (isVisible() && !m_soon.isActive())
        m_soon.start();
}

// A pixel's worth of time is what is worth a repaint.
void View::keepUp()
{
    if (m_following) {
        const qint64 now = m_observer.now();
        m_span = {now - m_span.length(), now};
        const qint64 pixelMs = m_span.length() / std::max(width(), 1) / 1'000'000;
        m_clock.start(static_cast<int>(std::clamp<qint64>(pixelMs, kRepaintMs, kSlowestMs)));
    }
    update();
}

void View::setSpan(const Span &span)
{
    if (span.from < 0 || span.to > kLatestEnd || span.length() < kShortestSpan)
        return;
    m_span = span;
    follow(false);
    update();
}

void View::showAll()
{
    if (chronicle().isEmpty())
        return;
    const qint64 length = std::clamp(chronicle().last() - chronicle().first(), kShortestSpan, kLongestSpan);
    const qint64 margin = length / 50 + kShortestSpan;
    setSpan({chronicle().last() - length - margin, chronicle().last() + margin});
}

void View::zoom(double factor)
{
    const bool following = m_following;
    setSpan(zoomed(m_span, following ? m_span.to : m_span.from + m_span.length() / 2, factor));
    follow(following);
}

void View::follow(bool on)
{
    if (on != m_following) {
        m_following = on;
        emit followingChanged(on);
    }
    if (on && isVisible())
        keepUp();
    else
        m_clock.stop();
}

void View::select(int fault)
{
    m_selected = fault < static_cast<int>(chronicle().faults().size()) ? fault : -1;
    if (m_selected >= 0 && !m_following) {
        const qint64 time = chronicle().faults()[static_cast<std::size_t>(m_selected)].time;
        if (time < m_span.from || time >= m_span.to)
            setSpan(moved(m_span, time - (m_span.from + m_span.length() / 2)));
    }
    repaintSoon();
}

void View::moveBy(int pixels)
{
    const Picture now = picture();
    setSpan(moved(m_span, now.timeAt(now.marks().left() + pixels) - m_span.from));
}

// In the order of the history, which is that of time.
void View::chooseBeside(int step)
{
    const int count = static_cast<int>(chronicle().faults().size());
    if (count > 0)
        emit chosen(std::clamp(m_selected < 0 ? count - 1 : m_selected + step, 0, count - 1));
}

void View::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    picture().paint(painter);
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

void View::wheelEvent(QWheelEvent *event)
{
    const QPoint turn = event->angleDelta();
    if (turn.x() != 0 || event->modifiers().testFlag(Qt::ShiftModifier))
        moveBy(-(turn.x() + turn.y()) / 2);
    else if (m_following)
        zoom(std::pow(kStep, -turn.y() / 120.0));
    else
        setSpan(zoomed(m_span, picture().timeAt(qRound(event->position().x())), std::pow(kStep, -turn.y() / 120.0)));
    event->accept();
}

void View::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_pressedAt = event->x();
    m_dragging = false;
}

void View::mouseMoveEvent(QMouseEvent *event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        return;
    m_dragging = m_dragging || std::abs(event->x() - m_pressedAt) >= QApplication::startDragDistance();
    if (m_dragging)
        moveBy(m_pressedAt - std::exchange(m_pressedAt, event->x()));
}

void View::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || std::exchange(m_dragging, false))
        return;
    if (const int fault = picture().faultAt(event->pos()); fault >= 0)
        emit chosen(fault);
}

void View::keyPressEvent(QKeyEvent *event)
{
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return zoom(1 / kStep);
    case Qt::Key_Minus:
        return zoom(kStep);
    case Qt::Key_Left:
        return shift ? moveBy(-kMovePixels) : chooseBeside(-1);
    case Qt::Key_Right:
        return shift ? moveBy(kMovePixels) : chooseBeside(1);
    case Qt::Key_A:
        return showAll();
    case Qt::Key_End:
        return follow(true);
    default:
        QWidget::keyPressEvent(event);
    }
}

void View::showEvent(QShowEvent *)
{
    keepUp();
}

void View::hideEvent(QHideEvent *)
{
    m_clock.stop();
}

} // namespace timeline
