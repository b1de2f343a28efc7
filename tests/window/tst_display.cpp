// SPDX-License-Identifier: MIT
// The queue of what an arrival shows, and the models behind the two selectors of faults.
#include "app/display.h"
#include "app/indicators.h"
#include "modules/faulthistory.h"
#include "modules/faultlist.h"

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <memory>

using display::Aspect;

class TestDisplay : public QObject
{
    Q_OBJECT

private:
    static void showAll() { const display::Pause pause; }

private slots:
    // Whatever the widget showed before: the last of an arrival counts, for text and colour alike.
    void theLatestOfAnArrivalIsShown()
    {
        QLabel label(QStringLiteral("one"));
        indicator::paint(&label, indicator::kGreen);
        {
            const display::Batch batch;
            for (const char *colour : {indicator::kRed, indicator::kGreen})
                indicator::paint(&label, colour);
            for (const char *text : {"two", "one"})
                display::text(&label, QString::fromLatin1(text));
        }
        showAll();
        QCOMPARE(label.text(), QStringLiteral("one"));
        QCOMPARE(label.styleSheet(), indicator::background(indicator::kGreen));
        QCOMPARE(label.accessibleDescription(), QStringLiteral("Green: on"));
    }

    void worksRunInOrderAndForLivingWidgets()
    {
        QStringList done;
        QLabel first, second;
        auto gone = std::make_unique<QLabel>();
        const auto note = [&done](const char *work) {
            return [&done, work] { done.append(QString::fromLatin1(work)); };
        };
        {
            const display::Batch batch;
            display::afterArrival(note("after"));
            display::later(&second, Aspect::Content, note("second's text"));
            display::later(gone.get(), Aspect::Content, note("gone"));
            display::later(&first, Aspect::Style, note("first's colour"));
            display::later(&second, Aspect::Style, note("second's colour"));
            display::later(&second, Aspect::Content, note("second's other text"));
            gone.reset();
            {
                const display::Pause pause;
                QCOMPARE(done.join('|'), QStringLiteral("second's other text|first's colour|second's colour"));
                display::later(&first, Aspect::Content, note("at once"));
            }
            QCOMPARE(done.takeLast(), QStringLiteral("at once"));
            done.clear();
        }
        QCOMPARE(done, QStringList("after"));
    }

    // Arrivals as fast as they come: the last one is seen, most are not; what is done directly comes behind them.
    void floodsAreThinnedOut()
    {
        QLineEdit field;
        int changes = 0;
        connect(&field, &QLineEdit::textChanged, this, [&changes] { ++changes; });
        const auto arrive = [&field](int number) {
            const display::Batch batch;
            display::text(&field, QString::number(number));
        };
        for (int number = 0; number < 500; ++number)
            arrive(number);
        QTRY_COMPARE(field.text(), QStringLiteral("499"));
        QVERIFY(changes < 250);
        arrive(500);
        arrive(501);
        display::text(&field, QStringLiteral("direct"));
        showAll();
        QCOMPARE(field.text(), QStringLiteral("direct"));
    }

    void theHistoryGrows()
    {
        FaultHistory history;
        const QAbstractItemModelTester tester(&history, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QComboBox selector;
        selector.setModel(&history);
        history.append({});
        history.append({{28, 1.5F, QStringLiteral("CMU_0"), QStringLiteral("out of range")}, {254, 0, {}, {}}});
        QCOMPARE(selector.currentText(), QStringLiteral("Fault ID 28"));
        history.append({{7, 0, {}, {}}});
        QCOMPARE(selector.count(), 3);
        QCOMPARE(selector.itemText(2), QStringLiteral("Fault ID 7"));
        QCOMPARE(history.at(0).description, QStringLiteral("out of range"));
        QVERIFY(!history.index(3).isValid());
    }

    void aListTakesThePlaceOfTheOneBefore()
    {
        FaultList faults;
        const QAbstractItemModelTester tester(&faults, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QComboBox selector;
        selector.setModel(&faults);
        faults.setTexts({QStringLiteral("LVD fault"), QStringLiteral("HVD fault"), QString()});
        selector.setCurrentIndex(2);
        faults.setTexts({QStringLiteral("HVD fault"), QStringLiteral("LVD fault")});
        QCOMPARE(selector.currentIndex(), 0);
        QCOMPARE(selector.itemText(1), QStringLiteral("Fault 2"));
        QCOMPARE(faults.text(1), QStringLiteral("LVD fault"));
        QCOMPARE(faults.text(2), QString());
        faults.setTexts({});
        QCOMPARE(selector.count(), 0);
    }
};

QTEST_MAIN(TestDisplay)
#include "tst_display.moc"
