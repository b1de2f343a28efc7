// SPDX-License-Identifier: MIT
// The manual and the window fit each other: comments in the manual name the page that a chapter describes
// ("page: tabWidgetPage1") and the controls that a line explains ("controls: comboBox_memu_1 label_MBIST_*").
#include "support/fixtures.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLCDNumber>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTest>

namespace {

constexpr qint64 kMostPictureBytes = 3'000'000;

struct Chapter {
    QString title;
    QStringList pages;
    QStringList controls; // patterns with * and ?
};

QString readManual()
{
    QFile file(QStringLiteral(MANUAL_FOLDER "/manual.md"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList comments(const QString &text, const QString &kind)
{
    const QRegularExpression pattern(QStringLiteral("<!-- %1: ([^>]+) -->").arg(kind));
    QStringList words;
    for (auto it = pattern.globalMatch(text); it.hasNext();)
        words += it.next().captured(1).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return words;
}

std::vector<Chapter> chaptersOf(const QString &manual)
{
    static const QRegularExpression heading(QStringLiteral("^# (.+)$"), QRegularExpression::MultilineOption);
    std::vector<Chapter> chapters;
    auto it = heading.globalMatch(manual);
    while (it.hasNext()) {
        const auto match = it.next();
        const int end = it.hasNext() ? it.peekNext().capturedStart() : manual.size();
        const QString text = manual.mid(match.capturedEnd(), end - match.capturedEnd());
        chapters.push_back(
            {match.captured(1), comments(text, QStringLiteral("page")), comments(text, QStringLiteral("controls"))});
    }
    return chapters;
}

bool names(const QString &pattern, const QString &name)
{
    static const QRegularExpression wildcard(QStringLiteral("[*?]"));
    if (!pattern.contains(wildcard))
        return pattern == name;
    return QRegularExpression(QRegularExpression::wildcardToRegularExpression(pattern)).match(name).hasMatch();
}

bool names(const QStringList &patterns, const QString &name)
{
    return std::any_of(patterns.begin(), patterns.end(), [&](const QString &pattern) { return names(pattern, name); });
}

// A label that shows more than a caption: an indicator, one that explains itself, a place for numbers, part of a drawing.
bool isTellingLabel(const QWidget *widget)
{
    static const QRegularExpression filled(
        QStringLiteral("^label_(intcm_(mode|latency|timer|irq|onoff)\\d|cse_.+_count$|_?xbic.+)"));
    return qobject_cast<const QLabel *>(widget)
        && (widget->property("indicator").isValid() || !widget->toolTip().isEmpty()
            || filled.match(widget->objectName()).hasMatch());
}

bool isControl(const QWidget *widget)
{
    const auto *group = qobject_cast<const QGroupBox *>(widget);
    return qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QLineEdit *>(widget)
        || qobject_cast<const QTextEdit *>(widget) || qobject_cast<const QPlainTextEdit *>(widget)
        || qobject_cast<const QComboBox *>(widget) || qobject_cast<const QAbstractSpinBox *>(widget)
        || qobject_cast<const QLCDNumber *>(widget) || (group && group->isCheckable()) || isTellingLabel(widget);
}

// Pages of the tab widgets, also one that was taken out of its tabs.
bool isPage(const QWidget *widget)
{
    return qobject_cast<const QStackedWidget *>(widget->parentWidget())
        && qobject_cast<const QTabWidget *>(widget->parentWidget()->parentWidget());
}

QString pageOf(const QWidget *widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (isPage(widget))
            return widget->objectName();
    }
    return {};
}

} // namespace

class TestManual : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_manual = readManual();
        m_chapters = chaptersOf(m_manual);
        QVERIFY(m_chapters.size() > 20);
        m_bench = std::make_unique<WindowFixture>();
    }

