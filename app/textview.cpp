#include "app/textview.h"

#include "app/display.h"

#include <QScrollBar>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>

namespace textview {

namespace {

void insertAtEnd(QTextEdit &view, const QStringList &paragraphs)
{
    QTextCursor cursor(view.document());
    cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    if (!view.document()->isEmpty())
        cursor.insertBlock();
    // A paragraph may end in "\r" or "\n", so another separator stands between them.
    cursor.insertText(paragraphs.join(QChar::ParagraphSeparator));
    cursor.endEditBlock();
}

} // namespace

void append(QTextEdit &view, const QStringList &paragraphs)
{
    if (paragraphs.isEmpty())
        return;
    const QScrollBar *bar = view.verticalScrollBar();
    const bool atEnd = bar->value() >= bar->maximum();
    insertAtEnd(view, paragraphs);
    if (atEnd)
        view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
}

void replace(QTextEdit &view, const QStringList &paragraphs)
{
    // In one change from the first character on: only then are lines laid out as they come into sight.
    view.setPlainText(paragraphs.join(QChar::ParagraphSeparator));
    view.verticalScrollBar()->setValue(0);
}

void show(QTextEdit *view, const QStringList &paragraphs)
{
    display::later(view, [view, paragraphs] { replace(*view, paragraphs); });
}

} // namespace textview
