// SPDX-License-Identifier: MIT
#include "app/veil.h"

#include "app/elidedlabel.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QMainWindow>
#include <QPainter>
#include <QPainterPath>
#include <QTextDocument>

namespace {

constexpr int kSign = 18;
constexpr int kStripe = 14; // pixels between the veil's stripes

// A warning triangle, white with the band's red in it.
class Sign : public QWidget
{
public:
    Sign() { setFixedSize(kSign + 4, kSign); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(width() / (kSign + 4.0), height() / double(kSign));
        QPainterPath triangle(QPointF(kSign / 2.0 + 2, 1));
        triangle.lineTo(kSign + 3, kSign - 1);
        triangle.lineTo(1, kSign - 1);
        triangle.closeSubpath();
        painter.fillPath(triangle, Qt::white);
        painter.setPen(QPen(QColor(176, 20, 36), 2.4, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(kSign / 2.0 + 2, 7), QPointF(kSign / 2.0 + 2, 11));
        painter.drawPoint(QPointF(kSign / 2.0 + 2, 14.6));
    }
};

} // namespace

Veil::Veil(QWidget &covered) : QWidget(&covered)
{
    setObjectName(QStringLiteral("veil"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    covered.installEventFilter(this);
    hide();
}

void Veil::cover(bool covered)
{
    if (covered) {
        setGeometry(parentWidget()->rect());
        raise();
    }
    setVisible(covered);
}

bool Veil::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && isVisibleTo(parentWidget()))
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

void Veil::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(236, 239, 244, 130));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(120, 132, 150, 46), 1.2));
    for (int x = -height(); x < width(); x += kStripe)
        painter.drawLine(QPointF(x, height()), QPointF(x + height(), 0));
}

Band::Band(QMainWindow &window) : QToolBar(&window), m_trouble(new QLabel), m_remedy(new ElidedLabel)
{
    setObjectName(QStringLiteral("band"));
    setWindowTitle(QStringLiteral("Line to the board"));
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    toggleViewAction()->setVisible(false);
    setStyleSheet(
        QStringLiteral("QToolBar { background: rgb(176,20,36); border: none; padding: 3px 6px; spacing: 8px; }"
                       "QLabel { color: white; } QLabel#bandTrouble { font: bold; }"));
    m_trouble->setObjectName(QStringLiteral("bandTrouble"));
    m_trouble->setTextFormat(Qt::PlainText);
    m_remedy->setObjectName(QStringLiteral("bandRemedy"));
    auto *content = new QWidget; // one item: a menu bar moves items that do not fit into an overflow menu
    content->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    auto *layout = new QHBoxLayout(content);
    layout->setContentsMargins(6, 2, 6, 2);
    layout->setSpacing(8);
    layout->addWidget(new Sign);
    layout->addWidget(m_trouble);
    layout->addWidget(m_remedy, 1);
    addWidget(content);
    window.addToolBar(Qt::TopToolBarArea, this);
    hide();
}

void Band::say(const QString &trouble, const QString &remedy)
{
    const bool isNew = trouble != m_trouble->text() || remedy != m_remedy->text();
    m_trouble->setText(trouble);
    m_remedy->setText(remedy);
    m_remedy->setToolTip(Qt::convertFromPlainText(remedy));
    setAccessibleName(trouble);
    setAccessibleDescription(remedy);
    setVisible(!trouble.isEmpty());
    if (!isNew || trouble.isEmpty())
        return;
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}
