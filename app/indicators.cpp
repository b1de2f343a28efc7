// SPDX-License-Identifier: MIT
#include "app/indicators.h"

#include "app/display.h"
#include "app/signs.h"

#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>

namespace indicator {

namespace {

struct ColourName {
    int red = 0;
    int green = 0;
    int blue = 0;
    const char *name = "";
    const char *meaning = ""; // where the tooltip gives none
    sign::Shape sign = sign::Shape::None;
    sign::Ink ink = sign::Ink::Dark;
};

constexpr ColourName colourNames[] = {
    {91, 215, 97, "Green", "on", sign::Shape::Tick},
    {255, 0, 0, "Red", "fault", sign::Shape::Cross},
    {200, 200, 200, "Gray", "off", sign::Shape::Dash},
    {255, 255, 255, "White", "no data yet", sign::Shape::None},
    {255, 185, 15, "Orange", "attention", sign::Shape::Diamond},
    {255, 255, 0, "Yellow", "alarm", sign::Shape::Triangle},
    {218, 165, 32, "Gold", "safe state", sign::Shape::Square},
    {30, 144, 255, "Blue", "testing", sign::Shape::Dots},
    {72, 61, 139, "Violet", "waiting", sign::Shape::Pause, sign::Ink::White},
    {85, 170, 255, "Blue", "limit in force", sign::Shape::None},
    {0, 0, 0, "Black", "starting", sign::Shape::Arrow, sign::Ink::White},
    {46, 139, 87, "Green", "on", sign::Shape::Tick},
};

const ColourName *colourOf(const QString &styleSheet)
{
    static const QRegularExpression rgb(QStringLiteral("rgb\\(\\s*(\\d+)\\s*,\\s*(\\d+)\\s*,\\s*(\\d+)"));
    const QRegularExpressionMatch match = rgb.match(styleSheet);
    for (const ColourName &colour : colourNames) {
        if (match.hasMatch() && match.captured(1).toInt() == colour.red && match.captured(2).toInt() == colour.green
            && match.captured(3).toInt() == colour.blue)
            return &colour;
    }
    return nullptr;
}

// A style sheet is read once: there are some dozens of them, painted a million times.
const ColourName *knownColourOf(const QString &styleSheet)
{
    static QHash<QString, const ColourName *> known;
    auto it = known.constFind(styleSheet);
    if (it == known.constEnd())
        it = known.insert(styleSheet, colourOf(styleSheet));
    return *it;
}

// "CSE status:\nGreen - Success\nRed - Error" gives "Success" for green.
QString meaningIn(const QString &toolTip, const ColourName &colour)
{
    const QString head = QString::fromLatin1(colour.name) + QStringLiteral(" - ");
    const int at = toolTip.indexOf(head);
    if (at < 0)
        return QString::fromLatin1(colour.meaning);
    const int from = at + head.size();
    const int end = toolTip.indexOf(QLatin1Char('\n'), from);
    return toolTip.mid(from, end < 0 ? -1 : end - from);
}

// The style sheet's rules for the ink look at a property: a palette set here would be lost with the next style sheet.
void paintNow(QWidget *widget, const QString &styleSheet, const QString &meaning, const char *ink)
{
    const ColourName *const colour = knownColourOf(styleSheet);
    if (colour) {
        const QString words = meaning.isEmpty() ? meaningIn(widget->toolTip(), *colour) : meaning;
        const QString description = QString::fromLatin1(colour->name) + QStringLiteral(": ") + words;
        if (widget->accessibleDescription() != description)
            widget->setAccessibleDescription(description);
    }
    if (widget->styleSheet() == styleSheet)
        return;
    widget->setProperty("ink", QString::fromLatin1(ink));
    widget->setStyleSheet(styleSheet);
    mark(widget);
}

} // namespace

void mark(QWidget *widget)
{
    if (const ColourName *const colour = knownColourOf(widget->styleSheet()))
        sign::put(widget, colour->sign, colour->ink);
    else
        sign::put(widget, sign::Shape::None);
}

QString background(const QString &colour)
{
    return QStringLiteral("background-color: ") + colour;
}

QString background(const char *colour)
{
    return background(QString::fromLatin1(colour));
}

void paint(QWidget *widget, const QString &styleSheet, const QString &meaning, const char *ink)
{
    display::later(widget, display::Aspect::Style,
                   [widget, styleSheet, meaning, ink] { paintNow(widget, styleSheet, meaning, ink); });
}

void paint(QWidget *widget, const char *colour, const QString &meaning, const char *ink)
{
    paint(widget, background(colour), meaning, ink);
}

void state(QLabel *label, const QString &text, const QString &styleSheet, const char *ink)
{
    display::text(label, text);
    paint(label, styleSheet, text, ink);
}

void state(QLineEdit *field, const QString &text, const QString &styleSheet, const char *ink)
{
    display::text(field, text);
    paint(field, styleSheet, text, ink);
}

} // namespace indicator
