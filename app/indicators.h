// SPDX-License-Identifier: MIT
// Colours of the indicators, and the one function that paints them: colour, sign and words.
#pragma once

#include <QString>

class QLabel;
class QLineEdit;
class QWidget;

namespace indicator {

inline constexpr char kGreen[] = "rgb(91,215,97)";
inline constexpr char kRed[] = "rgb(255,0,0)";
inline constexpr char kGrey[] = "rgb(200,200,200)";
inline constexpr char kWhite[] = "rgb(255, 255, 255)";

/// "background-color: " and the colour, without an end.
QString background(const QString &colour);
QString background(const char *colour);

/// Inks of the application's style sheet: its rules [ink="white"] and [ink="dark"]; none leaves the rule of the class.
inline constexpr char kNoInk[] = "";
inline constexpr char kWhiteInk[] = "white";
inline constexpr char kDarkInk[] = "dark";

/// Gives `widget` the style sheet, the ink and the sign that go with it, and says the colour and its meaning in the accessible
/// description. Without a meaning given, that is the one of the tooltip's legend ("Green - On") or else the colour's usual
/// one. Costs next to nothing where nothing changes.
void paint(QWidget *widget, const QString &styleSheet, const QString &meaning = QString(), const char *ink = kNoInk);

/// The same with background(colour).
void paint(QWidget *widget, const char *colour, const QString &meaning = QString(), const char *ink = kNoInk);

/// Puts the sign of its colour on a widget whose colour stands in the form.
void mark(QWidget *widget);

/// Shows text and colour that belong together; the description says the text.
void state(QLabel *label, const QString &text, const QString &styleSheet, const char *ink = kNoInk);
void state(QLineEdit *field, const QString &text, const QString &styleSheet, const char *ink = kNoInk);

} // namespace indicator
