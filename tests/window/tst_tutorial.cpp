// SPDX-License-Identifier: MIT
// The tutorial's script against the window: what it presses, types into and frames is there, on the page that it opened.
#include "demo/tutorialscript.h"
#include "support/workbench.h"

#include <QComboBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

using tutorial::Act;
using tutorial::Step;

class TestTutorial : public QObject
{
    Q_OBJECT

private slots:
    void everyStepFitsTheWindow();
};

namespace {

bool open(QWidget &window, const QString &title)
{
    for (QTabWidget *pages : window.findChildren<QTabWidget *>()) {
        for (int i = 0; pages->isVisible() && i < pages->count(); ++i) {
            if (pages->tabText(i) != title)
                continue;
            pages->setCurrentIndex(i);
            return true;
        }
    }
    return false;
}

QString typed(QLineEdit &field, const char *text)
{
    field.clear();
    QTest::keyClicks(&field, QString::fromLatin1(text));
    return field.text();
}

} // namespace

void TestTutorial::everyStepFitsTheWindow()
{
    RawBench bench;
    QWidget &window = bench.window();
    QVERIFY(window.findChild<QLabel *>(tutorial::kState) && window.findChild<QLineEdit *>(tutorial::kTime)
            && window.findChild<QComboBox *>(tutorial::kFaultBox));

    bool injected = false;
    const auto check = [&](const Step &step) {
        auto *widget = window.findChild<QWidget *>(step.target);
        QVERIFY2(step.act == Act::Open ? open(window, step.target) : widget && widget->isVisible(), step.target);
        if (step.act == Act::Press || step.act == Act::Inject)
            QVERIFY2(qobject_cast<QPushButton *>(widget), step.target);
        if (step.act == Act::Type)
            QCOMPARE(typed(dynamic_cast<QLineEdit &>(*widget), step.text), QString(step.text));
        if (step.act == Act::Next)
            QVERIFY2(dynamic_cast<QComboBox &>(*widget).count() > 1, step.target);
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
