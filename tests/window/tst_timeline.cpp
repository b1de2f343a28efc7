// SPDX-License-Identifier: MIT
// The time line: what is kept, that no fault can hide, how it and the fault history lead to each other, what is exported.
#include "link/commandchannel.h"
#include "link/linetraffic.h"
#include "support/fixtures.h"
#include "timeline/dock.h"
#include "timeline/exports.h"
#include "timeline/view.h"

#include <QComboBox>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

#include <cmath>
#include <random>

using namespace timeline;

namespace {

constexpr qint64 kSecond = 1'000'000'000;
constexpr qint64 kNoon = 1'790'000'000 * kSecond;
constexpr QSize kSize(900, 330);

protocol::fccu::FaultEvent fault(int id, float us)
{
    protocol::fccu::FaultEvent event;
    event.id = static_cast<quint8>(id);
    event.time = us;
    return event;
}

QImage painted(const Chronicle &chronicle, const Span &span)
{
    QImage image(kSize, QImage::Format_RGB32);
    QPainter painter(&image);
    Picture(chronicle, span, kSize).paint(painter);
    return image;
}

} // namespace

class TestTimeLine : public QObject
{
    Q_OBJECT

private slots:
    void columnsHoldEachTimeOnce();
    void noFaultHides_data();
    void noFaultHides();
    void detectionTimesFallIntoBins_data();
    void detectionTimesFallIntoBins();
    void courseIsKept();
    void clickSelectsInTheHistory();
    void historySelectsInTheTimeLine();
    void wheelKeepsWhatIsUnderThePointer();
    void logIsWholeAndQuoted();
    void picturesAreSaved();

private:
    Dock &dock() { return *m_bench.window().findChild<Dock *>(QStringLiteral("timeLine")); }
    void open();
    QPoint placeOf(int number);

    WindowFixture m_bench;
};

// Against a walk over every time, for many spans.
void TestTimeLine::columnsHoldEachTimeOnce()
{
    std::mt19937_64 random(7);
    for (int round = 0; round < 300; ++round) {
        const auto below = [&random](qint64 limit) {
            return static_cast<qint64>(random() % static_cast<quint64>(limit));
        };
        const qint64 spread = qint64(1) << below(50);
        std::vector<qint64> times(static_cast<std::size_t>(below(400)));
        for (qint64 &time : times)
            time = kNoon + below(spread);
        std::sort(times.begin(), times.end());
        const qint64 from = kNoon + below(spread) - spread / 4;
        const Scale scale({from, from + 1000 + below(spread)}, 1 + static_cast<int>(below(1500)));
        std::map<int, qint64> wanted, found;
        for (const qint64 time : times) {
            if (time >= scale.span().from && time < scale.span().to)
                ++wanted[scale.column(time)];
        }
        forEachColumn(times, scale, [&](int column, std::ptrdiff_t first, std::ptrdiff_t count) {
            QVERIFY(column >= 0 && column < scale.width());
            QCOMPARE(scale.column(times[static_cast<std::size_t>(first)]), column);
            found[column] += count;
        });
        QCOMPARE(found, wanted);
    }
}

void TestTimeLine::noFaultHides_data()
{
    QTest::addColumn<double>("seconds");
    for (const double seconds : {1e-6, 1e-3, 1.0, 3600.0, 86400.0 * 30})
        QTest::addRow("%g s", seconds) << seconds;
}

