// SPDX-License-Identifier: MIT
// Message boxes with fixed words and plain text.
#pragma once

#include <QMessageBox>

/// The parent for a box: `parent`, or none while it is not shown, so that the box stands in the middle of the screen.
QWidget *boxParent(QWidget *parent);

/// Shows an information box until it is answered; returns the button pressed. `remedy` stands in smaller letters below
/// the text.
QMessageBox::StandardButton inform(QWidget *parent, const QString &title, const QString &text,
                                   QMessageBox::StandardButtons buttons,
                                   QMessageBox::StandardButton defaultButton = QMessageBox::NoButton,
                                   const QString &remedy = QString());

/// The same, but opens nothing while a box with the same title and text is still open, nor a second one for the frames
/// of one arrival: reports that come as fast as the line carries them do not stack. At most four such boxes are open at
/// once; the last one counts the different messages beyond them.
void informOnce(QWidget *parent, const QString &title, const QString &text, QMessageBox::StandardButton button);

/// A question with Yes and No, No the default; true for Yes.
bool ask(QWidget *parent, const QString &title, const QString &text);
