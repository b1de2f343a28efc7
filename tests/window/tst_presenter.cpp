// SPDX-License-Identifier: MIT
// In front of an audience: the mode and its way back, the story as its steps happen, letters and colours for the last row.
#include "app/startup.h"
#include "app/zoom.h"
#include "link/commandchannel.h"
#include "link/linetraffic.h"
#include "presenter/mode.h"
#include "presenter/words.h"
#include "support/fixtures.h"

#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>
#include <QTest>

#include <cmath>

using namespace presenter;

class TestPresenter : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { mode().end(); }

    void beginsAndEnds_data();
    void beginsAndEnds();
    void storyFills();
    void storyOfAReset();
    void faultThatNobodyInjected();
    void lettersAreLarge_data();
    void lettersAreLarge();
    void coloursStandOut();
    void pointerHides();
    void scrollingPagesAreNoRoom();

private:
    Mode &mode() { return *m_bench.window().findChild<Mode *>(QStringLiteral("presenterMode")); }
    void press(Qt::Key key);

    WindowFixture m_bench;
};

void TestPresenter::press(Qt::Key key)
{
    m_bench.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&m_bench.window()));
    QTest::keyClick(&m_bench.window(), key);
}

void TestPresenter::beginsAndEnds_data()
{
    QTest::addColumn<int>("begin");
    QTest::addColumn<int>("end");
    QTest::newRow("F11, Esc") << int(Qt::Key_F11) << int(Qt::Key_Escape);
    QTest::newRow("F11, F11") << int(Qt::Key_F11) << int(Qt::Key_F11);
    QTest::newRow("button, Esc") << 0 << int(Qt::Key_Escape);
}

void TestPresenter::beginsAndEnds()
{
    QFETCH(const int, begin);
    QFETCH(const int, end);
    const QWidget *panel = m_bench.find<QWidget>("widget_sidePanel");
    const QWidget *log = m_bench.find<QWidget>("textBrowser_fccurecord");
    const bool wasMaximized = m_bench.window().isMaximized();
    if (begin)
        press(Qt::Key(begin));
    else
        QTest::mouseClick(m_bench.find<QWidget>("presentButton"), Qt::LeftButton);
    QVERIFY(mode().isOn());
    QVERIFY(m_bench.window().isFullScreen());
    QVERIFY(mode().banner().isVisible());
    QVERIFY(panel->isHidden() && log->isHidden());
    QVERIFY(m_bench.window().menuBar()->isVisible());
    press(Qt::Key(end));
    QVERIFY(!mode().isOn());
    QVERIFY(!m_bench.window().isFullScreen());
    QCOMPARE(m_bench.window().isMaximized(), wasMaximized);
    QVERIFY(mode().banner().isHidden());
    QVERIFY(!panel->isHidden() && !log->isHidden());
}

void TestPresenter::storyFills()
{
    const Story &story = mode().teller().story();
    sendCommand(QStringLiteral("inject 7 1"));
    QCOMPARE(story.steps[0], QStringLiteral("A transfer on a crossbar is spoilt"));
    QCOMPARE(story.reached(), 1);
    QVERIFY(m_bench.show(12, 1, "02"));
    QCOMPARE(story.reached(), 1);
    QVERIFY(m_bench.show(12, 2, "2F 416EE148")); // 47, 14.93
    QCOMPARE(story.steps[1], QString::fromUtf8("Crossbar checker XBAR_0 after 14.93 µs"));
    QCOMPARE(story.steps[2], QStringLiteral("ALARM: the chip warns and goes on"));
    QCOMPARE(story.meaning, QStringLiteral("Spoilt data is noticed before it is used."));
    sendCommand(QStringLiteral("xbic 5"));
    QCOMPARE(story.reached(), 3);
    QVERIFY(m_bench.show(12, 1, "01"));
    QCOMPARE(story.steps[2], QStringLiteral("NORMAL again: all is well"));
    emit lineTraffic().recalled("inject 3 1\r\n");
    QCOMPARE(story.reached(), 1);
    QVERIFY(story.meaning.isEmpty());
    QVERIFY(m_bench.show(12, 1, "03"));
    QVERIFY(m_bench.show(12, 2, "0D 47C35000")); // 13, 100000
    QCOMPARE(story.steps[1], QStringLiteral("Watchdog SWT_0 after 100 ms"));
    QCOMPARE(story.steps[2], QStringLiteral("FAULT: the chip stops trusting itself"));
    QVERIFY(m_bench.show(1, 5, "7F FE"));
    QCOMPARE(story.steps[2], QStringLiteral("Reset: the chip has started anew"));
}

