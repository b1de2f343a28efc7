// SPDX-License-Identifier: MIT
// Where a fault was is drawn on its page, and the eye is led to the panel of a new one.
#include "app/faultlayer.h"
#include "app/frameflash.h"
#include "app/picture.h"
#include "support/fixtures.h"

#include <QImage>
#include <QTest>

namespace {

int reds(const QImage &image, const QRect &part)
{
    int count = 0;
    const QRect inside = part & image.rect();
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            if (colour.red() > 180 && colour.green() < 60 && colour.blue() < 80)
                ++count;
        }
    }
    return count;
}

} // namespace

class TestMarks : public QObject
{
    Q_OBJECT

private:
    // Red pixels around a widget, as the window shows it.
    int redsAround(const char *name)
    {
        auto *widget = m_bench.find<QWidget>(name);
        m_bench.turnTo(widget);
        QApplication::processEvents();
        const QPoint place = widget->mapTo(&m_bench.window(), QPoint(0, 0));
        return reds(m_bench.window().grab().toImage(), QRect(place, widget->size()).adjusted(-3, -3, 3, 3));
    }

    WindowFixture m_bench;

private slots:
    void initTestCase() { QTRY_VERIFY(m_bench.line().received().endsWith("get 0\r\n")); }

    // Master 0 to slave 3 is the path of the data crossbar's fault; along the bar it crosses what lies between.
    void aCrossbarFaultsPath()
    {
        QCOMPARE(redsAround("label_xbic0_bar"), 0);
        QVERIFY(m_bench.show(3, 2, "01 01 00 03 12 00000040"));
        QVERIFY(redsAround("label_xbic0_bar") > 200);
        QVERIFY(redsAround("label_xbic0_k4core0") > 100);
        QVERIFY(redsAround("label_xbic0_PBRIDGE1") > 100);
        QCOMPARE(redsAround("label_xbic1_bar"), 0);
        QCOMPARE(redsAround("label_xbic0_SRAM"), 0);
        QVERIFY(m_bench.show(3, 2, "00"));
        QCOMPARE(redsAround("label_xbic0_bar"), 0);
    }

    // An injection's path is there before the board answers, and goes with the faults.
    void anInjectionsPath()
    {
        QVERIFY(m_bench.show(3, 1, "1F"));
        m_bench.window().on_pushButton_xbic_fault5_clicked();
        QVERIFY(redsAround("label_xbic4_bar") > 50);
        m_bench.click("pushButton_xbic_faultstatus_clear");
        QCOMPARE(redsAround("label_xbic4_bar"), 0);
    }

    // Core 1 writes to where region 4 forbids it; core 0 may.
    void theRightThatIsMissing()
    {
        QVERIFY(m_bench.show(4, 1, "4F 90 00004000 0FFF4000"));
        QVERIFY(m_bench.show(4, 2, "11 00010040"));
        QVERIFY(redsAround("lineEdit_smpu01_Core1ReadWrite_3") > 100);
        QVERIFY(redsAround("lineEdit_smpu01_Startadress_3") > 100);
        QCOMPARE(redsAround("lineEdit_smpu01_Cashe_3"), 0);
        QCOMPARE(redsAround("lineEdit_smpu01_Core1ReadWrite_2"), 0);
        QVERIFY(m_bench.show(4, 2, ""));
        QCOMPARE(redsAround("lineEdit_smpu01_Core1ReadWrite_3"), 0);
    }

    void theMemory_data()
    {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<QRectF>("memory"); // shares of the picture
        QTest::newRow("flash, 1 bit") << QByteArray("00") << QRectF(0.02, 0.02, 0.23, 0.22);
        QTest::newRow("PRAM, 2 bit") << QByteArray("03") << QRectF(0.02, 0.27, 0.23, 0.22);
        QTest::newRow("SRAM, 1 bit") << QByteArray("04") << QRectF(0.02, 0.52, 0.23, 0.22);
    }

    void theMemory()
    {
        QFETCH(QByteArray, type);
        QFETCH(QRectF, memory);
        auto *picture = m_bench.find<Picture>("label_memu_picture");
        m_bench.turnTo(picture);
        const QRect drawn = picture->place();
        const QRect part(drawn.left() + qRound(memory.left() * drawn.width()),
                         drawn.top() + qRound(memory.top() * drawn.height()), qRound(memory.width() * drawn.width()),
                         qRound(memory.height() * drawn.height()));
        QVERIFY(m_bench.show(7, 2, "00"));
        QCOMPARE(reds(picture->grab().toImage(), part), 0);
        QVERIFY(m_bench.show(7, 2, "01" + type + "00001000"));
        QVERIFY(reds(picture->grab().toImage(), part) > 100);
    }

    // A lock that is on ends its way in a cross.
    void theWaysThroughTheLocks()
    {
        auto *path = m_bench.find<QWidget>("lockPath");
        QCOMPARE(redsAround("lockPath"), 0);
        QVERIFY(m_bench.show(5, 1, "00 01000000 00000000 00000000"));
        const int one = redsAround("lockPath");
        QVERIFY(one > 100);
        QCOMPARE(path->accessibleDescription(),
                 QStringLiteral("The soft lock stops a write. The soft lock can be taken off."));
        QVERIFY(m_bench.show(5, 1, "01 01000000 00000000 00000000"));
        QVERIFY(redsAround("lockPath") > one * 3 / 2);
        QVERIFY(m_bench.show(5, 1, "00 00000000 00000000 00000000"));
        QCOMPARE(redsAround("lockPath"), 0);
    }

    // The second watchdog is served between 2 and 4 ms and times out after 8: at half of nine tenths of its width.
    void theServiceWindow()
    {
        auto *window = m_bench.find<QWidget>("serviceWindow_SWT1");
        QVERIFY(m_bench.show(11, 1, "58 00007D00 0001F400"));
        QCOMPARE(window->accessibleDescription(), QStringLiteral("Served between 2 ms and 4 ms, time-out at 8 ms"));
        m_bench.turnTo(window);
        const auto colourAt = [window](double ninth) {
            return window->grab().toImage().pixelColor(qRound(window->width() * ninth), window->height() / 2).name();
        };
        QCOMPARE(colourAt(0.9 / 4 + 0.02), QStringLiteral("#5bd761"));
        QVERIFY(colourAt(0.9 / 4 - 0.02) != colourAt(0.9 / 4 + 0.02));
        QCOMPARE(colourAt(0.9), QStringLiteral("#d01c2e"));
        QVERIFY(m_bench.show(11, 1, "50 00007D00 0001F400"));
        QVERIFY(colourAt(0.9 / 4 + 0.02) != QStringLiteral("#5bd761"));
    }

    void aNewFaultFlashesOnce()
    {
        auto *panel = m_bench.find<QWidget>("groupBox_FCCU");
        auto *flash = m_bench.find<QWidget>("frameFlash_groupBox_FCCU");
        m_bench.turnTo(panel);
        QTRY_VERIFY(!flash->isVisible());
        QVERIFY(m_bench.show(12, 2, "2F 41D20000"));
        QVERIFY(flash->isVisible());
        QVERIFY(reds(panel->grab().toImage(), panel->rect()) > 1000);
        QTRY_VERIFY(!flash->isVisible());
    }
};

QTEST_MAIN(TestMarks)
#include "tst_marks.moc"
