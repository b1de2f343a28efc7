// SPDX-License-Identifier: MIT
// Colours of the indicators, and the one function that paints them.
#pragma once

#include <QString>

class QWidget;

namespace indicator {

inline constexpr char kGreen[] = "rgb(91,215,97)";
inline constexpr char kRed[] = "rgb(255,0,0)";
inline constexpr char kGrey[] = "rgb(200,200,200)";
inline constexpr char kWhite[] = "rgb(255, 255, 255)";

/// "background-color: " and the colour, without an end.
QString background(const char *colour);

/// Gives `widget` the style sheet and says its colour in words in the accessible description, with the meaning that
/// the widget's tooltip gives to that colour ("Green - On"). Costs next to nothing where nothing changes.
void paint(QWidget *widget, const QString &styleSheet);

/// The same with background(colour).
void paint(QWidget *widget, const char *colour);

} // namespace indicator
