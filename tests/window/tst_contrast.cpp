// SPDX-License-Identifier: MIT
// What is painted can be read, and what is off looks different from what is on.
#include "support/fixtures.h"
#include "support/sight.h"
#include "support/wire.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include <algorithm>

namespace {

// The best contrast of any pixel with the background: that of the text's strokes.
double textContrast(const QImage &image)
{
    const QRgb background = sight::backgroundOf(image);
    double best = 1;
    for (int y = 4; y < image.height() - 4; ++y) {
        for (int x = 4; x < image.width() - 4; ++x)
            best = std::max(best, sight::contrast(image.pixel(x, y), background));
    }
    return best;
}

double textContrast(QWidget *widget)
{
    return textContrast(widget->grab().toImage());
}

} // namespace

class TestContrast : public QObject
{
    Q_OBJECT

private:
    void send(int module, int type, const char *payload) { m_bench.send(module, type, payload); }

    // White text on a button's blue or green gradient is given; everything else is free.
    static bool hasFixedInk(const QWidget *widget)
    {
        return qobject_cast<const QPushButton *>(widget) && !widget->styleSheet().contains(QLatin1String("200"));
    }

    static bool showsText(QWidget *widget)
    {
        if (auto *field = qobject_cast<QPlainTextEdit *>(widget))
            return !field->placeholderText().isEmpty();
        if (auto *field = qobject_cast<QLineEdit *>(widget); field && !field->placeholderText().isEmpty())
            return true;
        return !widget->property("text").toString().isEmpty();
    }

    WindowFixture m_bench;

private slots:
    void initTestCase() { QTRY_VERIFY(m_bench.line().received().endsWith("get 0\r\n")); }

    void failSafeStates_data()
    {
        QTest::addColumn<QString>("text");
        const char *states[] = {"INIT_FS", "WAIT_ABIST2", "ABIST2", "ASSERT_FS0B", "NORMAL_FS", "Unknown", "INIT_FS"};
        for (const char *state : states)
            QTest::addRow("%s", state) << QString::fromLatin1(state);
    }

    // Each state comes over the line and is read at its first showing, on a page in front.
    void failSafeStates()
    {
        QFETCH(QString, text);
        static const QStringList order = {"INIT_FS", "WAIT_ABIST2", "ABIST2", "ASSERT_FS0B", "NORMAL_FS", "Unknown"};
        auto *field = m_bench.find<QLineEdit>("lineEdit_vg5k_Fail");
        m_bench.turnTo(field);
        m_bench.line().write(wire::frame(14, 1, QByteArray(1, 1) + char(order.indexOf(text))));
        QTRY_COMPARE(field->text(), text);
        QVERIFY2(textContrast(field) >= 4.5, qPrintable(QString::number(textContrast(field))));
        QVERIFY2(field->accessibleDescription().endsWith(": " + text), qPrintable(field->accessibleDescription()));
    }

    void everyTextOnEveryPage()
    {
        QStringList faint;
        const auto widgets = m_bench.window().findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            m_bench.turnTo(widget);
            if (!driver::isOurs(widget) || !widget->isVisible() || !showsText(widget) || hasFixedInk(widget))
                continue;
            const double contrast = textContrast(widget);
            if (contrast < 4.5)
                faint.append(QStringLiteral("%1 %2").arg(widget->objectName()).arg(contrast));
        }
        QVERIFY2(faint.isEmpty(), qPrintable(faint.join('\n')));
    }

    void whatIsSelectedInAList()
    {
        auto *box = m_bench.find<QComboBox>("comboBox_CRC_polynomial");
        m_bench.turnTo(box);
        box->showPopup();
        box->view()->setCurrentIndex(box->model()->index(1, 0));
        const QImage list =
            box->view()->viewport()->grab(box->view()->visualRect(box->view()->currentIndex())).toImage();
        box->hidePopup();
        QVERIFY(textContrast(list) >= 4.5);
        QMenu *menu = m_bench.window().menuBar()->actions().constFirst()->menu();
        menu->popup({});
        menu->setActiveAction(menu->actions().constLast());
        const QImage entry = menu->grab(menu->actionGeometry(menu->actions().constLast())).toImage();
        menu->close();
        QVERIFY(textContrast(entry) >= 4.5);
    }

    void aSwitchThatIsOff()
    {
        auto *button = m_bench.find<QPushButton>("pushButton_F_ResetEsca");
        send(13, 4, "05 00");
        QTRY_VERIFY(button->styleSheet().contains("46,139,87"));
        const QRgb on = sight::backgroundOf(button->grab().toImage());
        send(13, 4, "00 00");
        QTRY_VERIFY(!button->styleSheet().contains("46,139,87"));
        QVERIFY(textContrast(button) >= 4.5);
        QVERIFY(sight::backgroundOf(button->grab().toImage()) != on);
        send(13, 4, "05 00");
        QTRY_VERIFY(button->styleSheet().contains("46,139,87"));
        QCOMPARE(sight::backgroundOf(button->grab().toImage()), on);
    }

    // Disabled, but the audience still reads what was set last.
    void aWatchdogThatIsOff()
    {
        auto *mode = m_bench.find<QLineEdit>("lineEdit_swt_1_mode");
        auto *caption = m_bench.find<QLabel>("label_swt_k7core0");
        m_bench.turnTo(mode);
        send(11, 1, "58 00007D00 0000FA00");
        QTRY_VERIFY(mode->isEnabled());
        const QImage on = mode->grab().toImage();
        send(11, 1, "50 00007D00 0000FA00");
        QTRY_VERIFY(!mode->isEnabled());
        QVERIFY(mode->grab().toImage() != on);
        QVERIFY(textContrast(mode) >= 4.5);
        QVERIFY(textContrast(caption) >= 4.5);
    }

    void aCrossbarThatIsOff()
    {
        auto *group = m_bench.find<QGroupBox>("groupBox_XBIC0");
        auto *port = m_bench.find<QLabel>("label_xbic0_PBRIDGE1");
        m_bench.turnTo(port);
        send(3, 1, "1F");
        QTRY_VERIFY(group->isChecked());
        const QRgb on = sight::backgroundOf(port->grab().toImage());
        send(3, 1, "1E");
        QTRY_VERIFY(!group->isChecked());
        QVERIFY(sight::backgroundOf(port->grab().toImage()) != on);
        QVERIFY(textContrast(port) >= 4.5);
    }

    // A screen reader's sentence agrees with the text beside it.
    void descriptionsSayWhatTheTextSays()
    {
        const auto description = [this](const char *name) {
            return m_bench.find<QWidget>(name)->accessibleDescription();
        };
        send(14, 1, "02 01");
        QTRY_COMPARE(description("lineEdit_vg5k_debug"), QStringLiteral("Gray: In DEBUG mode"));
        send(14, 1, "02 00");
        QTRY_COMPARE(description("lineEdit_vg5k_debug"), QStringLiteral("Green: NOT in DEBUG mode"));
        send(4, 1, "F0");
        QTRY_COMPARE(description("lineEdit_smpu01_Region15"), QStringLiteral("Gray: Not Valid"));
        send(3, 1, "1F");
        QTRY_VERIFY(m_bench.find<QGroupBox>("groupBox_XBIC3")->isChecked());
        m_bench.window().on_pushButton_xbic_fault4_clicked();
        QCOMPARE(description("label_xbic3_M4"), QStringLiteral("White: path of the last injected fault"));
    }
};

QTEST_MAIN(TestContrast)
#include "tst_contrast.moc"
