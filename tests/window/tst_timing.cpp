// SPDX-License-Identifier: MIT
// Delayed work comes neither early nor much too late. The clock runs ahead while the window waits.
#include "link/commandchannel.h"
#include "link/linetraffic.h"
#include "support/fakeclock.h"
#include "support/fixtures.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QTabWidget>
#include <QTest>
#include <QThread>
#include <QTime>
#include <QTimer>

namespace {

// A plain timer may fire 5 % early. Waits look at the clock in rounds of 10 ms, some stand in a row, and the machine may
// be busy.
constexpr bool isAbout(qint64 ms, int wanted)
{
    return ms >= wanted - wanted / 20 - 1 && ms <= wanted + wanted / 4 + 250;
}

/// Commands sent while this lives, with their times.
class Log : public QObject
{
public:
    Log()
    {
        m_clock.start();
        connect(&lineTraffic(), &LineTraffic::sent, this, [this](const QByteArray &bytes) {
            m_commands.append(QString::fromLatin1(bytes).trimmed());
            m_times.append(static_cast<int>(m_clock.elapsed()));
        });
    }
    /// Exactly these commands, and each wait between them as long as given.
    bool fits(const QStringList &commands, const QList<int> &gaps) const
    {
        bool fits = m_commands == commands;
        for (int i = 1; fits && i < m_times.size(); ++i) {
            const int gap = m_times[i] - m_times[i - 1];
            fits = isAbout(gap, gaps[i - 1]);
        }
        return fits;
    }
    QString text() const
    {
        QString words;
        for (int i = 0; i < m_times.size(); ++i)
            words += QStringLiteral("%1 ms: %2\n").arg(m_times[i]).arg(m_commands[i]);
        return words;
    }

private:
    QElapsedTimer m_clock;
    QStringList m_commands;
    QList<int> m_times;
};

/// The colours that a widget takes while this lives: "red 100 green 100 red", with the milliseconds between them.
class Colours : public QObject
{
public:
    explicit Colours(QWidget &widget)
    {
        widget.setStyleSheet({});
        widget.installEventFilter(this);
    }
    bool fit(const QString &wanted) const
    {
        const QStringList words = wanted.split(QLatin1Char(' '));
        bool fits = words.size() == 2 * m_colours.size() - 1;
        for (int i = 0; fits && i < m_colours.size(); ++i)
            fits = words[2 * i] == m_colours[i]
                && (i == 0 || isAbout(m_times[i] - m_times[i - 1], words[2 * i - 1].toInt()));
        return fits;
    }
    QString text() const { return m_colours.join(QLatin1Char(' ')); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        static const QHash<QString, QString> names = {{QStringLiteral("rgb(255,0,0)"), QStringLiteral("red")},
                                                      {QStringLiteral("rgb(91,215,97)"), QStringLiteral("green")},
                                                      {QStringLiteral("rgb(200,200,200)"), QStringLiteral("grey")},
                                                      {QStringLiteral("rgb(85,170,255)"), QStringLiteral("blue")}};
        if (event->type() == QEvent::StyleChange) {
            const QString style = static_cast<QWidget *>(watched)->styleSheet().remove(QLatin1Char(' '));
            m_colours.append(names.value(style.section(QLatin1Char(':'), 1).remove(QLatin1Char(';')), style));
            m_times.append(m_clock.isValid() ? m_clock.elapsed() : 0);
            if (!m_clock.isValid())
                m_clock.start();
        }
        return false;
    }

private:
    QElapsedTimer m_clock;
    QStringList m_colours;
    QList<qint64> m_times;
};

using Action = void (*)(std::unique_ptr<WindowFixture> &window);

} // namespace

Q_DECLARE_METATYPE(Action)

class TestTiming : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<WindowFixture> m_window;

