// SPDX-License-Identifier: MIT
#include "app/textview.h"

#include "app/display.h"

#include <QAbstractTextDocumentLayout>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>

#include <utility>

namespace textview {

namespace {

constexpr int kLongReport = 100'000; // characters: more than any view shows

// A report's lines share one paragraph: a paragraph costs several times as much as a line.
QString inOneParagraph(QString report)
{
    return report.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('\r'), QLatin1Char('\n'))
        .replace(QLatin1Char('\n'), QChar::LineSeparator);
}

void insertAtEnd(QTextEdit &view, const QStringList &reports)
{
    QStringList paragraphs;
    for (const QString &report : reports) {
        paragraphs.append(inOneParagraph(report));
        // A scroll bar that appears would make the view narrower and everything be laid out twice.
        if (report.size() > kLongReport)
            view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    }
    QTextCursor cursor(view.document());
    cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    if (!view.document()->isEmpty())
        cursor.insertBlock();
    cursor.insertText(paragraphs.join(QChar::ParagraphSeparator));
    cursor.endEditBlock();
}

// Qt's text layout treats 8,388,607 pixels as infinite: beyond that height, laying out a word that is wider than the view
// never finishes.
constexpr int kMaxLogHeight = 6'000'000; // with room for what one arrival may add

QTextBlock firstVisible(const QTextDocument &document)
{
    int low = 0;
    for (int high = document.blockCount(); low < high;) {
        const int middle = low + (high - low) / 2;
        if (document.findBlockByNumber(middle).isVisible())
            high = middle;
        else
            low = middle + 1;
    }
    return document.findBlockByNumber(low);
}

} // namespace

void prepare(QTextEdit &view)
{
    QFont font = view.font();
    font.setStyleStrategy(QFont::PreferNoShaping);
    view.setFont(font);
}

void append(QTextEdit &view, const QStringList &reports)
{
    if (reports.isEmpty())
        return;
    const QScrollBar *bar = view.verticalScrollBar();
    const bool atEnd = bar->value() >= bar->maximum();
    insertAtEnd(view, reports);
    foldOlder(view);
    if (atEnd)
        view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
}

void foldOlder(QTextEdit &view)
{
    if (view.verticalScrollBar()->maximum() <= kMaxLogHeight)
        return;
    QTextDocument &document = *view.document();
    const QAbstractTextDocumentLayout &layout = *document.documentLayout();
    QTextBlock block = firstVisible(document);
    const int from = block.position();
    for (; block != document.lastBlock() && layout.blockBoundingRect(block).bottom() < kMaxLogHeight * 0.5;
         block = block.next()) {
        block.setVisible(false);
        block.clearLayout();
    }
    document.markContentsDirty(from, block.position() - from);
}

void replace(QTextEdit &view, const QStringList &paragraphs)
{
    // In one change from the first character on: only then are lines laid out as they come into sight.
    view.setPlainText(paragraphs.join(QChar::ParagraphSeparator));
    view.verticalScrollBar()->setValue(0);
}

void show(QTextEdit *view, const QStringList &paragraphs)
{
    display::later(view, display::Aspect::Content, [view, paragraphs] { replace(*view, paragraphs); });
}

void Log::append(const QString &report)
{
    m_new.append(report);
    display::later(m_view, display::Aspect::Content, [this] { textview::append(*m_view, std::exchange(m_new, {})); });
}

void Log::clear()
{
    m_new.clear();
    m_view->clear();
}

} // namespace textview
