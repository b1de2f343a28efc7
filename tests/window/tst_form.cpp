// The form and its slots fit each other; everything fits the window.
#include "tests/support/workbench.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QMenuBar>
#include <QMetaMethod>
#include <QRegularExpression>
#include <QScrollArea>
#include <QTabWidget>
#include <QTest>

namespace {

QStringList warnings;

void collect(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtWarningMsg)
        warnings.append(message);
}

// Buttons without a slot of their own, and why.
const QHash<QString, QString> silentButtons = {};

bool isOurs(const QObject *object)
{
    // Parts of other widgets (scroll buttons of a tab bar, the editor of a spin box) are the library's.
    return !object->objectName().isEmpty() && !object->objectName().startsWith(QLatin1String("qt_"))
        && !object->objectName().startsWith(QLatin1String("Scroll"));
}

} // namespace

class TestForm : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const auto old = qInstallMessageHandler(collect);
        m_bench = std::make_unique<RawBench>();
        qInstallMessageHandler(old);
    }

    void everySlotFindsItsWidget()
    {
        QCOMPARE(warnings.filter(QStringLiteral("connectSlotsByName")), QStringList());
        static const QRegularExpression autoSlot(QStringLiteral("^on_(.+)_([a-z]+[A-Za-z]*)$"));
        const QMetaObject *meta = m_bench->window().metaObject();
        for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
            const QMetaMethod method = meta->method(i);
            const auto match = autoSlot.match(QString::fromLatin1(method.name()));
            if (!match.hasMatch())
                continue;
            const auto *sender = m_bench->window().findChild<QObject *>(match.captured(1));
            QVERIFY2(sender, method.name().constData());
            const QByteArray parameters = method.methodSignature().mid(method.methodSignature().indexOf('('));
            QVERIFY2(sender->metaObject()->indexOfSignal(match.captured(2).toLatin1() + parameters) >= 0,
                     method.methodSignature().constData());
        }
    }

    void everyButtonHasASlot()
    {
        const auto buttons = m_bench->window().centralWidget()->findChildren<QAbstractButton *>();
        for (const QAbstractButton *button : buttons) {
            const QString name = button->objectName();
            if (!isOurs(button) || !button->isVisibleTo(button->parentWidget()) || silentButtons.contains(name))
                continue;
            const QString head = QStringLiteral("on_%1_clicked(").arg(name);
            bool found = false;
            const QMetaObject *meta = m_bench->window().metaObject();
            for (int i = meta->methodOffset(); i < meta->methodCount() && !found; ++i)
                found = QString::fromLatin1(meta->method(i).methodSignature()).startsWith(head);
            QVERIFY2(found, qPrintable(name));
        }
    }

    void namesAreUniqueAndChosen()
    {
        static const QRegularExpression editorsOwn(
            QStringLiteral("^(label|pushButton|lineEdit|comboBox|spinBox|groupBox|radioButton|tab|textEdit|frame|widget)(_\\d+)?$"));
        QStringList names;
        const auto widgets = m_bench->window().centralWidget()->findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            if (!isOurs(widget))
                continue;
            QVERIFY2(!names.contains(widget->objectName()), qPrintable(widget->objectName()));
            QVERIFY2(!editorsOwn.match(widget->objectName()).hasMatch(), qPrintable(widget->objectName()));
            names.append(widget->objectName());
        }
    }

    void pagesStandInOrder_data()
    {
        QTest::addColumn<QString>("tabs");
        QTest::addColumn<QString>("titles");
        QTest::addColumn<QString>("current");
        QTest::newRow("function") << "tabWidget_function" << "Safety module|Security module" << "Security module";
        QTest::newRow("safety") << "tabWidget_safety" << "CMU|XBIC|SMPU|MEMU|CRC|INTCM|VG5k|PMC|SWT|SPT" << "CMU";
        QTest::newRow("security") << "tabWidget_security" << "CSE|REG_PROT" << "CSE";
    }

    void pagesStandInOrder()
    {
        QFETCH(QString, tabs);
        auto *widget = m_bench->find<QTabWidget>(qPrintable(tabs));
        QStringList titles;
        for (int i = 0; i < widget->count(); ++i)
            titles.append(widget->tabText(i));
        QTEST(titles.join('|'), "titles");
        QTEST(widget->tabText(widget->currentIndex()), "current");
    }

    void menusStandInOrder()
    {
        QStringList entries;
        const auto menus = m_bench->window().menuBar()->actions();
        for (const QAction *menu : menus) {
            const auto actions = menu->menu()->actions();
            for (const QAction *action : actions)
                entries.append(menu->text() + '/' + (action->isSeparator() ? QStringLiteral("-") : action->text()));
        }
        QCOMPARE(entries.join('|'),
                 QStringLiteral("System/Functional Reset|System/Destructive Reset|System/-|System/Get Status|"
                                "Debug/console|Serialport/open|Serialport/close|Serialport/-|Help/-|Help/Introduction|"
                                "Help/Manual|Help/Video|Help/-|Help/License|Help/About"));
    }

    // Layouts give way: the window really takes the smaller size, with every page, and no page's parts overlap.
    void everythingFits_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("full") << QSize(1440, 900);
        QTest::newRow("small") << QSize(1100, 700);
    }

    void everythingFits()
    {
        QFETCH(QSize, size);
        const QSize least = m_bench->window().minimumSizeHint();
        QVERIFY2(least.width() <= size.width() && least.height() <= size.height(), qPrintable(sizesOfPages()));
        m_bench->window().resize(size);
        QTRY_COMPARE(m_bench->window().size(), size);
        const auto widgets = m_bench->window().centralWidget()->findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            m_bench->turnTo(widget);
            if (!isOurs(widget) || !widget->isVisible())
                continue;
            QSize wanted = widget->minimumSizeHint();
            if (!widget->minimumSize().isEmpty()) // chosen, not computed
                wanted = wanted.boundedTo(widget->minimumSize());
            QVERIFY2(widget->width() >= wanted.width() && widget->height() >= wanted.height(),
                     qPrintable(QStringLiteral("%1 is %2x%3, wants %4x%5").arg(widget->objectName()).arg(widget->width())
                                    .arg(widget->height()).arg(wanted.width()).arg(wanted.height())));
        }
    }

    void everyFieldHasAName()
    {
        const auto widgets = m_bench->window().centralWidget()->findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            const bool field = qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QTextEdit *>(widget)
                || qobject_cast<const QComboBox *>(widget) || !widget->accessibleDescription().isEmpty();
            if (isOurs(widget) && field && !qobject_cast<const QAbstractButton *>(widget))
                QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
        }
    }

