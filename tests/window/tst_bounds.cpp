// SPDX-License-Identifier: MIT
// A board that is broken, or restarts for ever, cannot flood the window.
#include "support/fixtures.h"

#include "app/messagebox.h"
#include "link/commandchannel.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QTimer>

#include <algorithm>
#include <memory>

namespace {

QByteArray frame(int module, int type, const QByteArray &payload)
{
    return QByteArray::fromHex("A5C30000") + char(module) + char(type) + char(payload.size() >> 8)
        + char(payload.size()) + payload + QByteArray::fromHex("0000D4B2");
}

QList<QMessageBox *> openBoxes()
{
    QList<QMessageBox *> boxes;
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (auto *box = qobject_cast<QMessageBox *>(window); box && box->isVisible())
            boxes.append(box);
    }
    return boxes;
}

} // namespace

class TestBounds : public QObject
{
    Q_OBJECT

private:
    void settle() { QTRY_VERIFY(m_bench->line().received().endsWith("get 0\r\n")); }

    std::unique_ptr<WindowFixture> m_bench = std::make_unique<WindowFixture>();

private slots:
    void initTestCase() { settle(); }

    // Ten clocks out of their limits while nobody answers: four boxes, and the last one counts the rest.
    void boxesAreFew()
    {
        BoxAnswerer nobody;
        nobody.leaveOpen();
        int sent = 0;
        int most = 0;
        QString counted;
        QElapsedTimer clock;
        clock.start();
        QTimer turn;
        connect(&turn, &QTimer::timeout, this, [&] {
            const auto boxes = openBoxes();
            most = std::max(most, boxes.size());
            for (const QMessageBox *box : boxes)
                counted = std::max(counted, box->informativeText());
            if (sent < 10)
                m_bench->line().write(frame(2, 1, char(sent++ << 4 | 1) + QByteArray::fromHex("5B5A46")));
            else if (!boxes.isEmpty() && (counted.endsWith(": 6") || clock.hasExpired(10000)))
                QApplication::activeModalWidget()->close();
        });
        turn.start(5);
        QTRY_COMPARE(counted, QStringLiteral("More messages meanwhile: 6"));
        QTRY_VERIFY(openBoxes().isEmpty());
        QCOMPARE(most, 4);
    }

    // Twelve restarts at once: eight refreshes inside each other, and one more when they have ended.
    void theLastRefreshIsNotDropped()
    {
        m_bench->line().clear();
        QByteArray notices;
        for (int i = 0; i < 12; ++i)
            notices += frame(1, 5, QByteArray::fromHex("7F"));
        m_bench->line().write(notices);
        QTRY_COMPARE_WITH_TIMEOUT(m_bench->line().received().count("get 4\r\n"), 9, 20000);
    }

    void onlyTheLatestMessagesAreKept()
    {
        const auto *document = m_bench->find<QTextEdit>("textBrowser_temp")->document();
        for (int number = 1; number <= 10100;) {
            QByteArray messages;
            do
                messages += frame(0, 0, QByteArray::number(number));
            while (number++ % 100 != 0);
            m_bench->line().write(messages);
            QTRY_COMPARE(document->lastBlock().text(), QString::number(number - 1));
        }
        QCOMPARE(document->blockCount(), 10000);
    }

    // Something else runs inside a wait and stays: the wait does not wake the program up meanwhile.
    void aWaitUnderABoxIsQuiet()
    {
        m_bench.reset(); // it looks for boxes every few milliseconds
        int wakings = 0;
        QTimer::singleShot(0, this, [&] {
            QEventLoop box;
            const auto counting = connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, this,
                                          [&] { ++wakings; });
            QTimer::singleShot(300, &box, &QEventLoop::quit);
            box.exec();
            disconnect(counting);
        });
        delayMs(20);
        QVERIFY2(wakings < 15, qPrintable(QString::number(wakings)));
    }
};

QTEST_MAIN(TestBounds)
#include "tst_bounds.moc"
