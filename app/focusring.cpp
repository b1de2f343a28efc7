// SPDX-License-Identifier: MIT
#include "app/focusring.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>
#include <QPainter>

namespace {

constexpr int kOutside = 3; // pixels between the ring's outer edge and the widget
constexpr QRgb kColour = 0xFF0B2E8A;

class Ring : public QWidget
{
public:
    explicit Ring(QWidget *parent) : QWidget(parent)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
        setFocusPolicy(Qt::NoFocus);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(kColour), 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 5, 5);
    }
};

// A list in a popup shows its current row itself.
bool wantsRing(const QWidget *widget)
{
    return widget && !widget->isWindow() && widget->window()->testAttribute(Qt::WA_KeyboardFocusChange)
        && !(widget->window()->windowType() == Qt::Popup && qobject_cast<const QAbstractItemView *>(widget));
}

} // namespace

FocusRing::FocusRing(QObject *parent) : QObject(parent)
{
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { follow(now); });
}

FocusRing::~FocusRing()
{
    delete m_ring;
}

void FocusRing::follow(QWidget *widget)
{
    if (m_target)
        m_target->removeEventFilter(this);
    m_target = wantsRing(widget) ? widget : nullptr;
    if (!m_target) {
        delete m_ring;
        return;
    }
    m_target->installEventFilter(this);
    if (!m_ring || m_ring->parentWidget() != m_target->parentWidget()) {
        delete m_ring;
        m_ring = new Ring(m_target->parentWidget());
    }
    place();
}

// Where the parent ends, the ring lies on the widget's edge.
void FocusRing::place()
{
    if (!m_target || !m_ring)
        return;
    const QRect around = m_target->geometry().adjusted(-kOutside, -kOutside, kOutside, kOutside);
    m_ring->setGeometry(around & m_target->parentWidget()->rect());
    m_ring->raise();
    m_ring->setVisible(m_target->isVisible());
}

bool FocusRing::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
        place();
        break;
    case QEvent::ParentChange:
        follow(m_target);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