private:
    // What each page and panel wants at the least, for finding the one that wants too much.
    QString sizesOfPages()
    {
        QStringList lines;
        for (const char *name : {"tabWidget_function", "tabWidget_safety", "tabWidget_security", "groupBox_FCCU", "widget_sidePanel"}) {
            auto *parent = m_bench->find<QWidget>(name);
            auto *tabs = qobject_cast<QTabWidget *>(parent);
            for (int i = -1; i < (tabs ? tabs->count() : 0); ++i) {
                const QSize hint = (i < 0 ? parent : tabs->widget(i))->minimumSizeHint();
                lines.append(QStringLiteral("%1 %2x%3").arg(i < 0 ? QString::fromLatin1(name) : tabs->tabText(i)).arg(hint.width()).arg(hint.height()));
            }
        }
        const auto groups = m_bench->window().findChildren<QGroupBox *>();
        for (const QGroupBox *group : groups) {
            const QSize hint = group->minimumSizeHint();
            if (hint.width() > 350 || hint.height() > 150)
                lines.append(QStringLiteral("%1 %2x%3").arg(group->objectName()).arg(hint.width()).arg(hint.height()));
        }
        return lines.join(QStringLiteral(", "));
    }

    std::unique_ptr<RawBench> m_bench;
};

QTEST_MAIN(TestForm)
#include "tst_form.moc"
