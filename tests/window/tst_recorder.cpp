// SPDX-License-Identifier: MIT
// The window's flight recorder: saved by Ctrl+S, marked by Ctrl+M, never written unasked.
#include "link/commandchannel.h"
#include "protocol/frame.h"
#include "session/notes.h"
#include "session/pcapng.h"
#include "support/boxanswerer.h"
#include "support/fixtures.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

class TestRecorder : public QObject
{
    Q_OBJECT

private slots:
    void savesWhatPassedTheLine();
    void fullDiskIsSaid();

private:
    // Presses `key` in the window, or `button` in the lamp's panel, and types `text` into the dialog that opens.
    template <class Dialog> void answer(Qt::Key key, const QString &text);
    template <class Dialog> void answerPanel(const char *button, const QString &text);
    template <class Dialog> void type(const QString &text);

    WindowFixture m_bench;
};

template <class Dialog> void TestRecorder::answer(Qt::Key key, const QString &text)
{
    m_bench.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&m_bench.window()));
    QTest::keyClick(&m_bench.window(), key, Qt::ControlModifier);
    type<Dialog>(text);
}

template <class Dialog> void TestRecorder::answerPanel(const char *button, const QString &text)
{
    m_bench.find<QToolButton>("toolButton_line")->click();
    auto *entry = m_bench.find<QPushButton>(button);
    QTRY_VERIFY(entry->isVisible());
    QTest::mouseClick(entry, Qt::LeftButton);
    QVERIFY(!entry->isVisible());
    type<Dialog>(text);
}

template <class Dialog> void TestRecorder::type(const QString &text)
{
    QTRY_VERIFY(m_bench.window().findChild<Dialog *>());
    auto *dialog = m_bench.window().findChild<Dialog *>();
    auto *field = dialog->template findChild<QLineEdit *>();
    field->setText(text);
    QTest::keyClick(field, Qt::Key_Return);
    QTRY_VERIFY(!m_bench.window().findChild<Dialog *>());
}

void TestRecorder::savesWhatPassedTheLine()
{
    QTRY_VERIFY(m_bench.line().received().endsWith("get 0\r\n"));
    const QByteArray version =
        protocol::encodeFrame(protocol::ModuleId::Sys, 4, QByteArray::fromHex("40200000 07e4 0c 1f"));
    m_bench.line().write(version);
    QTRY_VERIFY(m_bench.text("lineEdit_firewareVision").contains(QLatin1String("2.50")));
    answer<QInputDialog>(Qt::Key_M, QStringLiteral("first fault"));
    answerPanel<QInputDialog>("lineMark", QStringLiteral("by the panel"));
    sendCommand(QStringLiteral("inject 7 1"));
    QTRY_VERIFY(m_bench.line().received().endsWith("inject 7 1\r\n"));

    QTemporaryDir folder;
    answer<QFileDialog>(Qt::Key_S, folder.filePath(QStringLiteral("saved")));
    QFile file(folder.filePath(QStringLiteral("saved.pcapng")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    session::Reader reader(file);
    QByteArray sent, received;
    QStringList notes;
    for (session::PacketView view; reader.next(view);) {
        const session::Packet packet = view.copied();
        (packet.direction == session::Direction::Sent ? sent : received).append(packet.bytes);
        notes += packet.comments;
    }
    QCOMPARE(reader.trouble(), QString());
    QCOMPARE(sent, m_bench.line().received());
    QCOMPARE(received, version);
    QCOMPARE(reader.ports(), QStringList(m_bench.line().tty()));
    QCOMPARE(notes,
             (QStringList{QStringLiteral("opened ") + m_bench.line().tty(), "firmware 2.50 of 2020/12/31",
                          "mark: first fault", "mark: by the panel"}));
    QCOMPARE(reader.comments(), QStringList("firmware 2.50 of 2020/12/31"));
}

void TestRecorder::fullDiskIsSaid()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("full.pcapng"));
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), path));
    BoxAnswerer boxes; // also asked whether to replace the file
    answerPanel<QFileDialog>("lineSave", path);
    QTRY_COMPARE(boxes.seen().size(), 2);
    QCOMPARE(boxes.seen().last(),
             QStringLiteral("Warning|The recording was not saved.\n%1: No space left on device").arg(path));
    QVERIFY2(QFileInfo(path).isSymLink(), "a device is not replaced");
}

QTEST_MAIN(TestRecorder)
#include "tst_recorder.moc"
