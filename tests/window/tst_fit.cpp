// SPDX-License-Identifier: MIT
// Everything that is written can be read: each text fits its widget and no widget covers another, at each size of the
// window and each zoom that go together.
#include "app/elidedlabel.h"
#include "app/zoom.h"
#include "support/fixtures.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLayout>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>

namespace {

// The widest that a field can show, where the virtual board does not show it by itself.
struct Text {
    const char *field;
    const char *text;
};

constexpr Text widest[] = {
    {"lineEdit_FCCUdetectime", "500000.00"},
    {"lineEdit_CRC_calTime", "Calculate Time:2.553334"},
    {"lineEdit_cse_proess", "123456 us"},
    {"lineEdit_smpu0_Startadress", "0xDDDDDDDD"},
    {"lineEdit_smpu0_Endaddress", "0xDDDDDDDD"},
    {"lineEdit_smpu0_Region1", "Not Valid"},
    {"lineEdit_smpu0_Core0ReadWrite", "Read/Write"},
    {"lineEdit_smpu0_Core2ReadWrite", "Read/Write"},
    {"lineEdit_smpu0_Cashe", "Inhibit"},
    {"lineEdit_reg_module_2", "0xDDDDDDDD"},
    {"lineEdit_reg_mirror_2", "0xDDDDDDDD"},
    {"lineEdit_vg5k_Fail", "ASSERT_FS0B"},
    {"lineEdit_vg5k_debug", "NOT in DEBUG mode"},
    {"lineEdit_swt_1_mode", "Fixed Service Sequence"},
    {"lineEdit_spt", "4294967295"},
    {"label_MCCLK_fvalue", "240"},
};

QSize sizeOf(const QWidget &widget, const QString &text)
{
    return widget.fontMetrics().boundingRect(QRect(0, 0, 10000, 10000), Qt::AlignLeft, text).size();
}

bool fitsLabel(const QLabel &label)
{
    if (label.text().isEmpty()) // a picture
        return true;
    const QSize room = label.contentsRect().size();
    if (label.wordWrap())
        return label.heightForWidth(label.width()) <= label.height();
    const QSize text = sizeOf(label, label.text());
    return text.width() <= room.width() && text.height() <= room.height();
}

template <class Button> bool fitsButton(const Button &button, QStyle::SubElement contents)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    const QSize room = button.style()->subElementRect(contents, &option, &button).size();
    const QSize text = sizeOf(button, button.text());
    return text.width() <= room.width() && text.height() <= button.height();
}

bool fitsField(const QLineEdit &field)
{
    QStyleOptionFrame option;
    option.initFrom(&field);
    const QRect room = field.style()->subElementRect(QStyle::SE_LineEditContents, &option, &field);
    const QString text = field.text().isEmpty() ? field.placeholderText() : field.text();
    return text.isEmpty()
        || (sizeOf(field, text).width() <= room.width() && field.fontMetrics().height() <= room.height());
}

bool fitsSelector(const QComboBox &box)
{
    QStyleOptionComboBox option;
    option.initFrom(&box);
    const QRect room = box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
    return sizeOf(box, box.currentText()).width() <= room.width();
}

bool fitsTabs(const QTabBar &bar)
{
    const auto scrollers = bar.findChildren<QToolButton *>();
    for (const QToolButton *scroller : scrollers) {
        if (scroller->isVisible())
            return false;
    }
    for (int tab = 0; tab < bar.count(); ++tab) {
        if (sizeOf(bar, bar.tabText(tab)).width() > bar.tabRect(tab).width())
            return false;
    }
    return true;
}

bool fitsGroup(const QGroupBox &group)
{
    return group.minimumSizeHint().width() <= group.width();
}