// One fault of a checker among a hundred thousand of the clock monitors.
void TestTimeLine::noFaultHides()
{
    QFETCH(const double, seconds);
    const auto length = static_cast<qint64>(seconds * 1e9);
    Chronicle chronicle;
    const qint64 lone = kNoon + length / 3;
    for (int i = 0; i < 100'000; ++i) {
        if (i == 50'000)
            chronicle.addFault(lone, fault(47, 1));
        chronicle.addFault(lone + (i - 50'000) * std::max<qint64>(length / 150'000, 1), fault(28, 1));
    }
    const Span span{kNoon, kNoon + length};
    const Picture picture(chronicle, span, kSize);
    const int x = picture.marks().left() + Scale(span, picture.marks().width()).column(lone);
    const int row = picture.marks().height() / kBandCount;
    const QImage image = painted(chronicle, span);
    int red = 0;
    for (int y = row; y < 2 * row; ++y)
        red += image.pixel(x, picture.marks().top() + y) == 0xFFC81E2D;
    QVERIFY2(red >= row / 2, qPrintable(QStringLiteral("%1 red pixels").arg(red)));
    QCOMPARE(picture.faultAt({x + 3, picture.marks().top() + row + row / 2}), 50'000);
}

void TestTimeLine::detectionTimesFallIntoBins_data()
{
    QTest::addColumn<float>("us");
    QTest::addColumn<int>("bin");
    QTest::newRow("none") << 0.0F << 0;
    QTest::newRow("negative") << -3.0F << 0;
    QTest::newRow("no number") << std::nanf("") << 0;
    QTest::newRow("a nanosecond") << 0.0011F << 0;
    QTest::newRow("a microsecond") << 1.01F << 3 * kBinsPerDecade;
    QTest::newRow("just below two decades") << 99.0F << 5 * kBinsPerDecade - 1;
    QTest::newRow("endless") << INFINITY << kBins - 1;
}

void TestTimeLine::detectionTimesFallIntoBins()
{
    QFETCH(const float, us);
    QFETCH(const int, bin);
    QCOMPARE(binOf(us), bin);
    Chronicle chronicle;
    chronicle.addFault(kNoon, fault(47, us));
    Histogram wanted = {};
    wanted[static_cast<std::size_t>(bin)] = 1;
    QCOMPARE(chronicle.histogram(1, kNoon, kNoon + 1), wanted);
    QCOMPARE(chronicle.histogram(1, kNoon + 1, kNoon + 2), Histogram());
}

void TestTimeLine::open()
{
    if (!dock().isVisible()) {
        m_bench.window().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&m_bench.window()));
        QTest::keyClick(&m_bench.window(), Qt::Key_T, Qt::ControlModifier);
    }
    QTRY_VERIFY(dock().view().isVisible());
    QTest::mouseClick(dock().findChild<QWidget *>(QStringLiteral("timeLineAll")), Qt::LeftButton);
}

QPoint TestTimeLine::placeOf(int number)
{
    const View &view = dock().view();
    const Picture picture(dock().observer().chronicle(), view.span(), view.size());
    const Fault &one = dock().observer().chronicle().faults().at(static_cast<std::size_t>(number));
    const int row = picture.marks().height() / kBandCount;
    return {picture.marks().left() + Scale(view.span(), picture.marks().width()).column(one.time),
            picture.marks().top() + one.band * row + row / 2};
}

void TestTimeLine::courseIsKept()
{
    const Chronicle &chronicle = dock().observer().chronicle();
    sendCommand(QStringLiteral("inject 7 1"));
    QVERIFY(m_bench.show(12, 2, "2F 3C8B4396")); // 47, 0.017
    sendCommand(QStringLiteral("xbic 5"));
    emit lineTraffic().recalled("inject 5 3\r\n");
    QVERIFY(m_bench.show(12, 2, "24 42C80000")); // 36, 100
    QVERIFY(m_bench.show(1, 5, "7F FE"));
    QCOMPARE(chronicle.faults().size(), std::size_t(2));
    QCOMPARE(nameOfBand(chronicle.faults()[0].band), QStringLiteral("XBIC"));
    QCOMPARE(nameOfBand(chronicle.faults()[1].band), QStringLiteral("CMU"));
    QStringList happenings;
    for (const Happening &one : chronicle.happenings())
        happenings.append(nameOfBand(one.band) + '|' + one.text);
    QCOMPARE(
        happenings,
        QStringList({"XBIC|inject 7 1: crossbar error on a path of a checker", "XBIC|xbic 5: clear the crossbar faults",
                     "CMU|inject 5 3: loss of SPI_CLK", "Chip|restart"}));
    QVERIFY(chronicle.gaps().empty());
    m_bench.window().Serialport_close();
    QCOMPARE(chronicle.gaps().size(), std::size_t(1));
    QCOMPARE(chronicle.gaps()[0].to, 0);
    m_bench.window().Serialport_open();
    QVERIFY(chronicle.gaps()[0].to >= chronicle.gaps()[0].from);
}

