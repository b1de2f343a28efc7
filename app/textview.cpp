#include "app/textview.h"

#include "app/display.h"

#include <QScrollBar>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>

namespace textview {

namespace {

// Lines of one report are lines of one paragraph: a paragraph costs several times what a line does.
QString inOneParagraph(QString report)
{
    return report.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('\r'), QLatin1Char('\n'))
        .replace(QLatin1Char('\n'), QChar::LineSeparator);
}

void insertAtEnd(QTextEdit &view, const QStringList &reports)
{
    QStringList paragraphs;
    for (const QString &report : reports)
        paragraphs.append(inOneParagraph(report));
    QTextCursor cursor(view.document());
    cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    if (!view.document()->isEmpty())
        cursor.insertBlock();
    cursor.insertText(paragraphs.join(QChar::ParagraphSeparator));
    cursor.endEditBlock();
}

} // namespace

void append(QTextEdit &view, const QStringList &reports)
{
    if (reports.isEmpty())
        return;
    const QScrollBar *bar = view.verticalScrollBar();
    const bool atEnd = bar->value() >= bar->maximum();
    insertAtEnd(view, reports);
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