bool fits(const QWidget &widget)
{
    if (qobject_cast<const ElidedLabel *>(&widget))
        return true; // its end may be missing
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return fitsLabel(*label);
    if (const auto *button = qobject_cast<const QPushButton *>(&widget))
        return fitsButton(*button, QStyle::SE_PushButtonContents);
    if (const auto *button = qobject_cast<const QRadioButton *>(&widget))
        return fitsButton(*button, QStyle::SE_RadioButtonContents);
    if (const auto *button = qobject_cast<const QCheckBox *>(&widget))
        return fitsButton(*button, QStyle::SE_CheckBoxContents);
    if (const auto *field = qobject_cast<const QLineEdit *>(&widget))
        return fitsField(*field);
    if (const auto *box = qobject_cast<const QComboBox *>(&widget))
        return fitsSelector(*box);
    if (const auto *bar = qobject_cast<const QTabBar *>(&widget))
        return fitsTabs(*bar);
    if (const auto *group = qobject_cast<const QGroupBox *>(&widget))
        return fitsGroup(*group);
    return true;
}

// Widgets beside each other in a layout; what lies over others on purpose lets clicks through.
QList<QWidget *> siblingsIn(const QWidget &parent)
{
    QList<QWidget *> siblings;
    const auto children = parent.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *child : children) {
        if (child->isVisible() && !child->isWindow() && !child->testAttribute(Qt::WA_TransparentForMouseEvents))
            siblings.append(child);
    }
    return siblings;
}

QString nameOf(const QWidget &widget)
{
    return QStringLiteral("%1 (%2x%3)")
        .arg(widget.objectName().isEmpty() ? QString::fromLatin1(widget.metaObject()->className())
                                           : widget.objectName())
        .arg(widget.width())
        .arg(widget.height());
}

QStringList overlapsIn(const QWidget &parent)
{
    QStringList troubles;
    const auto siblings = siblingsIn(parent);
    for (int i = 0; i < siblings.size(); ++i) {
        if (!parent.rect().contains(siblings[i]->geometry()))
            troubles.append(nameOf(*siblings[i]) + QStringLiteral(" leaves ") + nameOf(parent));
        for (int other = 0; other < i; ++other) {
            if (siblings[i]->geometry().intersects(siblings[other]->geometry()))
                troubles.append(nameOf(*siblings[i]) + QStringLiteral(" covers ") + nameOf(*siblings[other]));
        }
    }
    return troubles;
}

} // namespace

class TestFit : public QObject
{
    Q_OBJECT

private:
    Zoom &zoom() { return *m_bench.window().findChild<Zoom *>(); }

    // Of all that can be seen now.
    QStringList troubles()
    {
        QStringList found;
        const auto widgets = m_bench.window().findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            if (!widget->isVisible() || widget->window() != &m_bench.window())
                continue;
            if (!fits(*widget))
                found.append(nameOf(*widget) + QStringLiteral(" is too small"));
            if (widget->layout() && driver::isOurs(widget))
                found += overlapsIn(*widget);
        }
        return found;
    }

    // Calls `work` with each page in front.
    void onEveryPage(const std::function<void(const QString &)> &work)
    {
        auto *functions = m_bench.find<QTabWidget>("tabWidget_function");
        for (const char *name : {"tabWidget_safety", "tabWidget_security"}) {
            auto *pages = m_bench.find<QTabWidget>(name);
            functions->setCurrentWidget(pages->parentWidget());
            for (int page = 0; page < pages->count(); ++page) {
                pages->setCurrentIndex(page);
                work(pages->tabText(page));
            }
        }
    }

    BoardFixture m_bench;

