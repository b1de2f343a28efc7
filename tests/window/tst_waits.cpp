// SPDX-License-Identifier: MIT
// Waits around midnight, where the time of day jumps back. Sleeping takes no time here, days pass at once.
#include "link/commandchannel.h"

#include <QElapsedTimer>
#include <QTest>
#include <QThread>
#include <QTime>
#include <QTimer>

class TestWaits : public QObject
{
    Q_OBJECT

private slots:
    // Waits that begin at every one of the last milliseconds of a day, with a handler inside that takes its time: those to
    // beyond midnight end early, none the next day.
    void midnight()
    {
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

QTEST_GUILESS_MAIN(TestWaits)
#include "tst_waits.moc"
