// SPDX-License-Identifier: MIT
#include "cli/campaign/drawings.h"

#include "protocol/fccu.h"

#include <algorithm>

namespace campaign {

namespace {

constexpr double kStripWidth = 120;
constexpr double kStripHeight = 14;
constexpr double kFrom = 4;       // where 0 is
constexpr double kBudgetAt = 110; // the rest is beyond the budget
constexpr int kCellWidth = 58;
constexpr int kCellHeight = 26;
constexpr int kPerRow = 16;

struct Look {
    const char *fill, *ink, *sign;
};

// By what became of an input. Signs tell it without colours.
constexpr std::array<Look, 4> looks{{
    {"#f4f6f8", "#8b98a5", ""},
    {"#fff4d6", "#8a4b00", "\u2013"},
    {"#b71c1c", "#ffffff", "\u2717"},
    {"#dcefdd", "#1b6b20", "\u2713"},
}};

QString number(double value)
{
    return QString::number(value, 'f', 1);
}

QString lineAt(double x, double from, double to, const char *colour, double width)
{
    return QStringLiteral("<line x1=\"%1\" x2=\"%1\" y1=\"%2\" y2=\"%3\" stroke=\"%4\" stroke-width=\"%5\"/>")
        .arg(number(x), number(from), number(to), QLatin1String(colour), number(width));
}

QString cell(int x, int y, const QString &text, Input input, const QString &title)
{
    const Look &look = looks[static_cast<std::size_t>(input)];
    return QStringLiteral("<g transform=\"translate(%1 %2)\">%3<rect width=\"%4\" height=\"%5\" rx=\"3\" fill=\"%6\" "
                          "stroke=\"#cfd8e0\"/><text x=\"7\" y=\"15\" font-size=\"11\" font-family=\"sans-serif\" "
                          "fill=\"%7\">%8</text><text x=\"%9\" y=\"15\" "
                          "fill=\"%7\" text-anchor=\"end\" font-weight=\"bold\">%10</text></g>")
        .arg(x)
        .arg(y)
        .arg(title.isEmpty() ? QString() : QStringLiteral("<title>%1</title>").arg(title.toHtmlEscaped()))
        .arg(kCellWidth - 4)
        .arg(kCellHeight - 4)
        .arg(QLatin1String(look.fill), QLatin1String(look.ink), text)
        .arg(kCellWidth - 11)
        .arg(QString::fromUtf8(look.sign));
}

} // namespace

QString stripDrawing(const Figures &figures, const QString &unit, std::optional<double> budget)
{
    const double full = budget.value_or(figures.most);
    const auto at = [full](double value) {
        return full > 0 ? std::clamp(kFrom + value / full * (kBudgetAt - kFrom), kFrom, kStripWidth - 4) : kFrom;
    };
    const bool over = budget && figures.most > *budget;
    const char *colour = over ? "#b71c1c" : "#2b6ca3";
    const double from = at(figures.least), to = std::max(at(figures.most), from + 2);
    QString svg = QStringLiteral("<svg width=\"%1\" height=\"%2\" viewBox=\"0 0 %1 %2\" role=\"img\"><title>%3</title>")
                      .arg(kStripWidth)
                      .arg(kStripHeight)
                      .arg(QStringLiteral("min %1, median %2, p95 %3, max %4 %5")
                               .arg(figureText(figures.least), figureText(figures.median), figureText(figures.p95),
                                    figureText(figures.most), unit));
    svg += QStringLiteral("<rect x=\"%1\" y=\"5\" width=\"%2\" height=\"4\" fill=\"#e3e8ed\"/>")
               .arg(kFrom)
               .arg(kBudgetAt - kFrom);
    svg += QStringLiteral("<rect x=\"%1\" y=\"5\" width=\"%2\" height=\"4\" fill=\"%3\"/>")
               .arg(number(from), number(to - from), QLatin1String(colour));
    svg += lineAt(at(figures.median), 2, 12, colour, 1.5);
    svg += QStringLiteral("<circle cx=\"%1\" cy=\"7\" r=\"2.6\" fill=\"#fff\" stroke=\"%2\" stroke-width=\"1.2\"/>")
               .arg(number(at(figures.p95)), QLatin1String(colour));
    if (budget)
        svg += lineAt(kBudgetAt, 0, kStripHeight, "#51606e", 1);
    if (over)
        svg += QStringLiteral("<path d=\"M%1 3 l5 4 l-5 4 z\" fill=\"%2\"/>").arg(number(to), QLatin1String(colour));
    return svg + QStringLiteral("</svg>");
}

QString mapDrawing(const FaultMap &map)
{
    const int width = kPerRow * kCellWidth, height = static_cast<int>(map.size()) / kPerRow * kCellHeight;
    QString svg = QStringLiteral("<svg width=\"%1\" height=\"%2\" viewBox=\"0 0 %1 %2\" role=\"img\" "
                                 "aria-label=\"fault inputs\">")
                      .arg(width)
                      .arg(height);
    for (int id = 0; id < static_cast<int>(map.size()); ++id) {
        const Input input = map[static_cast<std::size_t>(id)];
        svg += cell(id % kPerRow * kCellWidth, id / kPerRow * kCellHeight, QString::number(id), input,
                    QStringLiteral("%1 %2: %3")
                        .arg(id)
                        .arg(protocol::fccu::sourceOf(static_cast<quint8>(id)).trimmed(), nameOf(input)));
    }
    return svg + QStringLiteral("</svg>");
}

QString cellDrawing(Input input)
{
    return QStringLiteral("<svg width=\"%1\" height=\"%2\" viewBox=\"0 0 %1 %2\">")
               .arg(kCellWidth - 3)
               .arg(kCellHeight - 3)
        + cell(0, 0, QString(), input, QString()) + QStringLiteral("</svg>");
}

} // namespace campaign
