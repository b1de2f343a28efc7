// SPDX-License-Identifier: MIT
#include "app/animations.h"

#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "link/commandchannel.h"

#include <QBitArray>
#include <QLabel>
#include <QPointer>

#include <algorithm>
#include <vector>

namespace animation {

namespace {

using Widgets = std::vector<QPointer<QWidget>>;

void paint(const Widgets &widgets, const QString &style)
{
    for (const auto &widget : widgets) {
        if (widget)
            indicator::paint(widget, style);
    }
}

void blink(const Widgets &widgets, int halfPeriod, const QString &finalStyle, const QString &blinkStyle, int blinks)
{
    const display::Pause pause;
    for (int i = 0; i < blinks; ++i) {
        delayMs(halfPeriod);
        paint(widgets, blinkStyle);
        delayMs(halfPeriod);
        paint(widgets, finalStyle);
    }
}

} // namespace

void sweep(const QWidget &root, int count, const QString &group, const QString &colour, const QBitArray &flags,
           int delay)
{
    const display::Pause pause;
    const QString style = indicator::background(colour);
    for (int k = 0; k < std::min(count, flags.size()); ++k) {
        if (!flags.testBit(k))
            continue;
        if (auto *label = root.findChild<QLabel *>(QStringLiteral("label_%1_%2").arg(group).arg(k + 1)))
            indicator::paint(label, style);
        delayMs(delay);
    }
}

void blink(QWidget *widget, int halfPeriod, const QString &finalStyle, const QString &blinkStyle, int blinks)
{
    blink(Widgets{widget}, halfPeriod, finalStyle, blinkStyle, blinks);
}

void blink(QWidget *first, QWidget *second, int halfPeriod, const QString &finalStyle, const QString &blinkStyle,
           int blinks)
{
    blink(Widgets{first, second}, halfPeriod, finalStyle, blinkStyle, blinks);
}

} // namespace animation

void MainWindow::labelBitSet(qint8 num, QString labelName, QString labelcolor, QBitArray array, qint8 delay)
{
    animation::sweep(*centralWidget(), num, labelName, labelcolor, array, delay);
}

void MainWindow::labeltwinkle(QWidget *widget, int halfPeriod, QString finalStyle, QString blinkStyle, int blinks)
{
    animation::blink(widget, halfPeriod, finalStyle, blinkStyle, blinks);
}

void MainWindow::tolabeltwinkle(QWidget *first, QWidget *second, int halfPeriod, QString finalStyle, QString blinkStyle,
                                int blinks)
{
    animation::blink(first, second, halfPeriod, finalStyle, blinkStyle, blinks);
}