void TestPresenter::storyOfAReset()
{
    sendCommand(QStringLiteral("inject 1"));
    const Story &story = mode().teller().story();
    QCOMPARE(story.steps[0], QStringLiteral("A functional reset is ordered"));
    QVERIFY(m_bench.show(1, 5, "7F FE"));
    QCOMPARE(story.reached(), 3);
    QVERIFY(!story.steps[1].isEmpty());
}

void TestPresenter::faultThatNobodyInjected()
{
    sendCommand(QStringLiteral("inject 7 1"));
    QVERIFY(m_bench.show(12, 2, "2F 416EE148"));
    QVERIFY(m_bench.show(12, 2, "24 42C80000"));
    QCOMPARE(mode().teller().story().steps[0], QStringLiteral("A fault that nobody ordered"));
    mode().teller().forget();
    QCOMPARE(mode().teller().story(), Story());
    QVERIFY(m_bench.show(12, 2, "FE 00000000"));
    QCOMPARE(mode().teller().story().steps[0], QStringLiteral("A fault that nobody ordered"));
    QCOMPARE(mode().teller().story().steps[1], QString::fromUtf8("Fault collection Multi source after 0.00 µs"));
}

void TestPresenter::lettersAreLarge_data()
{
    QTest::addColumn<QSize>("screen");
    QTest::newRow("4:3") << QSize(1024, 768);
    QTest::newRow("16:10") << QSize(1440, 900);
    QTest::newRow("16:9") << QSize(1920, 1080);
    QTest::newRow("4K") << QSize(3840, 2160);
}

void TestPresenter::lettersAreLarge()
{
    QFETCH(const QSize, screen);
    Banner &banner = mode().banner();
    banner.setScreenHeight(screen.height());
    QVERIFY(banner.letters() * 20 >= screen.height());
    QVERIFY(banner.canvas().height() * 5 <= screen.height() * 2);
    const QStringList sentences = allSentences();
    for (const QString &sentence : sentences)
        QVERIFY2(banner.widthOf(sentence) <= screen.width(), qPrintable(sentence));
}

// Of two colours, as accessibility guidelines count it.
static double contrast(QRgb one, QRgb other)
{
    const auto luminance = [](QRgb colour) {
        const auto linear = [](int channel) {
            const double c = channel / 255.0;
            return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
    };
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

void TestPresenter::coloursStandOut()
{
    for (const QRgb ink : {kInk, kPaleInk, kLightInk})
        QVERIFY2(contrast(ink, kGround) >= 7, qPrintable(QColor(ink).name()));
    mode().begin();
    mode().teller().forget();
    sendCommand(QStringLiteral("inject 7 1"));
    const QImage image = mode().banner().canvas().grab().toImage();
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 2) {
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    }
    QVERIFY(colours.contains(kGround));
    QVERIFY(colours.contains(kInk));
}

void TestPresenter::pointerHides()
{
    mode().begin();
    QVERIFY(!QApplication::overrideCursor());
    QTRY_VERIFY_WITH_TIMEOUT(QApplication::overrideCursor(), 2 * Mode::kPointerMs);
    QCOMPARE(QApplication::overrideCursor()->shape(), Qt::BlankCursor);
    QTest::mouseMove(&m_bench.window(), {40, 40});
    QTRY_VERIFY(!QApplication::overrideCursor());
    mode().end();
    QVERIFY(!QApplication::overrideCursor());
}

// On a small screen the window scrolls from the start: what a scrolling page could shrink to is no measure.
void TestPresenter::scrollingPagesAreNoRoom()
{
    fitWindow(m_bench.window(), {400, 300});
    mode().begin();
    const auto *scroller = m_bench.window().findChild<QScrollArea *>();
    QVERIFY2(Zoom::percent() == 100 || scroller->widget()->minimumSizeHint().width() <= scroller->width(),
             qPrintable(QString::number(Zoom::percent())));
}

QTEST_MAIN(TestPresenter)
#include "tst_presenter.moc"