private slots:
    void initTestCase() { m_window = std::make_unique<WindowFixture>(); }

    void commandsKeepTheirDistance_data()
    {
        QTest::addColumn<Action>("action");
        QTest::addColumn<QStringList>("commands");
        QTest::addColumn<QList<int>>("gaps");
        const auto row = [](const char *sentence, Action action, const QStringList &commands, const QList<int> &gaps) {
            QTest::newRow(sentence) << action << commands << gaps;
        };
        row("the start asks in turn",
            [](std::unique_ptr<WindowFixture> &window) {
                window.reset();
                window = std::make_unique<WindowFixture>();
            },
            {"get 3", "get 4", "get 1", "get 9", "get 10", "get 0"}, {50, 0, 120, 120, 120});
        row("memory errors are cleared in two steps",
            [](std::unique_ptr<WindowFixture> &window) {
                window->find<QPushButton>("pushButton_memu_faultstatus_clear")->click();
            },
            {"memu 2", "memu 3"}, {100});
        row("clocks are asked for before their monitors",
            [](std::unique_ptr<WindowFixture> &window) { window->find<QPushButton>("pushButton_CMU_update")->click(); },
            {"get 3", "get 4"}, {100});
        row("a configured interrupt is asked for",
            [](std::unique_ptr<WindowFixture> &window) {
                window->find<QPushButton>("pushButton_intcm_config")->click();
            },
            {"intcm IACK 0 0", "get 7"}, {200});
        row("the clocks' page asks twice",
            [](std::unique_ptr<WindowFixture> &window) {
                window->find<QTabWidget>("tabWidget_safety")->setCurrentIndex(9);
                window->find<QTabWidget>("tabWidget_safety")->setCurrentIndex(0);
            },
            {"get 3", "get 4"}, {50});
        row("the refresh after a restart comes late and asks twice",
            [](std::unique_ptr<WindowFixture> &window) {
                sendCommand(QStringLiteral("restart"));
                window->send(1, 5, "7F");
                QTest::qWait(700);
            },
            {"restart", "get 3", "get 4"}, {300, 20});
        row("a checksum is awaited in grey",
            [](std::unique_ptr<WindowFixture> &window) {
                sendCommand(QStringLiteral("press"));
                window->find<QPushButton>("pushButton_CRC_set")->click();
            },
            {"press", "crc 1 0 0"}, {300});
        row("a crossbar path blinks before its fault is injected",
            [](std::unique_ptr<WindowFixture> &window) {
                window->show(3, 1, "1F");
                sendCommand(QStringLiteral("press"));
                window->find<QPushButton>("pushButton_xbic_fault1")->click();
            },
            {"press", "inject 7 1"}, {6 * 150 + 2000});
        row("clock limits move before their fault is injected",
            [](std::unique_ptr<WindowFixture> &window) {
                sendCommand(QStringLiteral("press"));
                window->find<QPushButton>("pushButton_cmu_fault4")->click();
            },
            {"press", "inject 5 4"}, {8 * 150 + 6 * 150 + 1500});
        row("a lost clock is shown before its fault is injected",
            [](std::unique_ptr<WindowFixture> &window) {
                sendCommand(QStringLiteral("press"));
                window->find<QPushButton>("pushButton_cmu_fault3")->click();
            },
            {"press", "inject 5 3"}, {2200});
    }

    void commandsKeepTheirDistance()
    {
        QFETCH(Action, action);
        QFETCH(QStringList, commands);
        QFETCH(QList<int>, gaps);
        const Log log;
        action(m_window);
        QVERIFY2(log.fits(commands, gaps), qPrintable(log.text()));
    }

    void indicatorsBlink_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QByteArray>("indicator");
        QTest::addColumn<QString>("colours");
        const auto row = [](const char *sentence, const char *button, const char *indicator, const QString &colours) {
            QTest::newRow(sentence) << QByteArray(button) << QByteArray(indicator) << colours;
        };
        const auto times = [](int count, const QString &pair) {
            return QStringList(QVector<QString>(count, pair).toList()).join(QStringLiteral(" 150 "));
        };
        row("a slow clock", "pushButton_cmu_fault1", "label_MCCLK_fvalue", times(3, "grey 150 red"));
        row("a fast clock", "pushButton_cmu_fault2", "label_adcclk_fvalue", "red 100 green 100 red");
        row("a lost clock", "pushButton_cmu_fault3", "label_cmu_spiloss", "red 100 green 100 red");
        row("a limit that moves", "pushButton_cmu_fault4", "label_MCCLK_fmin", times(4, "blue 150 red"));
        row("the other limit", "pushButton_cmu_fault5", "label_MCCLK_fmax", times(4, "blue 150 red"));
        row("the clock between them", "pushButton_cmu_fault4", "label_MCCLK_fvalue", times(3, "green 150 red"));
        row("a master", "pushButton_xbic_fault1", "label_xbic0_k4core0", times(3, "green 150 red") + " 2000 green");
        row("a slave", "pushButton_xbic_fault1", "label_xbic0_PBRIDGE1", times(3, "green 150 red") + " 2000 green");
    }

    void indicatorsBlink()
    {
        QFETCH(QByteArray, button);
        QFETCH(QByteArray, indicator);
        QFETCH(QString, colours);
        m_window->show(3, 1, "1F");
        const Colours seen(*m_window->find<QLabel>(indicator));
        m_window->find<QPushButton>(button)->click();
        QVERIFY2(seen.fit(colours), qPrintable(seen.text()));
    }

    // NORMAL is shown 800 ms after the board has said so, whatever came meanwhile.
    void normalComesLate()
    {
        auto *state = m_window->find<QLabel>("label_FCCU_status");
        QElapsedTimer clock;
        clock.start();
        m_window->send(12, 1, "01");
        QVERIFY(m_window->show(12, 1, "03"));
        QCOMPARE(state->text(), QStringLiteral("FAULT"));
        QTRY_COMPARE(state->text(), QStringLiteral("NORMAL"));
        QVERIFY2(isAbout(clock.elapsed(), 800), qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(m_window->style("label_FCCU_status"), QStringLiteral("background-color: rgb(91,215,97)"));
        QCOMPARE(state->accessibleDescription(), QStringLiteral("Green: NORMAL"));
    }

    void theEngineIsIdleAfterAWhile()
    {
        auto *status = m_window->find<QLabel>("label_cse_status_all");
        QElapsedTimer clock;
        clock.start();
        QVERIFY(m_window->show(15, 1, "00"));
        QCOMPARE(status->text(), QStringLiteral("Processing"));
        QTRY_COMPARE(status->text(), QStringLiteral("IDLE"));
        QVERIFY2(isAbout(clock.elapsed(), 1200), qPrintable(QString::number(clock.elapsed())));
    }

    // Waits that begin at every one of the last milliseconds of a day, with a handler inside that takes its time: those to
    // beyond midnight end early, none the next day. Sleeping takes no time here, days pass at once.
    void waitsAroundMidnight()
    {
        m_window.reset();
        fakeclock::setSpeed(0);
        const auto slowDown = qScopeGuard([] { fakeclock::setSpeed(10); });
        for (int before = 25; before >= 1; --before) {
            const int toMidnight = QTime::currentTime().msecsTo(QTime(23, 59, 59, 999)) + 1;
            QThread::msleep(
                static_cast<unsigned long>(toMidnight < before ? toMidnight + 86400000 - before : toMidnight - before));
            QTimer slow; // of this round alone: a wait that ends at once runs no handler
            slow.setTimerType(Qt::PreciseTimer);
            slow.setSingleShot(true);
            connect(&slow, &QTimer::timeout, this, [] { QThread::msleep(30); });
            slow.start(5);
            QElapsedTimer waited;
            waited.start();
            delayMs(10);
            QVERIFY2(waited.elapsed() <= 50, qPrintable(QString::number(before)));
        }
    }
};

QTEST_MAIN(TestTiming)
#include "tst_timing.moc"
