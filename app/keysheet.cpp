// SPDX-License-Identifier: MIT
#include "app/keysheet.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QScrollArea>
#include <QShortcut>
#include <QTabWidget>

#include <algorithm>
#include <vector>

namespace {

constexpr int kMostColumns = 4;
constexpr int kColumnWidth = 290; // pixels, at most
constexpr QSize kMargin(40, 90);  // between the sheet and the window
constexpr char kPagesGroup[] = "Pages";

struct Entry {
    QString keys;
    QString what;
};

struct Group {
    QString title;
    int order; // on the sheet
    bool inFront;
    std::vector<Entry> entries;
};

// The innermost page that the shortcut's owner stands on; none for what works everywhere.
QWidget *pageOf(QObject *owner, QTabWidget *&book)
{
    for (auto *widget = qobject_cast<QWidget *>(owner); widget && widget->parentWidget();
         widget = widget->parentWidget()) {
        book = qobject_cast<QTabWidget *>(widget->parentWidget()->parentWidget());
        if (book && book->indexOf(widget) >= 0)
            return widget;
    }
    return nullptr;
}

Group &groupOf(std::vector<Group> &groups, const QWidget &window, QObject *owner, const QString &title)
{
    QTabWidget *book = nullptr;
    QWidget *page = pageOf(owner, book);
    const QString wanted = page ? book->tabText(book->indexOf(page)) : title;
    const auto it =
        std::find_if(groups.begin(), groups.end(), [&](const Group &group) { return group.title == wanted; });
    if (it != groups.end())
        return *it;
    const bool inFront = page && page->isVisible();
    const int order =
        page && !inFront ? 100 * window.findChildren<QTabWidget *>().indexOf(book) + book->indexOf(page) + 1 : 0;
    groups.push_back({wanted, order, inFront, {}});
    return groups.back();
}

// First what works everywhere, then the page in front, then the others in their order.
std::vector<Group> groupsOf(const QWidget &window)
{
    const QString everywhere = QStringLiteral("Everywhere");
    std::vector<Group> groups = {{everywhere, -1, false, {}}, {QString::fromLatin1(kPagesGroup), -1, false, {}}};
    const auto add = [&](QObject *owner, const QString &title, const QKeySequence &keys, const QString &what) {
        if (!keys.isEmpty() && !what.isEmpty())
            groupOf(groups, window, owner, title).entries.push_back({keys.toString(QKeySequence::NativeText), what});
    };
    const auto actions = window.findChildren<QAction *>();
    for (const QAction *action : actions)
        add(nullptr, everywhere, action->shortcut(), action->text());
    const auto shortcuts = window.findChildren<QShortcut *>();
    for (const QShortcut *shortcut : shortcuts) {
        const bool turns = shortcut->whatsThis().startsWith(QLatin1String("Page "));
        add(shortcut->parent(), turns ? QString::fromLatin1(kPagesGroup) : everywhere, shortcut->key(),
            shortcut->whatsThis());
    }
    std::stable_sort(groups.begin(), groups.end(), [](const Group &a, const Group &b) { return a.order < b.order; });
    for (Group &group : groups) {
        if (group.order >= 0)
            std::sort(group.entries.begin(), group.entries.end(),
                      [](const Entry &a, const Entry &b) { return a.keys < b.keys; });
    }
    return groups;
}

QString html(const Group &group)
{
    const QString accent = group.inFront ? QStringLiteral("#1a66cc") : QStringLiteral("#183c70");
    QString rows =
        QStringLiteral("<p style='color:%1; font-weight:bold; margin-bottom:3px'>%2%3</p><table cellspacing='2'>")
            .arg(accent, group.title.toHtmlEscaped(), group.inFront ? QStringLiteral(" (in front)") : QString());
    for (const Entry &entry : group.entries) {
        rows += QStringLiteral("<tr><td style='background:#e1e8f2; padding:1px 5px; white-space:pre'>%1</td>"
                               "<td style='padding:1px 6px'>%2</td></tr>")
                    .arg(entry.keys.toHtmlEscaped(), entry.what.toHtmlEscaped());
    }
    return rows + QStringLiteral("</table>");
}

QWidget *columnsOf(const std::vector<Group> &groups, int count)
{
    auto *content = new QWidget;
    auto *row = new QHBoxLayout(content);
    row->setSpacing(24);
    std::vector<QVBoxLayout *> columns;
    std::vector<int> heights(static_cast<std::size_t>(count), 0);
    for (int i = 0; i < count; ++i) {
        columns.push_back(new QVBoxLayout);
        columns.back()->setSpacing(10);
        row->addLayout(columns.back());
    }
    for (const Group &group : groups) {
        const auto shortest = std::min_element(heights.begin(), heights.end()) - heights.begin();
        auto *label = new QLabel(html(group));
        label->setTextFormat(Qt::RichText);
        heights[static_cast<std::size_t>(shortest)] += label->sizeHint().height();
        columns[static_cast<std::size_t>(shortest)]->addWidget(label);
    }
    for (QVBoxLayout *column : columns)
        column->addStretch(1);
    return content;
}

} // namespace

KeySheet::KeySheet(QWidget &window) : QDialog(&window)
{
    setObjectName(QStringLiteral("keySheet"));
    setWindowTitle(QStringLiteral("Keys"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setAccessibleName(QStringLiteral("Keys"));
    area->setWidget(columnsOf(groupsOf(window), std::clamp(window.width() / kColumnWidth, 1, kMostColumns)));
    area->setWidgetResizable(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(area);
    const QSize wanted = area->widget()->sizeHint() + QSize(40, 30);
    resize(wanted.boundedTo(window.size() - kMargin));
    connect(new QShortcut(QKeySequence(QStringLiteral("?")), this), &QShortcut::activated, this, &QDialog::close);
}

void KeySheet::toggle(QWidget &window)
{
    static QPointer<KeySheet> sheet;
    if (sheet && sheet->parentWidget() == &window) {
        sheet->close();
        return;
    }
    sheet = new KeySheet(window);
    sheet->show();
}
