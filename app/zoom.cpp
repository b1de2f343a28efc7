// SPDX-License-Identifier: MIT
#include "app/zoom.h"

#include "app/application.h"
#include "app/startup.h"

#include <QApplication>
#include <QBoxLayout>
#include <QEvent>
#include <QGridLayout>
#include <QMainWindow>
#include <QPointer>
#include <QRegularExpression>
#include <QShortcut>
#include <QToolBar>

#include <algorithm>
#include <vector>

struct LayoutMeasures {
    QPointer<QLayout> layout;
    QMargins margins;
    int horizontal, vertical;   // spacing
    QVector<int> rows, columns; // of a grid: their smallest sizes
};

namespace {

constexpr int kSteps[] = {80, 90, 100, 110, 125, 150, 175, 200, 225, 250};
static_assert(kSteps[0] == Zoom::kLeast && kSteps[std::size(kSteps) - 1] == Zoom::kMost);

constexpr char kUnzoomed[] = "unzoomed";

LayoutMeasures measuresOf(QLayout *layout)
{
    const auto *grid = qobject_cast<const QGridLayout *>(layout);
    if (!grid)
        return {layout, layout->contentsMargins(), layout->spacing(), layout->spacing(), {}, {}};
    LayoutMeasures measures{layout, layout->contentsMargins(), grid->horizontalSpacing(), grid->verticalSpacing(), {},
                            {}};
    for (int row = 0; row < grid->rowCount(); ++row)
        measures.rows.append(grid->rowMinimumHeight(row));
    for (int column = 0; column < grid->columnCount(); ++column)
        measures.columns.append(grid->columnMinimumWidth(column));
    return measures;
}

void collect(QLayout *layout, std::vector<LayoutMeasures> &measures)
{
    measures.push_back(measuresOf(layout));
    for (int i = 0; i < layout->count(); ++i) {
        if (QLayout *inner = layout->itemAt(i)->layout())
            collect(inner, measures);
    }
}

int zoomedSpacing(int pixels)
{
    return pixels < 0 ? pixels : zoomed(pixels); // -1: the style's
}

void apply(const LayoutMeasures &measures)
{
    if (!measures.layout)
        return;
    const QMargins &margins = measures.margins;
    measures.layout->setContentsMargins(zoomed(margins.left()), zoomed(margins.top()), zoomed(margins.right()),
                                        zoomed(margins.bottom()));
    if (auto *grid = qobject_cast<QGridLayout *>(measures.layout.data())) {
        grid->setHorizontalSpacing(zoomedSpacing(measures.horizontal));
        grid->setVerticalSpacing(zoomedSpacing(measures.vertical));
        for (int row = 0; row < measures.rows.size(); ++row)
            grid->setRowMinimumHeight(row, zoomed(measures.rows[row]));
        for (int column = 0; column < measures.columns.size(); ++column)
            grid->setColumnMinimumWidth(column, zoomed(measures.columns[column]));
    } else {
        measures.layout->setSpacing(zoomedSpacing(measures.horizontal));
    }
}

QSize zoomedSize(const QSize &size)
{
    const auto side = [](int pixels) { return pixels < QWIDGETSIZE_MAX ? zoomed(pixels) : pixels; };
    return {side(size.width()), side(size.height())};
}

QString zoomedSheet(const QString &styleSheet)
{
    static const QRegularExpression pixels(QStringLiteral("(\\d+(?:\\.\\d+)?)px"));
    if (Zoom::percent() == 100)
        return styleSheet;
    QString sheet;
    int from = 0;
    for (auto it = pixels.globalMatch(styleSheet); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        sheet += styleSheet.mid(from, match.capturedStart() - from);
        sheet += QString::number(zoomed(qRound(match.captured(1).toDouble()))) + QStringLiteral("px");
        from = match.capturedEnd();
    }
    return sheet + styleSheet.mid(from);
}

} // namespace

// What a widget has of its own at 100 %.
struct Zoom::Measures {
    double points = 0; // of the font; 0: those of the parent
    QSize least{0, 0}, most;
    std::vector<LayoutMeasures> layouts;

    explicit Measures(const QWidget &widget)
    {
        if (widget.font().resolve() & QFont::SizeResolved) // its own, not its parent's
            points = widget.font().pointSizeF();
        // A window's smallest size is what its layout asks for.
        if (!widget.isWindow() || widget.minimumSize() == widget.maximumSize())
            least = widget.minimumSize();
        most = widget.maximumSize();
        const bool fromStyle = qobject_cast<const QMainWindow *>(&widget) || qobject_cast<const QToolBar *>(&widget);
        if (widget.layout() && !fromStyle)
            collect(widget.layout(), layouts);
    }

