// SPDX-License-Identifier: MIT
// The form and its slots fit each other; everything fits the window.
#include "support/fixtures.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QMenuBar>
#include <QMetaMethod>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTest>

namespace {

QStringList warnings;

void collect(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtWarningMsg)
        warnings.append(message);
}

} // namespace

class TestForm : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const auto old = qInstallMessageHandler(collect);
        m_bench = std::make_unique<WindowFixture>();
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

    void pagesStandInOrder_data()
    {
        QTest::addColumn<QString>("tabs");
        QTest::addColumn<QString>("titles");
        QTest::addColumn<QString>("current");
        QTest::newRow("function") << "tabWidget_function"
                                  << "Safety module|Security module"
                                  << "Security module";
        QTest::newRow("safety") << "tabWidget_safety"
                                << "CMU|XBIC|SMPU|MEMU|CRC|INTCM|VG5k|PMC|SWT|SPT"
                                << "CMU";
        QTest::newRow("security") << "tabWidget_security"
                                  << "CSE|REG_PROT"
                                  << "CSE";
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
        QVERIFY2(least.width() <= size.width() && least.height() <= size.height(),
                 qPrintable(QStringLiteral("%1x%2").arg(least.width()).arg(least.height())));
        m_bench->window().resize(size);
        QTRY_COMPARE(m_bench->window().size(), size);
        const auto widgets = m_bench->window().centralWidget()->findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            m_bench->turnTo(widget);
            if (!driver::isOurs(widget) || !widget->isVisible())
                continue;
            QSize wanted = widget->minimumSizeHint();
            if (!widget->minimumSize().isEmpty()) // chosen, not computed
                wanted = wanted.boundedTo(widget->minimumSize());
            QVERIFY2(widget->width() >= wanted.width() && widget->height() >= wanted.height(),
                     qPrintable(QStringLiteral("%1 is %2x%3, wants %4x%5")
                                    .arg(widget->objectName())
                                    .arg(widget->width())
                                    .arg(widget->height())
                                    .arg(wanted.width())
                                    .arg(wanted.height())));
        }
    }

    void everyFieldHasAName()
    {
        const auto widgets = m_bench->window().centralWidget()->findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            const bool field = qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QTextEdit *>(widget)
                || qobject_cast<const QComboBox *>(widget) || !widget->accessibleDescription().isEmpty();
            if (driver::isOurs(widget) && field && !qobject_cast<const QAbstractButton *>(widget))
                QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
        }
    }

private:
    std::unique_ptr<WindowFixture> m_bench;
};

QTEST_MAIN(TestForm)
#include "tst_form.moc"
