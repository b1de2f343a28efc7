// SPDX-License-Identifier: MIT
// Everything by the keyboard: pages, status, injections; each stop of the Tab key is seen; the sheet names every key.
#include "support/fixtures.h"
#include "support/sight.h"

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QShortcut>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTextDocument>

#include <set>

namespace {

constexpr int kMostStrokes = 6;

struct Injection {
    const char *button;
    const char *keys; // "Ctrl+4 Alt+L 1 Alt+1"
};

// clang-format off
constexpr Injection injections[] = {
    {"pushButton_cmu_fault1", "Ctrl+1 Alt+1"}, {"pushButton_cmu_fault2", "Ctrl+1 Alt+2"},
    {"pushButton_cmu_fault3", "Ctrl+1 Alt+3"}, {"pushButton_cmu_fault4", "Ctrl+1 Alt+4"},
    {"pushButton_cmu_fault5", "Ctrl+1 Alt+5"},
    {"pushButton_xbic_fault1", "Ctrl+2 Alt+1"}, {"pushButton_xbic_fault2", "Ctrl+2 Alt+2"},
    {"pushButton_xbic_fault3", "Ctrl+2 Alt+3"}, {"pushButton_xbic_fault4", "Ctrl+2 Alt+4"},
    {"pushButton_xbic_fault5", "Ctrl+2 Alt+5"},
    {"pushButton_smpu_fault1", "Ctrl+3 Alt+1"}, {"pushButton_smpu_fault2", "Ctrl+3 Alt+2"},
    {"pushButton_smpu_fault3", "Ctrl+3 Alt+3"}, {"pushButton_smpu_fault4", "Ctrl+3 Alt+4"},
    {"pushButton_smpu_fault5", "Ctrl+3 Alt+5"}, {"pushButton_smpu_fault6", "Ctrl+3 Alt+6"},
    {"pushButton_memu_inject", "Ctrl+4 Alt+L 8 Alt+1"}, {"pushButton_memu_inject_2", "Ctrl+4 Alt+P 8 Tab A Alt+2"},
    {"pushButton_memu_inject_3", "Ctrl+4 Alt+R 8 Tab A Alt+3"}, {"pushButton_memu_inject_5", "Ctrl+4 Alt+4"},
    {"pushButton_intcm_inject_k4", "Ctrl+6 Alt+1"}, {"pushButton_intcm_inject_k70", "Ctrl+6 Alt+2"},
    {"pushButton_intcm_inject_k71", "Ctrl+6 Alt+3"},
    {"pushButton_PMC_FI_TempSensor", "Ctrl+8 Alt+1"}, {"pushButton_PMC_FI_HVD", "Ctrl+8 Alt+2"},
    {"pushButton_PMC_FI_LVDSelfTest", "Ctrl+8 Alt+3"}, {"pushButton_PMC_FI_LVD", "Ctrl+8 Alt+4"},
    {"pushButton_swt_timeout_2", "Ctrl+9 Alt+1"}, {"pushButton_swt_Invalidacess_2", "Ctrl+9 Alt+2"},
    {"pushButton_spt_oram", "Ctrl+0 Alt+1"}, {"pushButton_spt_tram", "Ctrl+0 Alt+2"},
};
// clang-format on

} // namespace

class TestKeys : public QObject
{
    Q_OBJECT

private:
    WindowFixture m_bench;

    QWidget &window() { return m_bench.window(); }

    // To whatever has the focus, as a keyboard does.
    void stroke(const QString &keys)
    {
        const QKeySequence sequence(keys);
        const int key = sequence[0] & ~static_cast<int>(Qt::KeyboardModifierMask);
        const auto modifiers = Qt::KeyboardModifiers(sequence[0] & static_cast<int>(Qt::KeyboardModifierMask));
        QWidget *target = QApplication::focusWidget() ? QApplication::focusWidget() : &window();
        QTest::keyClick(target, static_cast<Qt::Key>(key), modifiers);
    }

