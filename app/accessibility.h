// SPDX-License-Identifier: MIT
// What screen readers are told: values beside names, captions of selectors, distinct names, alerts; and nothing of pages
// that are hidden.
#pragma once

namespace Ui {
class MainWindow;
}
class QWidget;

namespace accessibility {

/// From now on: labels and counters with a name of their own tell their value too, and changes of widgets that cannot be
/// seen are kept until they can. To be called before the form is built.
void install();

/// For a form that has just been built: gives selectors their captions, and buttons with the same caption different names. Pages that are turned to tell what
/// has changed while they were hidden.
void prepare(QWidget &window, const Ui::MainWindow &form);

/// The value that `widget` shows has changed.
void valueChanged(QWidget *widget);

/// Has screen readers say `widget` at once, wherever they are.
void alert(QWidget *widget);

} // namespace accessibility
