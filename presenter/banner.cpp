// SPDX-License-Identifier: MIT
#include "presenter/banner.h"

#include "app/zoom.h"

#include <QAccessible>
#include <QAction>
#include <QMainWindow>
#include <QPainter>

#include <cmath>

namespace presenter {

namespace {

constexpr const char *names[] = {"Injected", "Detected", "Reaction"};
static_assert(std::size(names) == Story::kSteps);

constexpr char kInvitation[] = "Inject a fault, and watch what the chip does.";
constexpr double kLine = 1.25; // of the letters' height
constexpr double kMargin = 0.3;
constexpr double kSmall = 0.45;

QFont lettering(double pixels, bool bold = false)
{
    QFont font;
    font.setPixelSize(qRound(pixels));
    font.setBold(bold);
    return font;
}

} // namespace

class Banner::Canvas : public QWidget
{
public:
    explicit Canvas(const Banner &banner) : m_banner(banner)
    {
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillRect(rect(), QColor(kGround));
        painter.fillRect(QRect(0, 0, width(), 4), QColor(kLightInk));
        QRectF row(m_banner.m_letters * kMargin, m_banner.m_letters * kMargin,
                   width() - 2 * m_banner.m_letters * kMargin, m_banner.m_letters * kLine);
        for (int step = 0; step < Story::kSteps; ++step, row.moveTop(row.bottom()))
            paintStep(painter, row, step);
        paintText(painter, row, m_banner.lastLine(), kLightInk, !m_banner.m_caption.isEmpty());
        paintNext(painter);
    }

private:
    void paintText(QPainter &painter, const QRectF &row, const QString &text, QRgb ink, bool bold) const
    {
        painter.setFont(lettering(m_banner.m_letters, bold));
        painter.setPen(QColor(ink));
        painter.drawText(row, Qt::AlignVCenter,
                         painter.fontMetrics().elidedText(text, Qt::ElideRight, static_cast<int>(row.width())));
    }

    // A ring with the step's number, filled once it has happened, and joined to the one before.
    void paintStep(QPainter &painter, const QRectF &row, int step) const
    {
        const bool done = m_banner.m_story.reached() > step;
        const double diameter = m_banner.m_letters * 1.05;
        const QRectF ring(row.left(), row.center().y() - diameter / 2, diameter, diameter);
        painter.setPen(QPen(QColor(done ? kLightInk : kPaleInk), diameter / 14));
        if (step > 0)
            painter.drawLine(QPointF(ring.center().x(), ring.top()),
                             QPointF(ring.center().x(), ring.bottom() - row.height()));
        painter.setBrush(QColor(done ? kLightInk : kGround));
        painter.drawEllipse(ring.adjusted(2, 2, -2, -2));
        painter.setFont(lettering(diameter * 0.62, true));
        painter.setPen(QColor(done ? kGround : kPaleInk));
        painter.drawText(ring, Qt::AlignCenter, QString::number(step + 1));
        const QString &text = m_banner.m_story.steps[static_cast<std::size_t>(step)];
        paintText(painter, row.adjusted(diameter * 1.4, 0, 0, 0), done ? text : QLatin1String(names[step]),
                  done ? kInk : kPaleInk, false);
    }

    void paintNext(QPainter &painter) const
    {
        if (m_banner.m_next.isEmpty())
            return;
        painter.setFont(lettering(m_banner.m_letters * kSmall));
        painter.setPen(QColor(kPaleInk));
        const double margin = m_banner.m_letters * kMargin;
        painter.drawText(QRectF(rect()).adjusted(margin, margin, -margin, -margin / 2),
                         Qt::AlignRight | Qt::AlignBottom, QStringLiteral("Next: ") + m_banner.m_next);
    }

    const Banner &m_banner;
};

Banner::Banner(QMainWindow &window) : QToolBar(&window), m_canvas(new Canvas(*this))
{
    setObjectName(QStringLiteral("presenterBanner"));
    setWindowTitle(QStringLiteral("Story of the last fault"));
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    toggleViewAction()->setVisible(false);
    setStyleSheet(QStringLiteral("QToolBar { border: none; padding: 0; spacing: 0; }"));
    addWidget(m_canvas);
    keepUnzoomed(*m_canvas);
    window.addToolBar(Qt::BottomToolBarArea, this);
    hide();
}

QWidget &Banner::canvas() const
{
    return *m_canvas;
}

void Banner::setScreenHeight(int pixels)
{
    m_letters = (pixels + kLettersPerScreen - 1) / kLettersPerScreen;
    layOut();
}

void Banner::layOut()
{
    const double lines = (Story::kSteps + 1) * kLine + 2 * kMargin + kSmall;
    m_canvas->setFixedHeight(static_cast<int>(std::ceil(m_letters * lines)));
    m_canvas->update();
}

// A question of the speaker's stands until it has its answer.
QString Banner::lastLine() const
{
    if (!m_story.meaning.isEmpty())
        return m_story.meaning;
    return m_caption.isEmpty() && m_story.reached() == 0 ? QString::fromUtf8(kInvitation) : m_caption;
}

void Banner::setStory(const Story &story)
{
    if (story == m_story)
        return;
    m_story = story;
    m_canvas->update();
    announce();
}

void Banner::setCaption(const QString &caption, const QString &next)
{
    m_caption = caption;
    m_next = next;
    layOut();
    announce();
}

// In words for screen readers, as the alert that it is.
void Banner::announce()
{
    QStringList words{m_caption};
    words.append({m_story.steps.begin(), m_story.steps.end()});
    words.append(m_story.meaning);
    words.removeAll(QString());
    setAccessibleName(words.join(QStringLiteral(". ")));
    if (!isVisible())
        return;
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

int Banner::widthOf(const QString &line) const
{
    return QFontMetrics(lettering(m_letters)).horizontalAdvance(line)
        + static_cast<int>(m_letters * (2 * kMargin + 1.5));
}

} // namespace presenter
