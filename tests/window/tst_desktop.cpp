// SPDX-License-Identifier: MIT
// The window on any desktop: its own colours and font, a size that fits the screen, boxes where the user looks.
#include "app/messagebox.h"
#include "app/startup.h"
#include "app/zoom.h"
#include "link/serialports.h"
#include "support/boxanswerer.h"
#include "support/fixtures.h"

#include <QMenuBar>
#include <QPalette>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>

namespace {

// White on nearly black, as a dark desktop gives it to its programs.
QPalette darkPalette()
{
    QPalette dark(QColor(49, 54, 59), QColor(35, 38, 41));
    for (const QPalette::ColorRole ink : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        dark.setColor(ink, QColor(239, 240, 241));
    dark.setColor(QPalette::Base, QColor(27, 30, 32));
    return dark;
}

} // namespace

class TestDesktop : public QObject
{
    Q_OBJECT

private:
    // Every page, and the port's state without its name, which is another each time.
    static QVector<QImage> pages()
    {
        WindowFixture bench;
        bench.window().Serialport_close(); // or the band above the pages came when the board does not answer
        QVector<QImage> result;
        for (const char *tabs : {"tabWidget_safety", "tabWidget_security"}) {
            auto *pages = bench.find<QTabWidget>(tabs);
            for (int i = 0; i < pages->count(); ++i) {
                bench.turnTo(pages->widget(i));
                result.append(bench.window().centralWidget()->grab().toImage());
            }
        }
        result.append(bench.window().menuBar()->grab().toImage());
        QMessageBox box(QMessageBox::NoIcon, QString(), QStringLiteral("Words"), QMessageBox::Yes, &bench.window());
        result.append(box.grab().toImage());
        return result;
    }

private slots:
    void looksTheSameOnADarkDesktopWithLargeLetters()
    {
        const QVector<QImage> light = pages();
        QApplication::setPalette(darkPalette());
        QApplication::setFont(QFont(QStringLiteral("DejaVu Serif"), 15));
        QApplication::setFont(QFont(QStringLiteral("DejaVu Serif"), 15), "QLabel");
        const QVector<QImage> dark = pages();
        QCOMPARE(light.size(), 14);
        for (int i = 0; i < light.size(); ++i)
            QVERIFY2(light[i] == dark[i], qPrintable(QStringLiteral("picture %1").arg(i)));
    }

    // None is left to a style or desktop that comes later.
    void everyWidgetHasTheProgramsFont()
    {
        WindowFixture bench;
        const QStringList families = {QApplication::font().family(), QStringLiteral("Liberation Mono")};
        const auto widgets = bench.window().findChildren<QWidget *>();
        for (const QWidget *widget : widgets)
            QVERIFY2(families.contains(widget->font().family()), qPrintable(widget->objectName()));
    }

    // Reports reach pages that nobody has turned to yet: their widgets are polished bench.
    void reportsLeaveTheZoomedSize()
    {
        WindowFixture bench;
        auto &zoom = *bench.window().findChild<Zoom *>();
        zoom.set(200);
        QVERIFY(bench.show(4, 1, "50 A8 0000 4000 00FF 4000"));
        auto *field = bench.find<QLineEdit>("lineEdit_smpu01_Region0");
        bench.turnTo(field);
        QCOMPARE(field->font().pointSizeF(), 18.0);
        QVERIFY(bench.show(4, 1, "00"));
        QCOMPARE(field->font().pointSizeF(), 18.0);
        zoom.set(100);
        QCOMPARE(field->font().pointSizeF(), 9.0);
    }

    void fitsTheScreen_data()
    {
        QTest::addColumn<QSize>("room");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("maximised");
        QTest::newRow("large") << QSize(1920, 1050) << QSize(1440, 900) << false;
        QTest::newRow("no place for the title bar") << QSize(1440, 900) << QSize(1440, 900) << true;
        QTest::newRow("laptop") << QSize(1366, 738) << QSize(1366, 738) << true;
        QTest::newRow("small") << QSize(1024, 738) << QSize(1024, 738) << true;
        QTest::newRow("tiny") << QSize(800, 560) << QSize(800, 560) << true;
    }

    void fitsTheScreen()
    {
        QFETCH(QSize, room);
        RawLine line;
        setAvailablePortNames([&line] { return QStringList{line.tty()}; });
        MainWindow window;
        fitWindow(window, room);
        QTEST(window.size(), "size");
        QTEST(window.windowState().testFlag(Qt::WindowMaximized), "maximised");
        window.setWindowState(Qt::WindowNoState); // the screen of a test has a size of its own
        window.show();
        QTRY_COMPARE(window.size(), room.boundedTo({1440, 900}));
        // All of it is there: as large as it has to be, or with scroll bars to the rest.
        const auto *page = window.findChild<QWidget *>(QStringLiteral("centralWidget"));
        QTRY_VERIFY(page->width() >= page->minimumSizeHint().width());
        QTRY_VERIFY(page->height() >= page->minimumSizeHint().height());
        const auto *area = qobject_cast<QScrollArea *>(window.centralWidget());
        if (area)
            QVERIFY(area->horizontalScrollBar()->isVisible() && area->verticalScrollBar()->isVisible());
        else
            QVERIFY(window.rect().contains(QRect(page->mapTo(&window, QPoint()), page->size())));
        if (room.width() < 900)
            QVERIFY(area);
    }

    void staysAtItsSizeWhereThereIsNoScreen()
    {
        RawLine line;
        setAvailablePortNames([&line] { return QStringList{line.tty()}; });
        QSize size;
        runWorkbench(*qApp, [&size](MainWindow &window) {
            size = window.size();
            QMetaObject::invokeMethod(qApp, &QApplication::quit, Qt::QueuedConnection);
        });
        QCOMPARE(size, QSize(1440, 900));
    }

    void boxesStandInTheMiddleBeforeThereIsAWindow()
    {
        QWidget hidden;
        hidden.setGeometry(0, 0, 100, 100);
        QPoint centre;
        BoxAnswerer answers;
        answers.onBox([&centre] { centre = QApplication::activeModalWidget()->frameGeometry().center(); });
        inform(&hidden, QStringLiteral("Warning"), QStringLiteral("words"), QMessageBox::Yes);
        const QPoint off = centre - QGuiApplication::primaryScreen()->availableGeometry().center();
        QVERIFY2(off.manhattanLength() < 40, qPrintable(QStringLiteral("%1 %2").arg(off.x()).arg(off.y())));
    }
};

QTEST_MAIN(TestDesktop)
#include "tst_desktop.moc"
