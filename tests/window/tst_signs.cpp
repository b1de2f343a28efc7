// SPDX-License-Identifier: MIT
// No state of an indicator is told by its colour alone: what was painted for each state differs from the other states in
// its sign, or in a colour that everybody tells apart.
#include "app/indicators.h"
#include "app/signs.h"
#include "support/fixtures.h"
#include "support/sight.h"
#include "support/wire.h"

#include <QHash>
#include <QMap>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>

#include <map>

namespace {

struct Stimulus {
    int module, type;
    const char *payload;
};

// Each indicator in all states that reports bring; those of animations are painted below.
constexpr Stimulus stimuli[] = {
    {2, 4, "FA F42400"},
    {2, 4, "00 F42410"}, // clock generators
    {4, 1, "7F A8 0000 4000 FFFF 4000"},
    {4, 1, "00 A8 0000 4000 FFFF 4000"},
    {4, 1, "F0"},
    {4, 1, "70"},
    {5, 1, "01 00010000 78563412 EFBEADDE"},
    {5, 1, "00 00000000 00000000 00000000"},
    {6, 3, "00000009 313233343536373839 0000004B 3FC00000"},
    {10, 1, "01 DF"},
    {10, 1, "01 00"},
    {10, 4, "00 01"},
    {10, 4, "00 00"},
    {11, 1, "58 00007D00 0000FA00"},
    {11, 1, "50 00007D00 0000FA00"},
    {12, 1, "01"},
    {12, 1, "02"},
    {12, 1, "03"},
    {13, 4, "0F 0F"},
    {13, 4, "00 00"},
    {14, 1, "00 00"},
    {14, 1, "00 FF"},
    {14, 1, "01 00"},
    {14, 1, "01 01"},
    {14, 1, "01 02"},
    {14, 1, "01 03"},
    {14, 1, "01 04"},
    {14, 1, "01 09"},
    {14, 1, "02 00"},
    {14, 1, "02 01"},
    {15, 1, "00"},
    {15, 4, "05 41C80000 0001 01"},
    {15, 4, "05 41C80000 0001 00"},
};

struct Blink {
    const char *names; // of the indicators
    const char *colours[3];
};

constexpr Blink blinks[] = {
    {"_f(min|value|max)$", {indicator::kRed, indicator::kGreen, indicator::kGrey}},
    {"_f(min|max)$", {"rgb(85,170,255)"}},
    {"label_cmu_(xosc|spi)loss", {indicator::kRed, indicator::kGreen}},
    {"label__?xbic\\d_(?!bar)", {indicator::kRed, indicator::kGreen, "rgb(255,255,255,100)"}},
    {"label_reset_stutas|label_cse_status_all", {indicator::kRed, indicator::kGreen}},
    {"label_[LM]BIST_\\d+", {indicator::kGreen, indicator::kGrey}},
    {"label_swt_onoff_\\d", {indicator::kGreen, indicator::kGrey}},
};

// What stands out from the background.
QBitArray maskOf(const QImage &image, QRgb background)
{
    QHash<QRgb, bool> known;
    QBitArray mask(image.width() * image.height());
    for (int i = 0; i < mask.size(); ++i) {
        const QRgb pixel = image.pixel(i % image.width(), i / image.width());
        auto it = known.constFind(pixel);
        if (it == known.constEnd())
            it = known.insert(pixel, sight::contrast(pixel, background) >= 3);
        mask.setBit(i, *it);
    }
    return mask;
}

struct Look {
    QRgb colour = 0;
    QBitArray mask;
};

bool differ(const Look &one, const Look &other)
{
    constexpr int leastPixels = 8; // of the smallest sign, seven pixels wide
    return sight::difference(one.colour, other.colour) >= 20 || (one.mask ^ other.mask).count(true) >= leastPixels;
}

} // namespace

class TestSigns : public QObject
{
    Q_OBJECT

private:
    WindowFixture m_bench;
    std::map<QWidget *, QMap<QString, Look>> m_looks; // by style

    // With the same text in each state: only the sign and the colour count.
    void look(QWidget *widget)
    {
        static const QRegularExpression empty(QStringLiteral("[\\s;]"));
        const QString style = widget->styleSheet().remove(empty);
        if (!style.contains(QLatin1String("rgb")) || m_looks[widget].contains(style))
            return;
        const QString text = widget->property("text").toString();
        if (!text.isEmpty())
            widget->setProperty("text", QStringLiteral("88"));
        const QImage image = widget->grab().toImage();
        widget->setProperty("text", text);
        const QRgb background = sight::backgroundOf(image, 2);
        m_looks[widget].insert(style, {background, maskOf(image, background)});
    }

