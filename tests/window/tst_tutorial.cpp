// SPDX-License-Identifier: MIT
// The tutorial's script against the window: what it presses, types into and frames is there, on the page that it opened.
#include "demo/subtitles.h"
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
    void subtitlesFollowTheVideo();
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
    for (const auto &chapter : tutorial::securityChapters) {
        for (const Step &step : chapter.steps)
            check(step);
    }
}

void TestTutorial::subtitlesFollowTheVideo()
{
    Subtitles subtitles;
    subtitles.beginChapter(0, QStringLiteral("One; two"));
    subtitles.say(500, QStringLiteral("first"));
    subtitles.say(61'234, QStringLiteral("second"));
    subtitles.say(62'000, {});
    subtitles.beginChapter(3'600'000, QStringLiteral("Last"));
    subtitles.say(3'600'001, QStringLiteral("third\nand more"));
    subtitles.end(3'661'002);
    QCOMPARE(subtitles.srt(),
             QByteArray("1\n00:00:00,500 --> 00:01:01,234\nfirst\n\n"
                        "2\n00:01:01,234 --> 00:01:02,000\nsecond\n\n"
                        "3\n01:00:00,001 --> 01:01:01,002\nthird\nand more\n\n"));
    QCOMPARE(subtitles.chapters(),
             QByteArray(";FFMETADATA1\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=0\nEND=3600000\ntitle=One\\; two\n"
                        "[CHAPTER]\nTIMEBASE=1/1000\nSTART=3600000\nEND=3661002\ntitle=Last\n"));
}

QTEST_MAIN(TestTutorial)
#include "tst_tutorial.moc"
