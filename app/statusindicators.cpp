// SPDX-License-Identifier: MIT
#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "link/commandchannel.h"

#include <QLabel>

#include <algorithm>

void MainWindow::labelBitSet(qint8 num, QString labelName, QString labelcolor, QBitArray array, qint8 delay)
{
    const display::Pause pause;
    const QString style = QStringLiteral("background-color: ") + labelcolor;
    for (int k = 0; k < std::min<int>(num, array.size()); ++k) {
        if (!array.testBit(k))
            continue;
        const QString name = QStringLiteral("label_%1_%2").arg(labelName).arg(k + 1);
        if (auto *label = centralWidget()->findChild<QLabel *>(name))
            indicator::paint(label, style);
        delayMs(delay);
    }
}

void MainWindow::labeltwinkle(QWidget *widget, int halfPeriod, QString finalStyle, QString blinkStyle, int blinks)
{
    const display::Pause pause;
    for (int i = 0; i < blinks; ++i) {
        delayMs(halfPeriod);
        indicator::paint(widget, blinkStyle);
        delayMs(halfPeriod);
        indicator::paint(widget, finalStyle);
    }
}

void MainWindow::tolabeltwinkle(QWidget *first, QWidget *second, int halfPeriod, QString finalStyle, QString blinkStyle,
                                int blinks)
{
    const display::Pause pause;
    for (int i = 0; i < blinks; ++i) {
        delayMs(halfPeriod);
        indicator::paint(first, blinkStyle);
        indicator::paint(second, blinkStyle);
        delayMs(halfPeriod);
        indicator::paint(first, finalStyle);
        indicator::paint(second, finalStyle);
    }
}