    void lookAtAll()
    {
        const auto widgets = m_bench.window().findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            if (widget->property("sign").isValid())
                look(widget);
        }
    }

    void paint(const Blink &blink)
    {
        const auto widgets = m_bench.window().findChildren<QLabel *>(QRegularExpression(blink.names));
        QVERIFY2(!widgets.isEmpty(), blink.names);
        for (QLabel *widget : widgets) {
            for (const char *colour : blink.colours) {
                if (!colour)
                    continue;
                indicator::paint(widget, colour);
                look(widget);
            }
        }
    }

private slots:
    void initTestCase()
    {
        QTRY_VERIFY(m_bench.line().received().endsWith("get 0\r\n"));
        const auto widgets = m_bench.window().findChildren<QWidget *>();
        for (QWidget *widget : widgets)
            m_bench.turnTo(widget); // lays out its page
    }

    void differencesAsPublished_data()
    {
        QTest::addColumn<QVector<double>>("values"); // L a b, L a b, difference
        QTest::newRow("blue") << QVector<double>{50, 2.6772, -79.7751, 50, 0, -82.7485, 2.0425};
        QTest::newRow("far") << QVector<double>{50, 2.5, 0, 73, 25, -18, 27.1492};
        QTest::newRow("across") << QVector<double>{50, 2.5, 0, 50, 0, -2.5, 4.3065};
        QTest::newRow("dark") << QVector<double>{2.0776, 0.0795, -1.1350, 0.9033, -0.0636, -0.5514, 0.9082};
    }

    void differencesAsPublished()
    {
        QFETCH(QVector<double>, values);
        const double difference =
            sight::difference({values[0], values[1], values[2]}, {values[3], values[4], values[5]});
        QVERIFY2(std::abs(difference - values[6]) < 0.0001, qPrintable(QString::number(difference)));
    }

    void eachStateHasItsOwnLook()
    {
        lookAtAll();
        for (const Stimulus &stimulus : stimuli) {
            QVERIFY2(m_bench.show(stimulus.module, stimulus.type, stimulus.payload), stimulus.payload);
            lookAtAll();
        }
        for (const Blink &blink : blinks)
            paint(blink);
        int indicators = 0;
        QStringList alike;
        for (const auto &[widget, looks] : m_looks) {
            indicators += looks.size() > 1;
            for (auto one = looks.cbegin(); one != looks.cend(); ++one) {
                for (auto other = std::next(one); other != looks.cend(); ++other) {
                    if (!differ(*one, *other))
                        alike.append(widget->objectName() + ": " + one.key() + " and " + other.key());
                }
            }
        }
        QVERIFY2(alike.isEmpty(), qPrintable(alike.join('\n')));
        QVERIFY2(indicators >= 190, qPrintable(QString::number(indicators)));
    }

    // A sign takes no press and no room, and goes with its colour.
    void aSignIsPaintOnly()
    {
        auto *button = m_bench.find<QPushButton>("pushButton_D_ResetEsca");
        QVERIFY(m_bench.show(13, 4, "00 0F"));
        QCOMPARE(sign::over(button), sign::Shape::Tick);
        const QSize size = button->sizeHint();
        const QString sent = m_bench.sentBy([this] { m_bench.click("pushButton_D_ResetEsca"); });
        QVERIFY2(sent.startsWith("resetEsca"), qPrintable(sent));
        QCOMPARE(sign::over(button), sign::Shape::Dash);
        QCOMPARE(button->sizeHint().height(), size.height());
        auto *label = m_bench.find<QLabel>("label_LBIST_1");
        indicator::paint(label, "rgb(1,2,3)");
        QCOMPARE(sign::over(label), sign::Shape::None);
    }

    void padlocksOpen()
    {
        const auto picture = [this](const char *name) { return m_bench.find<QLabel>(name)->grab().toImage(); };
        QVERIFY(m_bench.show(5, 1, "00 00000000 00000000 00000000"));
        const QImage open = picture("label_regp_soft_picture");
        const QImage hard = picture("label_regp_hard_picture");
        QVERIFY(m_bench.show(5, 1, "00 00010000 00000000 00000000"));
        QVERIFY(picture("label_regp_soft_picture") != open);
        QVERIFY(picture("label_regp_hard_picture") == hard);
        QVERIFY(m_bench.show(5, 1, "01 00000000 00000000 00000000"));
        QVERIFY(picture("label_regp_soft_picture") == open);
        QVERIFY(picture("label_regp_hard_picture") != hard);
    }
};

QTEST_MAIN(TestSigns)
#include "tst_signs.moc"