private slots:
    void initTestCase()
    {
        onEveryPage([](const QString &) {});
        QTRY_VERIFY(!m_bench.find<QLineEdit>("lineEdit_swt_2_mode")->text().isEmpty());
        m_bench.window().FCCUDataFrameUnpack(2, 5, QByteArray::fromHex("6B 3F800000")); // an ID of three digits
        for (const Text &row : widest) {
            auto *widget = m_bench.find<QWidget>(row.field);
            if (auto *field = qobject_cast<QLineEdit *>(widget))
                field->setText(QString::fromLatin1(row.text));
            else
                qobject_cast<QLabel *>(widget)->setText(QString::fromLatin1(row.text));
        }
    }

    void everyPage_data()
    {
        QTest::addColumn<int>("percent");
        QTest::addColumn<QSize>("size");
        struct Screen {
            QSize size;
            int mustFit = 0; // up to this zoom
        };
        const Screen screens[] = {{{1100, 700}, 100}, {{1366, 768}, 110}, {{1440, 900}, 125}, {{1920, 1080}, 150}};
        for (const int percent : {80, 100, 110, 125, 150}) {
            for (const Screen &screen : screens) {
                if (percent <= screen.mustFit)
                    QTest::addRow("%d %% at %dx%d", percent, screen.size.width(), screen.size.height())
                        << percent << screen.size;
                if (percent < 100)
                    break; // the smallest window is enough
            }
        }
    }

    void everyPage()
    {
        QFETCH(int, percent);
        QFETCH(QSize, size);
        zoom().set(percent);
        m_bench.window().resize(1, 1);
        QApplication::processEvents();
        const QSize least = m_bench.window().minimumSizeHint();
        QVERIFY2(least.width() <= size.width() && least.height() <= size.height(),
                 qPrintable(QStringLiteral("needs %1x%2").arg(least.width()).arg(least.height())));
        m_bench.window().resize(size);
        QStringList found;
        onEveryPage([&](const QString &page) {
            QApplication::processEvents();
            const auto here = troubles();
            for (const QString &trouble : here)
                found.append(page + QStringLiteral(": ") + trouble);
        });
        QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
    }

    // One plan for all pages: the same part stands at the same place, but for two pixels where another one spans two
    // columns, whose shares are rounded otherwise.
    void theStripStandsStill_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::newRow("fault records") << QStringList{"groupBox_cmu_faultRecord",  "groupBox_xbic_faultRecord",
                                                      "groupBox_smpu_faultRecord", "groupBox_memu_faultRecord",
                                                      "groupBox_PMC_faultRecord",  "groupBox_intcm_faultRecord",
                                                      "groupBox_vg5k_faultRecord", "groupBox_spt_faultRecord"};
        QTest::newRow("Get Fault") << QStringList{"pushButton_cmu_faultrecord_get",  "pushButton_xbic_faultrecord_get",
                                                  "pushButton_smpu_faultrecord_get", "pushButton_memu_faultrecord_get",
                                                  "pushButton_PMC_GetFault",         "pushButton_intcm_faultrecord_get",
                                                  "pushButton_spt_faultrecord_get"};
        QTest::newRow("Clear Fault") << QStringList{
            "pushButton_cmu_faultstatus_clear",  "pushButton_xbic_faultstatus_clear",
            "pushButton_smpu_faultstatus_clear", "pushButton_memu_faultstatus_clear",
            "pushButton_PMC_ClearFault",         "pushButton_intcm_faultstatus_clear",
            "pushButton_spt_faultstatus_clear"};
        QTest::newRow("fault injection") << QStringList{
            "groupBox_cmu_faults",   "groupBox_xbic_inject", "groupBox_smpu_faults",    "groupBox_PMC_inject",
            "groupBox_intcm_inject", "groupBox_swt_inject",  "groupBox_spt_errorInject"};
    }

    void theStripStandsStill()
    {
        QFETCH(QStringList, names);
        zoom().set(100);
        for (const QSize &size : {QSize(1100, 700), QSize(1920, 1080)}) {
            m_bench.window().resize(size);
            QRect first;
            for (const QString &name : names) {
                auto *part = m_bench.find<QWidget>(name.toLatin1().constData());
                m_bench.turnTo(part);
                QApplication::processEvents();
                const QRect place(part->mapTo(&m_bench.window(), QPoint(0, 0)), part->size());
                if (first.isNull())
                    first = place;
                const QPoint off = place.topLeft() - first.topLeft();
                QVERIFY2(off.manhattanLength() <= 2,
                         qPrintable(QStringLiteral("%1 at %2,%3, not %4,%5")
                                        .arg(name)
                                        .arg(place.x())
                                        .arg(place.y())
                                        .arg(first.x())
                                        .arg(first.y())));
            }
        }
    }

    void keysZoom()
    {
        zoom().set(100);
        QApplication::setActiveWindow(&m_bench.window());
        struct Row {
            Qt::Key key = Qt::Key_unknown;
            Qt::KeyboardModifiers modifiers;
            int percent = 0;
        };
        const Row rows[] = {{Qt::Key_Plus, Qt::ControlModifier, 110},
                            {Qt::Key_Equal, Qt::ControlModifier, 125},
                            {Qt::Key_Minus, Qt::ControlModifier, 110},
                            {Qt::Key_0, Qt::ControlModifier | Qt::ShiftModifier, 100}};
        for (const Row &row : rows) {
            QTest::keyClick(&m_bench.window(), row.key, row.modifiers);
            QCOMPARE(Zoom::percent(), row.percent);
        }
    }

    void theStepsEndAtTheLimits()
    {
        zoom().set(300);
        QCOMPARE(Zoom::percent(), 250);
        zoom().in();
        QCOMPARE(Zoom::percent(), 250);
        zoom().set(0);
        QCOMPARE(Zoom::percent(), 80);
        zoom().out();
        QCOMPARE(Zoom::percent(), 80);
    }

    // Fonts, sizes, margins, and what the style sheet draws: twice as large, and as before when it is over.
    void everythingGrowsAndShrinksAlike()
    {
        const auto measure = [this] {
            const auto *box = m_bench.find<QComboBox>("comboBox_cmu_choice");
            const auto *large = m_bench.find<QLabel>("label_FCCU_status");
            const auto *page = m_bench.find<QWidget>("tabWidgetPage1");
            return QList<double>{QApplication::font().pointSizeF(),
                                 large->font().pointSizeF(),
                                 double(large->minimumWidth()),
                                 double(page->layout()->contentsMargins().left()),
                                 double(page->layout()->spacing()),
                                 box->font().pointSizeF(),
                                 double(m_bench.window().menuBar()->fontInfo().pixelSize())};
        };
        zoom().set(100);
        const QList<double> normal = measure();
        zoom().set(200);
        const QList<double> twice = measure();
        for (int i = 0; i < normal.size(); ++i)
            QCOMPARE(twice[i], 2 * normal[i]);
        QVERIFY(qApp->styleSheet().contains(QLatin1String("padding: 6px 14px")));
        zoom().set(100);
        QCOMPARE(measure(), normal);
    }

    // The colours that the board's reports set are not the zoom's business.
    void stylesOfIndicatorsStay()
    {
        zoom().set(100);
        const QString style = m_bench.style("pushButton_F_ResetEsca");
        QVERIFY(style.contains(QLatin1String("px")));
        zoom().set(150);
        QCOMPARE(m_bench.style("pushButton_F_ResetEsca"), style);
    }

    void windowsThatComeLaterGrowToo()
    {
        zoom().set(200);
        QDialog dialog;
        QLabel label(&dialog);
        QFont bold = label.font();
        bold.setBold(true);
        label.setFont(bold);
        label.setMinimumWidth(50);
        QLabel title(&dialog);
        QFont large = title.font();
        large.setPointSize(12);
        title.setFont(large);
        QLabel kept(&dialog);
        kept.setMinimumWidth(50);
        keepUnzoomed(kept);
        dialog.show();
        QCOMPARE(label.font().pointSizeF(), 18.0);
        QCOMPARE(title.font().pointSizeF(), 24.0);
        QCOMPARE(label.minimumWidth(), 100);
        QCOMPARE(kept.minimumWidth(), 50);
        zoom().set(100);
        QCOMPARE(label.font().pointSizeF(), 9.0);
        QCOMPARE(title.font().pointSizeF(), 12.0);
        QCOMPARE(label.minimumWidth(), 50);
    }
};

QTEST_MAIN(TestFit)
#include "tst_fit.moc"
