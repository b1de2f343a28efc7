// SPDX-License-Identifier: MIT
// What a screen reader is told of the window when it asks.
#include "support/fixtures.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QComboBox>
#include <QLCDNumber>
#include <QMap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include <algorithm>

class TestAccessibility : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<WindowFixture> m_bench;

    QAccessibleInterface *interface(const char *name)
    {
        return QAccessible::queryAccessibleInterface(m_bench->find<QWidget>(name));
    }
    QString description(const char *name) { return interface(name)->text(QAccessible::Description); }

private slots:
    void initTestCase()
    {
        m_bench = std::make_unique<WindowFixture>();
        QTRY_VERIFY(m_bench->line().received().endsWith("get 0\r\n"));
    }

    void valuesBesideNames()
    {
        QVERIFY(m_bench->show(2, 1, "11 50 5A 46"));
        QCOMPARE(description("label_core0clk_fvalue"), QStringLiteral("80, Green: on"));
        QCOMPARE(interface("label_core0clk_fvalue")->textInterface()->text(0, 99), QStringLiteral("80"));
        QVERIFY(m_bench->show(2, 1, "10 50 5A 46"));
        QCOMPARE(description("label_core0clk_fvalue"), QStringLiteral("Gray: off"));
        QVERIFY(m_bench->show(14, 1, "03 2A"));
        QCOMPARE(description("lcdNumber_vg5k_Fault"), QStringLiteral("42, Fault counter inside of VG5k device"));
        m_bench->find<QPlainTextEdit>("plainTextEdit_cse_Message_input")->setPlainText(QStringLiteral("seven 7"));
        QCOMPARE(description("label_cse_Message_count"), QStringLiteral("7, Number of characters"));
        QCOMPARE(description("label_MBIST_92").left(5), QStringLiteral("White")); // its number is in its name
    }

    void everySelectorHasACaption()
    {
        const auto boxes = m_bench->window().centralWidget()->findChildren<QComboBox *>();
        for (QComboBox *box : boxes) {
            const auto captions = QAccessible::queryAccessibleInterface(box)->relations(QAccessible::Label);
            const bool isLabelled = std::any_of(captions.begin(), captions.end(), [](const auto &caption) {
                return caption.first->object()->inherits("QLabel"); // a group's title is a caption too
            });
            const bool hasOnlyAName = box->objectName() == QLatin1String("comboBox_PMC_FaultRec");
            QVERIFY2(isLabelled || hasOnlyAName, qPrintable(box->objectName()));
        }
    }

    // "Get Fault" stands on nine pages.
    void namesAreDistinct()
    {
        const auto widgets = m_bench->window().centralWidget()->findChildren<QWidget *>();
        QMap<QString, QString> seen; // name to object
        for (QWidget *widget : widgets) {
            if (widget->focusPolicy() == Qt::NoFocus || !driver::isOurs(widget) || qobject_cast<QTabWidget *>(widget)
                || qobject_cast<QComboBox *>(widget))
                continue;
            const QString name = QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
            QVERIFY2(!name.isEmpty(), qPrintable(widget->objectName()));
            QVERIFY2(!seen.contains(name), qPrintable(widget->objectName() + ' ' + seen.value(name) + ' ' + name));
            seen.insert(name, widget->objectName());
        }
    }
};

QTEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
