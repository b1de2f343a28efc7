// Text of the board in text boxes: plain whatever it holds, and one edit however long it is.
#pragma once

#include <QStringList>

class QTextEdit;

namespace textview {

/// Appends the reports in one edit, each from a line of its own on. The view follows the end if it showed the end.
void append(QTextEdit &view, const QStringList &reports);

/// Puts the paragraphs in place of all text, in one edit; the view shows the start.
void replace(QTextEdit &view, const QStringList &paragraphs);

/// replace(), once for all frames of one arrival.
void show(QTextEdit *view, const QStringList &paragraphs);

} // namespace textview