    bool isEmpty() const
    {
        return points <= 0 && least.isNull() && most == QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX) && layouts.empty();
    }

    void applyFontTo(QWidget &widget) const
    {
        QFont font = widget.font();
        const double size = points * Zoom::percent() / 100;
        if (points <= 0 || qFuzzyCompare(font.pointSizeF(), size))
            return;
        font.setPointSizeF(size);
        widget.setFont(font);
    }

    void applyTo(QWidget &widget) const
    {
        applyFontTo(widget);
        widget.setMaximumSize(zoomedSize(most));
        if (!least.isNull())
            widget.setMinimumSize(zoomedSize(least));
        for (const LayoutMeasures &layout : layouts)
            apply(layout);
    }
};

int Zoom::s_percent = 100;

Zoom::Zoom(QMainWindow &window) : QObject(&window), m_window(window)
{
    s_percent = 100;
    qApp->installEventFilter(this);
    addKeys();
}

Zoom::~Zoom() = default;

void Zoom::addKeys()
{
    struct Row {
        const char *keys;
        const char *what;
        std::function<void()> work;
    };
    const Row rows[] = {
        {"Ctrl++", "Larger", [this] { in(); }},
        {"Ctrl+=", "Larger, without Shift", [this] { in(); }}, // the plus key of many keyboards, without Shift
        {"Ctrl+-", "Smaller", [this] { out(); }},
        {"Ctrl+Shift+0", "Normal size", [this] { set(100); }}, // Ctrl+0 turns to the tenth page
    };
    for (const Row &row : rows) {
        auto *shortcut = new QShortcut(QKeySequence(QString::fromLatin1(row.keys)), &m_window);
        shortcut->setWhatsThis(QString::fromLatin1(row.what));
        connect(shortcut, &QShortcut::activated, this, row.work);
    }
}

void Zoom::dress(const QString &styleSheet)
{
    m_styleSheet = styleSheet;
    qApp->setStyleSheet(styleSheet);
    applyLook(); // the style sheet has let the desktop's fonts in
}

void Zoom::set(int percent)
{
    percent = std::clamp(percent, kLeast, kMost);
    if (percent == s_percent)
        return;
    s_percent = percent;
    applyLook(s_percent / 100.0); // before the style sheet: its fonts start from this one
    qApp->setStyleSheet(zoomedSheet(m_styleSheet));
    const auto widgets = QApplication::allWidgets(); // last: a new style sheet brings old fonts back
    for (QWidget *widget : widgets) {
        if (const auto measures = m_measures.value(widget))
            measures->applyTo(*widget);
    }
    keepOnScreen(m_window);
    emit changed(percent);
}

void Zoom::in()
{
    set(*std::upper_bound(std::begin(kSteps), std::end(kSteps) - 1, s_percent));
}

void Zoom::out()
{
    const auto *step = std::lower_bound(std::begin(kSteps), std::end(kSteps), s_percent);
    set(step == std::begin(kSteps) ? kLeast : *(step - 1));
}

void Zoom::adopt(QWidget &widget)
{
    if (m_measures.contains(&widget) || widget.property(kUnzoomed).toBool())
        return;
    const auto measures = std::make_shared<const Measures>(widget);
    if (measures->isEmpty())
        return;
    m_measures.insert(&widget, measures);
    connect(&widget, &QObject::destroyed, this, [this](const QObject *gone) { m_measures.remove(gone); });
    if (s_percent != 100)
        measures->applyTo(widget);
}

bool Zoom::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Polish && watched->isWidgetType()) {
        adopt(*static_cast<QWidget *>(watched));
    } else if (event->type() == QEvent::StyleChange) { // which brings a font of before the zoom back
        if (const auto measures = m_measures.value(watched))
            measures->applyFontTo(*static_cast<QWidget *>(watched));
    }
    return QObject::eventFilter(watched, event);
}

int zoomed(int pixels)
{
    const int result = qRound(pixels * Zoom::percent() / 100.0);
    return pixels > 0 ? std::max(1, result) : result;
}

void keepUnzoomed(QWidget &widget)
{
    widget.setProperty(kUnzoomed, true);
}
