// SPDX-License-Identifier: MIT
// Signs over indicators: whoever does not see the colour sees a shape.
#pragma once

class QWidget;

namespace sign {

enum class Shape {
    None,
    Tick,     // on, passed, good
    Cross,    // fault
    Dash,     // off, unknown
    Triangle, // alarm
    Diamond,  // being configured
    Square,   // safe state
    Dots,     // testing
    Pause,    // waiting
    Arrow,    // starting
};

enum class Ink { Dark, White };

/// Paints the shape over `widget` from now on, each time when it has painted itself: where its text leaves room, in the
/// middle where it has none. The widget keeps its style, its size and its clicks.
void put(QWidget *widget, Shape shape, Ink ink = Ink::Dark);

/// The shape that is painted over `widget`.
Shape over(const QWidget *widget);

} // namespace sign