    QWidget *sheet() { return window().findChild<QDialog *>(QStringLiteral("keySheet")); }

    // Pixels around the widget, three on each side, that stand out from what was there before.
    int ringPixels(const QWidget *widget, const QImage &before, const QRect &area)
    {
        const QImage after = window().grab(area).toImage();
        const QRect inner(widget->mapTo(&window(), QPoint()) - area.topLeft(), widget->size());
        int pixels = 0;
        for (int y = 0; y < after.height(); ++y) {
            for (int x = 0; x < after.width(); ++x) {
                const bool edge = !inner.adjusted(3, 3, -3, -3).contains(x, y);
                pixels += edge && sight::contrast(after.pixel(x, y), before.pixel(x, y)) >= 3;
            }
        }
        return pixels;
    }

private slots:
    void initTestCase()
    {
        window().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window()));
        QTRY_VERIFY(m_bench.line().received().endsWith("get 0\r\n"));
    }

    void pages_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("title");
        const char *titles[] = {"CMU", "XBIC", "SMPU", "MEMU", "CRC", "INTCM", "VG5k", "PMC", "SWT", "SPT"};
        for (int i = 0; i < 10; ++i)
            QTest::newRow(titles[i]) << QStringLiteral("Ctrl+%1").arg((i + 1) % 10) << QString::fromLatin1(titles[i]);
        QTest::newRow("CSE") << "Ctrl+Shift+1"
                             << "CSE";
        QTest::newRow("REG_PROT") << "Ctrl+Shift+2"
                                  << "REG_PROT";
    }

    void pages()
    {
        QFETCH(QString, keys);
        QFETCH(QString, title);
        stroke(keys);
        const auto books = window().findChildren<QTabWidget *>(QRegularExpression(QStringLiteral("tabWidget_s")));
        QStringList shown;
        for (const QTabWidget *book : books) {
            if (book->isVisible())
                shown.append(book->tabText(book->currentIndex()));
        }
        QCOMPARE(shown, QStringList(title));
    }

    void statusOfThePageInFront()
    {
        stroke(QStringLiteral("Ctrl+3"));
        QCOMPARE(m_bench.sentBy([this] { stroke(QStringLiteral("F5")); }), "get 5|get 1|get 9|get 10|get 0|");
        stroke(QStringLiteral("Ctrl+Shift+2"));
        QCOMPARE(m_bench.sentBy([this] { stroke(QStringLiteral("F5")); }), "get 8|get 1|get 9|get 10|get 0|");
    }

    void eachInjectionInFewKeys()
    {
        std::set<QString> pressed;
        for (const Injection &injection : injections) {
            auto *button = m_bench.find<QPushButton>(injection.button);
            QObject::disconnect(button, nullptr, &window(), nullptr); // other tests see what it sends
            const QSignalSpy clicks(button, &QPushButton::clicked);
            stroke(QStringLiteral("Ctrl+Shift+1"));
            const QStringList strokes = QString::fromLatin1(injection.keys).split(QLatin1Char(' '));
            QVERIFY2(strokes.size() <= kMostStrokes, injection.keys);
            for (const QString &keys : strokes)
                stroke(keys);
            QVERIFY2(clicks.count() == 1, injection.button);
            pressed.insert(button->objectName());
        }
        QCOMPARE(m_bench.text("lineEdit_memu_1") + m_bench.text("lineEdit_memu_3") + m_bench.text("lineEdit_memu_5"),
                 QStringLiteral("88a"));
        const auto all = window().findChildren<QPushButton *>(QRegularExpression(
            QStringLiteral("_fault\\d$|memu_inject|intcm_inject|PMC_FI|swt_(timeout|Inval)|spt_.ram$")));
        for (const QPushButton *button : all)
            QVERIFY2(pressed.count(button->objectName()) == 1, qPrintable(button->objectName()));
    }

    // No two keys of one page are the same, nor one of a page and one of the window.
    void noKeyMeansTwoThings()
    {
        std::set<QString> seen;
        const auto shortcuts = window().findChildren<QShortcut *>();
        for (const QShortcut *shortcut : shortcuts) {
            auto *owner = qobject_cast<QWidget *>(shortcut->parent());
            QString page;
            for (QWidget *widget = owner; widget; widget = widget->parentWidget()) {
                if (widget->objectName().startsWith(QLatin1String("tab")) && page.isEmpty())
                    page = widget->objectName();
            }
            const QString key = shortcut->key().toString();
            QVERIFY2(seen.insert(page + key).second && (page.isEmpty() || seen.count(key) == 0),
                     qPrintable(page + ' ' + key));
        }
    }

    void everyStopIsSeen_data()
    {
        QTest::addColumn<QString>("page");
        for (const char *page : {"Ctrl+1", "Ctrl+2", "Ctrl+3", "Ctrl+4", "Ctrl+5", "Ctrl+6", "Ctrl+7", "Ctrl+8",
                                 "Ctrl+9", "Ctrl+0", "Ctrl+Shift+1", "Ctrl+Shift+2"})
            QTest::newRow(page) << QString::fromLatin1(page);
    }

    // The Tab key leads around and back to where it began, and is seen on its way.
    void everyStopIsSeen()
    {
        QFETCH(QString, page);
        m_bench.line().write(QByteArray());
        stroke(page);
        const QWidget *const first = QApplication::focusWidget();
        int stops = 0;
        do {
            QWidget *next = QApplication::focusWidget();
            QTest::keyClick(next, Qt::Key_Tab);
            next = QApplication::focusWidget();
            QVERIFY(next);
            const QRect area(next->mapTo(&window(), QPoint(-4, -4)), next->size() + QSize(8, 8));
            next->clearFocus();
            const QImage before = window().grab(area).toImage();
            next->setFocus(Qt::TabFocusReason);
            const int least = next->width() + next->height(); // half of the ring
            const int pixels = ringPixels(next, before, area);
            QVERIFY2(pixels >= least, qPrintable(QStringLiteral("%1: %2").arg(next->objectName()).arg(pixels)));
            QVERIFY2(++stops < 200, "no way around");
        } while (QApplication::focusWidget() != first);
        QVERIFY2(stops > 10, qPrintable(QString::number(stops)));
    }

    void sheetNamesEveryKey()
    {
        stroke(QStringLiteral("Ctrl+1"));
        stroke(QStringLiteral("?"));
        QVERIFY(sheet());
        QString text;
        const auto labels = sheet()->findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            QTextDocument document;
            document.setHtml(label->text());
            text += document.toPlainText() + '\n';
        }
        const auto shortcuts = window().findChildren<QShortcut *>();
        for (const QShortcut *shortcut : shortcuts) {
            if (shortcut->parent() == sheet())
                continue;
            QVERIFY2(!shortcut->whatsThis().isEmpty(), qPrintable(shortcut->key().toString()));
            QVERIFY2(text.contains(shortcut->key().toString() + '\n' + shortcut->whatsThis() + '\n'),
                     qPrintable(shortcut->key().toString() + ' ' + shortcut->whatsThis()));
        }
        QVERIFY(text.contains(QStringLiteral("F1\nManual\n")));
        QTest::keyClick(sheet(), Qt::Key_Question);
        QTRY_VERIFY(!sheet());
    }

    void aQuestionMarkIsTyped()
    {
        auto *field = m_bench.find<QPlainTextEdit>("plainTextEdit_cse_Message_input");
        m_bench.turnTo(field);
        field->setFocus();
        QTest::keyClick(field, '?');
        QCOMPARE(field->toPlainText(), QStringLiteral("?"));
        QVERIFY(!sheet());
    }
};

QTEST_MAIN(TestKeys)
#include "tst_keys.moc"