    void everyPageHasAChapter()
    {
        QStringList missing;
        const auto widgets = m_bench->window().findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            if (isPage(widget) && !widget->findChild<QTabWidget *>() && !chapterOf(widget->objectName()))
                missing.append(widget->objectName());
        }
        QCOMPARE(missing, QStringList());
    }

    // In the chapter of its page; what stands on no page or around the inner tabs, in any chapter.
    void everyControlIsExplained()
    {
        QStringList missing;
        int count = 0;
        const auto widgets = m_bench->window().centralWidget()->findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            if (!driver::isOurs(widget) || !isControl(widget))
                continue;
            ++count;
            const Chapter *chapter = chapterOf(pageOf(widget));
            if (!names(chapter ? chapter->controls : allControls(), widget->objectName()))
                missing.append(widget->objectName());
        }
        const auto menus = m_bench->window().findChildren<QMenu *>();
        for (const QMenu *menu : menus) {
            const auto actions = menu->actions();
            for (const QAction *action : actions) {
                if (!action->isSeparator() && driver::isOurs(action) && !names(allControls(), action->objectName()))
                    missing.append(action->objectName());
            }
        }
        QCOMPARE(missing, QStringList());
        QVERIFY(count > 300);
    }

    // A caption is quoted as it stands on the button.
    void everyCaptionIsQuoted()
    {
        QStringList missing;
        const auto buttons = m_bench->window().centralWidget()->findChildren<QPushButton *>();
        for (const QPushButton *button : buttons) {
            const QString caption = button->text().simplified();
            if (driver::isOurs(button) && !caption.isEmpty() && button->isVisibleTo(button->parentWidget())
                && !m_manual.simplified().contains(QStringLiteral("**%1**").arg(caption)))
                missing.append(button->objectName() + QStringLiteral(": ") + caption);
        }
        QVERIFY2(missing.isEmpty(), qPrintable(missing.join(QLatin1Char('\n'))));
    }

    // Every name that a comment gives is that of a widget or an entry.
    void nothingIsExplainedThatIsNotThere()
    {
        QStringList existing;
        const auto widgets = QApplication::allWidgets();
        for (const QWidget *widget : widgets)
            existing.append(widget->objectName());
        const auto actions = m_bench->window().findChildren<QAction *>();
        for (const QAction *action : actions)
            existing.append(action->objectName());
        QStringList unknown;
        const QStringList patterns = allControls() + comments(m_manual, QStringLiteral("page"));
        for (const QString &pattern : patterns) {
            if (!std::any_of(existing.begin(), existing.end(),
                             [&](const QString &name) { return names(pattern, name); }))
                unknown.append(pattern);
        }
        QCOMPARE(unknown, QStringList());
    }

    void everyPictureIsThereAndUsed()
    {
        static const QRegularExpression picture(QStringLiteral("!\\[[^\\]]+\\]\\(([^)]+)\\)"));
        const QDir folder(QStringLiteral(MANUAL_FOLDER));
        QStringList used;
        for (auto it = picture.globalMatch(m_manual); it.hasNext();)
            used.append(folder.absoluteFilePath(it.next().captured(1)));
        qint64 bytes = 0;
        QStringList kept;
        const QDir pictures(folder.filePath(QStringLiteral("images/manual")));
        const auto files = pictures.entryInfoList(QDir::Files);
        for (const QFileInfo &file : files) {
            kept.append(file.absoluteFilePath());
            bytes += file.size();
        }
        used.sort();
        kept.sort();
        QCOMPARE(used, kept);
        QVERIFY2(bytes > 0 && bytes < kMostPictureBytes, qPrintable(QString::number(bytes)));
    }

private:
    const Chapter *chapterOf(const QString &page) const
    {
        const auto it = std::find_if(m_chapters.begin(), m_chapters.end(),
                                     [&](const Chapter &chapter) { return chapter.pages.contains(page); });
        return it == m_chapters.end() ? nullptr : &*it;
    }

    QStringList allControls() const { return comments(m_manual, QStringLiteral("controls")); }

    QString m_manual;
    std::vector<Chapter> m_chapters;
    std::unique_ptr<WindowFixture> m_bench;
};

QTEST_MAIN(TestManual)
#include "tst_manual.moc"