void TestTimeLine::clickSelectsInTheHistory()
{
    open();
    auto *history = m_bench.find<QComboBox>("comboBox_FaultID");
    QTRY_COMPARE(history->currentIndex(), 1);
    QTest::mouseClick(&dock().view(), Qt::LeftButton, {}, placeOf(0));
    QCOMPARE(history->currentIndex(), 0);
    QCOMPARE(m_bench.text("lineEdit_FCCUsource"), QStringLiteral("XBAR_0         "));
    const QString details = dock().findChild<QLabel *>(QStringLiteral("timeLineDetails"))->text();
    QVERIFY2(details.contains(QString::fromUtf8("Fault ID 47 · XBAR_0 · detected after 0.02 µs\nData Crossbar error")),
             qPrintable(details));
}

void TestTimeLine::historySelectsInTheTimeLine()
{
    open();
    m_bench.find<QComboBox>("comboBox_FaultID")->setCurrentIndex(1);
    QCOMPARE(dock().view().selected(), 1);
    QTest::keyClick(&dock().view(), Qt::Key_Left);
    QCOMPARE(m_bench.find<QComboBox>("comboBox_FaultID")->currentIndex(), 0);
    QTest::keyClick(&dock().view(), Qt::Key_Left);
    QCOMPARE(dock().view().selected(), 0);
}

void TestTimeLine::wheelKeepsWhatIsUnderThePointer()
{
    open();
    View &view = dock().view();
    const QPoint place = placeOf(1);
    const qint64 before = view.span().length();
    QWheelEvent turn(place, view.mapToGlobal(place), {}, {0, 240}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                     false);
    QApplication::sendEvent(&view, &turn);
    QVERIFY(view.span().length() < before * 7 / 10);
    QVERIFY(std::abs(placeOf(1).x() - place.x()) <= 1);
    QVERIFY(!view.isFollowing());
    QTest::keyClick(&view, Qt::Key_End);
    QVERIFY(view.isFollowing());
    QVERIFY(std::abs(dock().observer().now() - view.span().to) < kSecond);
}

void TestTimeLine::logIsWholeAndQuoted()
{
    Chronicle chronicle;
    chronicle.addCommand(kNoon, QStringLiteral("inject 9 1 100"));
    chronicle.addFault(kNoon + 1'500, fault(22, 0.05F));
    chronicle.addFault(kNoon + kSecond, fault(254, 3));
    chronicle.beginGap(kNoon + 2 * kSecond, QStringLiteral("lost: \"gone\", they say"));
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("log.csv"));
    QCOMPARE(saveLog(path, chronicle), QString());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()),
             QStringLiteral("time,kind,mechanism,fault_id,detection_us,source,text\r\n"
                            "2026-09-21T14:13:20.000000000Z,event,MEMU,,,,\"inject 9 1 100: 1-bit error in flash\"\r\n"
                            "2026-09-21T14:13:20.000001500Z,fault,MEMU,22,0.05,\"MEMU\",\"Flash (c55fmc) correctable "
                            "ECC error\"\r\n"
                            "2026-09-21T14:13:21.000000000Z,fault,Others,254,3,\"Multi source\",\"Multiple error "
                            "reset\"\r\n"
                            "2026-09-21T14:13:22.000000000Z,no line,Chip,,,,\"lost: \"\"gone\"\", they say\"\r\n"));
    const QString full = folder.filePath(QStringLiteral("full.csv"));
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), full));
    QVERIFY(saveLog(full, chronicle).contains(QLatin1String("No space left")));
    QVERIFY2(QFileInfo(full).isSymLink(), "a device is not replaced");
}

void TestTimeLine::picturesAreSaved()
{
    open();
    QTemporaryDir folder;
    const QString svg = folder.filePath(QStringLiteral("line.svg"));
    QCOMPARE(dock().exportTo(svg), QString());
    QFile file(svg);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader reader(&file);
    QStringList texts;
    while (!reader.atEnd()) {
        reader.readNext();
        texts.append(reader.text().toString());
    }
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
    for (int band = 0; band < kBandCount; ++band)
        QVERIFY(texts.contains(nameOfBand(band)));
    const QString png = folder.filePath(QStringLiteral("line.PNG"));
    QCOMPARE(dock().exportTo(png), QString());
    QCOMPARE(QImage(png).size(), 2 * dock().view().size());
}

QTEST_MAIN(TestTimeLine)
#include "tst_timeline.moc"
