// SPDX-License-Identifier: MIT
// The tutorial's script against the window: what it presses, types into and frames is there, on the page that it opened.
#include "demo/tutorialscript.h"
#include "support/fixtures.h"

#include <QComboBox>
#include <QPushButton>
#include <QTest>

using script::Act;
using script::Step;

class TestTutorial : public QObject
{
    Q_OBJECT

private slots:
    void everyStepFitsTheWindow();
};

namespace {

QString typed(QLineEdit &field, const char *text)
{
    field.clear();
    QTest::keyClicks(&field, QString::fromLatin1(text));
    return field.text();
}

} // namespace

void TestTutorial::everyStepFitsTheWindow()
{
    WindowFixture bench;
    QWidget &window = bench.window();
    QVERIFY(window.findChild<QLabel *>(tutorial::kState) && window.findChild<QLineEdit *>(tutorial::kTime));

    bool injected = false;
    const auto check = [&](const Step &step) {
        auto *widget = window.findChild<QWidget *>(step.widget);
        QVERIFY2(step.act == Act::Open ? driver::openPage(&window, step.widget) : widget && widget->isVisible(),
                 step.widget);
        if (step.act == Act::Press || step.act == Act::Inject)
            QVERIFY2(qobject_cast<QPushButton *>(widget), step.widget);
        if (step.act == Act::Type)
            QCOMPARE(typed(dynamic_cast<QLineEdit &>(*widget), step.text), QString(step.text));
        if (step.act == Act::Next)
            QVERIFY2(dynamic_cast<QComboBox &>(*widget).count() > 1, step.widget);
        injected = injected || step.act == Act::Inject;
        QVERIFY2(injected || !QString(step.caption).contains("%1"), step.caption);
    };
    for (const Step &step : tutorial::prologue.steps)
        check(step);
    for (const auto &chapter : tutorial::chapters) {
        injected = false;
        for (const Step &step : chapter.steps)
            check(step);
        QVERIFY2(injected, chapter.title);
    }
}

QTEST_MAIN(TestTutorial)
#include "tst_tutorial.moc"
