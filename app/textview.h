// SPDX-License-Identifier: MIT
// Text of the board in text boxes: plain whatever it holds, and one edit however long it is.
#pragma once

#include <QStringList>

class QTextEdit;

namespace textview {

/// Lays the box's text out glyph by glyph: without pairs drawn closer or joined, a line costs half as much.
void prepare(QTextEdit &view);

/// Appends the reports in one edit, each from a line of its own on. The view follows the end if it showed the end.
void append(QTextEdit &view, const QStringList &reports);

/// Takes the older half of a text that has grown too tall for its layout (some 100,000 faults) out of sight: it stays in
/// the text, without a place in the view. append() does so by itself.
void foldOlder(QTextEdit &view);

/// Puts the paragraphs in place of all text, in one edit; the view shows the start.
void replace(QTextEdit &view, const QStringList &paragraphs);

/// replace(), once for all frames of one arrival.
void show(QTextEdit *view, const QStringList &paragraphs);

/// A log in a text box: the reports of one arrival are appended in one go.
class Log
{
public:
    explicit Log(QTextEdit *view) : m_view(view) {}

    void append(const QString &report);
    /// Removes the box's text, and text of this arrival that is still queued.
    void clear();

private:
    QTextEdit *m_view;
    QStringList m_new; // not in the box yet
};

} // namespace textview
