// SPDX-License-Identifier: MIT
// Indicators that blink, or light up one after another. Each function returns when its animation is over; events are
// processed meanwhile, and what happens in them is shown at once.
#pragma once

#include <QString>

class QBitArray;
class QWidget;

namespace animation {

/// Paints those of the labels "label_GROUP_1", "label_GROUP_2", ... below `root` whose flag is set, out of the first
/// `count`, in `colour`, and waits `delay` milliseconds behind each.
void sweep(const QWidget &root, int count, const QString &group, const QString &colour, const QBitArray &flags,
           int delay);

/// Blinks: after half a period the style sheet `blinkStyle`, after another one `finalStyle`, `blinks` times.
void blink(QWidget *widget, int halfPeriod, const QString &finalStyle, const QString &blinkStyle, int blinks);
/// Two widgets at once.
void blink(QWidget *first, QWidget *second, int halfPeriod, const QString &finalStyle, const QString &blinkStyle,
           int blinks);

} // namespace animation
