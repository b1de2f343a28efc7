// SPDX-License-Identifier: MIT
// Waits over time that does not go its even way. The clock is support/fakeclock.cpp's: sleeping moves it on at once.
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
            QTimer::singleShot(5, Qt::PreciseTimer, [] { QThread::msleep(30); });
            QElapsedTimer waited;
            waited.start();
            delayMs(10);
            QVERIFY2(waited.elapsed() <= 50, qPrintable(QString::number(before)));
        }
    }
};

int main(int count, char **arguments)
{
    qputenv("QT_NO_GLIB", "1"); // the plain event loop: it waits by the call that the swift clock replaces
    QCoreApplication application(count, arguments);
    TestWaits tests;
    return QTest::qExec(&tests, count, arguments);
}
#include "tst_waits.moc"
