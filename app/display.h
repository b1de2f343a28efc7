// SPDX-License-Identifier: MIT
// Paints decoded values: only changed ones, once for all frames
// of one arrival, and at most 60 times per second.
//
// A widget takes 10 to 20 microseconds to repaint, a frame on the line
// about 70. So while the frames of an arrival are decoded (a Batch lives), the
// latest work for each aspect of each widget waits for the batch's end, and in
// a flood a few milliseconds more; outside a batch everything is done at once,
// behind what waits.
#pragma once

#include <QString>

#include <functional>

class QAbstractButton;
class QGroupBox;
class QLCDNumber;
class QLabel;
class QLineEdit;
class QSpinBox;
class QTextEdit;
class QWidget;

namespace display {

/// While one lives, painting waits. Batches nest; the end of any of them
/// shows everything that waits, or sees to it where something was shown only
/// just before.
class Batch
{
public:
    Batch();
    ~Batch();
    Batch(const Batch &) = delete;
    Batch &operator=(const Batch &) = delete;
};

/// Shows everything that waits, and while one lives nothing waits: for code
/// that processes events, so that what happens meanwhile is seen.
class Pause
{
public:
    Pause();
    ~Pause();
    Pause(const Pause &) = delete;
    Pause &operator=(const Pause &) = delete;

private:
    int m_batches;
};

/// The aspect of a widget that a piece of work changes.
enum class Aspect {
    Content, // text, number, entries
    State,   // checked or not
    Style,   // style sheet, ink, description
};

/// Does `work` when everything is shown, in the order in which the aspects were
/// first asked for. A later work for the same aspect of the same widget takes
/// the place of an earlier one; a work whose widget is gone by then is dropped.
void later(QWidget *widget, Aspect aspect, std::function<void()> work);

/// Does `work` when everything of the arrival has been decoded.
void afterArrival(std::function<void()> work);

/// Set the text where it differs.
void text(QLabel *label, const QString &text);
void text(QLineEdit *field, const QString &text);
/// Plain text, whatever it holds.
void text(QTextEdit *box, const QString &text);

void checked(QAbstractButton *button, bool on);
void checked(QGroupBox *group, bool on);

void value(QSpinBox *box, int value);
void value(QLCDNumber *counter, int value);

} // namespace display
