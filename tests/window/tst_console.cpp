// SPDX-License-Identifier: MIT
// The console: messages cut out of the stream, printed as a terminal prints them, keys sent, the line handed back.
#include "app/mainwindow.h"
#include "console/consoleform.h"
#include "console/textframes.h"
#include "link/serialline.h"
#include "link/serialports.h"
#include "protocol/frame.h"
#include "support/boxanswerer.h"
#include "support/rawline.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QTimer>

using protocol::ModuleId;

namespace {

using Stream = QVector<QByteArray>; // a frame each

// Fills up the last read: fewer than 13 bytes would wait.
const QByteArray kClosing(16, '\0');

QByteArray textFrame(const QByteArray &text)
{
    return protocol::encodeFrame(ModuleId::Text, 0, text);
}

// A frame that announces more than it holds.
QByteArray longFrame(ModuleId module, int announced)
{
    QByteArray frame = protocol::encodeFrame(module, 1, "cut");
    frame[6] = static_cast<char>(announced >> 8);
    frame[7] = static_cast<char>(announced);
    return frame;
}

// Reads of the stream that end at the cuts, and then the closing.
QStringList inReads(const QByteArray &stream, const QVector<int> &cuts)
{
    TextFrames frames;
    QStringList texts;
    int from = 0;
    for (const int cut : cuts + QVector<int>{stream.size()}) {
        texts += frames.take(stream.mid(from, cut - from));
        from = cut;
    }
    return texts + frames.take(kClosing);
}

QStringList textsOf(const Stream &frames)
{
    QStringList texts;
    for (const QByteArray &frame : frames) {
        if (frame[4] == '\0')
            texts +=
                QString::fromLatin1(frame.constData() + protocol::kHeaderSize, frame.size() - protocol::kFrameOverhead);
    }
    return texts;
}

QByteArray joined(const Stream &frames)
{
    QByteArray stream;
    for (const QByteArray &frame : frames)
        stream += frame;
    return stream;
}

} // namespace

class TestConsole : public QObject
{
    Q_OBJECT

private:
    // A console without a line, and its box.
    std::unique_ptr<consoleForm> m_console;
    QTextEdit *m_box = nullptr;

    void print(const QStringList &messages) { m_console->consolePrint(messages, messages.size()); }
    QPair<int, int> place() const { return {m_box->textCursor().blockNumber(), m_box->textCursor().positionInBlock()}; }
    QTextCharFormat formatOf(const QString &word) const { return m_box->document()->find(word).charFormat(); }

private slots:
    void init()
    {
        gPortName.clear();
        setAvailablePortNames([] { return QStringList(); });
        m_console = std::make_unique<consoleForm>();
        m_box = m_console->findChild<QTextEdit *>(QStringLiteral("textEdit"));
    }

    void cleanup()
    {
        m_console.reset();
        closeLine(*gSerialPort);
    }

    void messagesArePrinted_data()
    {
        QTest::addColumn<QStringList>("messages");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("column");
        const auto row = [](const char *name, const QStringList &messages, const char *text, int line, int column) {
            QTest::newRow(name) << messages << QString(text) << line << column;
        };
        const QString up = "\r\x1B[A", down = "\r\x1B[1B", left2 = "\r\x1B[2D", erase = "\r\x1B[K";
        row("plain text", {"abc", "def"}, "abcdef", 0, 6);
        row("lines", {"abc\r\ndef\nghi"}, "abc\ndef\nghi", 2, 3);
        row("a line end cut in two", {"abc\r", "\ndef"}, "abc\ndef", 1, 3);
        row("left", {"abc", left2}, "abc", 0, 1);
        row("text at the moved cursor", {"abc", left2, "X"}, "aXbc", 0, 2);
        row("left stops at the line's start", {"abc\nde", "\r\x1B[9D"}, "abc\nde", 1, 0);
        row("right", {"abc", "\r\x1B[3D", "\r\x1B[2C"}, "abc", 0, 2);
        row("right stops at the line's end", {"abc\nde", up, "\r\x1B[7C"}, "abc\nde", 0, 3);
        row("up keeps the column", {"abc\nde", up}, "abc\nde", 0, 2);
        row("up, then text", {"abcd\nef", up, "X"}, "abXcd\nef", 0, 3);
        row("up over a shorter line", {"abcd\ne\nfgh", up, up}, "abcd\ne\nfgh", 0, 3);
        row("up stops at the first line", {"abc\nde", "\r\x1B[5A"}, "abc\nde", 0, 2);
        row("down keeps the column", {"abc\ndefg", up, "\r\x1B[1D", down}, "abc\ndefg", 1, 2);
        row("down stops at the last line", {"abc\nde", "\r\x1B[9B"}, "abc\nde", 1, 2);
        row("a line end goes to the next line", {"abc\nde\nfg", "\r\x1B[2A", "\r\nX"}, "abc\nXe\nfg", 1, 1);
        row("a line end within the last line", {"abc", left2, "\r\nde"}, "abc\nde", 1, 2);
        row("backspace and blank erase", {"abc\b \b"}, "ab ", 0, 2);
        row("one message each", {"abc", "\b", " ", "\b", "d"}, "abd", 0, 3);
        row("backspace away from the end", {"abcd", left2, "\b", "X"}, "aXcd", 0, 2);
        row("backspace at the line's start", {"abc\n\b\bd"}, "abc\nd", 1, 1);
        row("a lone return", {"10 %\r20"}, "20 %", 0, 2);
        row("a lone return away from the end", {"abcd", left2, "\rX"}, "Xbcd", 0, 1);
        row("erased line", {"abc\ndef", erase}, "abc\n", 1, 0);
        row("erased from within", {"abc\ndef", left2, erase, "g"}, "abc\ng", 1, 1);
        row("erased line above", {"abc\ndef", up, erase}, "\ndef", 0, 0);
        row("erased to the end", {"abc\ndef", up, left2, "\r\x1B[J"}, "a", 0, 1);
        row("erased to the start", {"abc\ndef", left2, "\r\x1B[1J"}, "ef", 0, 0);
        row("erased all", {"abc\ndef", "\r\x1B[2J", "g"}, "g", 0, 1);
        row("no final letter", {"abc", "\r\x1B[12"}, "abc", 0, 3);
        row("unknown letter", {"abc", "\r\x1B[5h"}, "abc", 0, 3);
        row("text behind a sequence", {"abc", "\r\x1B[1Dx"}, "abxc", 0, 3);
        row("a sequence without its return is text", {"\x1B[K"}, "\x1B[K", 0, 3);
    }

    void messagesArePrinted()
    {
        QFETCH(QStringList, messages);
        print(messages);
        QTEST(m_box->toPlainText(), "text");
        QTEST(place().first, "line");
        QTEST(place().second, "column");
        m_box->clear();
    }

    // One by one or in one call: the same.
    void sequencesOfOneCall()
    {
        print({"abcd\nef"});
        print({"\r\x1B[A"});
        print({"\r\x1B[1D"});
        print({"X"});
        QCOMPARE(m_box->toPlainText(), QStringLiteral("aXbcd\nef"));
        m_console->consolePrint({"1", "2", "3"}, 2);
        QCOMPARE(m_box->toPlainText(), QStringLiteral("aX12bcd\nef"));
    }

    void aWrappedLineIsErasedAlone()
    {
        m_console->show();
        print({"first\n" + QString(300, 'a') + QStringLiteral(" ") + QString(40, 'b'), "\r\x1B[K"});
        const QTextBlock line = m_box->document()->lastBlock();
        QVERIFY2(line.text().startsWith(QString(100, 'a')) && !line.text().contains('b'), qPrintable(line.text()));
        QCOMPARE(m_box->textCursor().position(), line.position() + line.length() - 1);
    }

    void colours_data()
    {
        QTest::addColumn<QString>("parameters");
        QTest::addColumn<QColor>("text");
        QTest::addColumn<QColor>("background");
        const QColor own;
        QTest::newRow("red") << "31" << QColor("#CD3131") << own;
        QTest::newRow("bright red") << "91" << QColor("#F14C4C") << own;
        QTest::newRow("green on blue") << "32;44" << QColor("#0DBC79") << QColor("#2472C8");
        QTest::newRow("white on bright black") << "97;100" << QColor("#FFFFFF") << QColor("#767676");
        QTest::newRow("own text") << "31;41;39" << own << QColor("#CD3131");
        QTest::newRow("own background") << "31;41;49" << QColor("#CD3131") << own;
        QTest::newRow("reset") << "31;41;0" << own << own;
        QTest::newRow("reset without a number") << "31;41;" << own << own;
        QTest::newRow("numbered red") << "38;5;9" << QColor("#F14C4C") << own;
        QTest::newRow("number that would be a code") << "38;5;31" << QColor("#0087AF") << own;
        QTest::newRow("number 0") << "41;38;5;0" << QColor("#000000") << QColor("#CD3131");
        QTest::newRow("first of the cube") << "38;5;16" << QColor("#000000") << own;
        QTest::newRow("last of the cube") << "38;5;231" << QColor("#FFFFFF") << own;
        QTest::newRow("greys") << "38;5;232;48;5;255" << QColor("#080808") << QColor("#EEEEEE");
        QTest::newRow("red, green, blue") << "48;2;1;31;255;32" << QColor("#0DBC79") << QColor("#011FFF");
        QTest::newRow("number beyond") << "38;5;256" << own << own;
        QTest::newRow("cut short") << "31;38" << QColor("#CD3131") << own;
        QTest::newRow("unknown") << "7;31;73" << QColor("#CD3131") << own;
    }

    void colours()
    {
        QFETCH(QString, parameters);
        print({"\r\x1B[" + parameters + "m", "word"});
        const auto colourOf = [](const QBrush &brush) {
            return brush.style() == Qt::NoBrush ? QColor() : brush.color();
        };
        QTEST(colourOf(formatOf("word").foreground()), "text");
        QTEST(colourOf(formatOf("word").background()), "background");
    }

    void boldUntilReset()
    {
        print({"\r\x1B[1m", "bold", "\r\x1B[22m", "plain"});
        QCOMPARE(formatOf("bold").fontWeight(), int(QFont::Bold));
        QCOMPARE(formatOf("plain").fontWeight(), int(QFont::Normal));
    }

    // Where the user clicks, what is selected and where the view stands is the user's business.
    void theUserReadsOn()
    {
        m_console->show();
        for (int i = 0; i < 200; ++i)
            print({QStringLiteral("line %1\n").arg(i)});
        QScrollBar *bar = m_box->verticalScrollBar();
        QCOMPARE(bar->value(), bar->maximum());

        m_box->moveCursor(QTextCursor::Start);
        bar->setValue(0);
        print({"a\n"});
        QVERIFY(m_box->toPlainText().endsWith("line 199\na\n"));
        QCOMPARE(bar->value(), 0);
        QCOMPARE(m_box->textCursor().position(), m_box->document()->characterCount() - 1);

        QTextCursor selection = m_box->document()->find(QStringLiteral("line 7"));
        m_box->setTextCursor(selection);
        print({"b\n"});
        QCOMPARE(m_box->textCursor().selectedText(), QStringLiteral("line 7"));
        QTest::keyClick(m_box, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("line 7"));
    }

    void keysAreSent_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QByteArray>("bytes");
        const auto row = [](const char *name, int key, const QByteArray &bytes, int modifiers = Qt::NoModifier) {
            QTest::newRow(name) << key << modifiers << bytes;
        };
        row("up", Qt::Key_Up, "\x1B[A");
        row("down", Qt::Key_Down, "\x1B[B");
        row("right", Qt::Key_Right, "\x1B[C");
        row("left", Qt::Key_Left, "\x1B[D");
        row("return", Qt::Key_Return, "\r\n");
        row("letter", Qt::Key_Z, "z");
        row("digit", Qt::Key_9, "9");
        row("letter with Alt", Qt::Key_Z, "", Qt::AltModifier);
        row("blank", Qt::Key_Space, " ");
        row("backspace", Qt::Key_Backspace, "\b");
        row("tab", Qt::Key_Tab, "\t");
        row("paste", Qt::Key_V, "get 1\xE9", Qt::ControlModifier);
        row("copy", Qt::Key_C, "", Qt::ControlModifier);
        row("function key", Qt::Key_F5, "");
    }

    void keysAreSent()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QByteArray, bytes);
        RawLine line;
        gPortName = line.tty();
        setAvailablePortNames([&] { return QStringList{line.tty()}; });
        m_console->serialPort_control();
        QApplication::clipboard()->setText(QString::fromLatin1("get 1\xE9"));
        QTest::keyClick(m_box, static_cast<Qt::Key>(key), static_cast<Qt::KeyboardModifiers>(modifiers));
        m_console->writeData("."); // behind all that the key sends
        QTRY_COMPARE(line.received(), bytes + '.');
        m_console.reset(); // before its line
    }

    // Partitions: every one of a short stream, three cuts anywhere of a longer one. Random ones are a fuzz target's.
    void everyPartitionGivesTheSame()
    {
        const QByteArray four = textFrame("four");
        for (int mask = 0; mask < 1 << (four.size() - 1); ++mask) {
            QVector<int> cuts;
            for (int at = 1; at < four.size(); ++at) {
                if (mask >> (at - 1) & 1)
                    cuts.append(at);
            }
            QCOMPARE(inReads(four, cuts), QStringList("four"));
        }
        const Stream frames = {textFrame("\xA5\xC3"), protocol::encodeFrame(ModuleId::Cmu, 1, "\xA5\xC3zz"),
                               textFrame("end")};
        const QByteArray stream = joined(frames);
        for (int a = 1; a < stream.size(); ++a) {
            for (int b = a; b < stream.size(); ++b) {
                for (int c = b; c < stream.size(); ++c)
                    QCOMPARE(inReads(stream, {a, b, c}), textsOf(frames));
            }
        }
    }

    // A message is shown with the read that completes it, whatever an earlier frame announces.
    void messagesComeAtOnce_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("nothing") << QByteArray() << QStringList();
        QTest::newRow("another module") << protocol::encodeFrame(ModuleId::Cmu, 1, "1") << QStringList();
        QTest::newRow("a text") << textFrame("1") << QStringList("1");
        QTest::newRow("an announced text") << longFrame(ModuleId::Text, 65535) << QStringList();
        QTest::newRow("an announced report") << longFrame(ModuleId::Cmu, 65535) << QStringList();
        QTest::newRow("both") << longFrame(ModuleId::Cmu, 65535) + longFrame(ModuleId::Text, 65535) << QStringList();
        QTest::newRow("a length into the next frame") << longFrame(ModuleId::Text, 9) << QStringList();
        QTest::newRow("a start without an end") << QByteArray("\xA5\xC3") << QStringList();
        QTest::newRow("half a report") << protocol::encodeFrame(ModuleId::Cmu, 1, "1234567").left(10) << QStringList();
        QTest::newRow("a broken end") << textFrame("1").replace("\xB2", "B") << QStringList();
        QTest::newRow("a text in a report")
            << protocol::encodeFrame(ModuleId::Cmu, 1, textFrame("in")) << QStringList("in");
    }

    void messagesComeAtOnce()
    {
        QFETCH(QByteArray, before);
        QFETCH(QStringList, texts);
        const QByteArray stream = before + textFrame("now!");
        TextFrames whole;
        QCOMPARE(whole.take(stream), texts + QStringList("now!"));
        TextFrames frames;
        QStringList taken;
        for (int i = 0; i < stream.size(); ++i) {
            QVERIFY(!taken.contains("now!"));
            taken += frames.take(stream.mid(i, 1));
        }
        QCOMPARE(taken, texts + QStringList("now!"));
        QCOMPARE(frames.take(textFrame("next")), QStringList("next"));
    }

    void fewBytesWait()
    {
        TextFrames frames;
        QCOMPARE(frames.take(textFrame("")), QStringList());
        QCOMPARE(frames.take("\xA5"), QStringList(""));
        QCOMPARE(frames.take(textFrame("a").mid(1)), QStringList("a"));
    }

    // The board is plugged in after the start; the console opens its port and hands it to the window.
    void theWindowHearsALineThatTheConsoleOpened()
    {
        m_console.reset();
        RawLine line;
        const QTemporaryDir folder;
        const QString board = folder.filePath(QStringLiteral("board"));
        setAvailablePortNames([board] { return QStringList{board}; });
        BoxAnswerer answers;
        MainWindow window;
        QVERIFY(answers.seen().value(0).startsWith("Warning|Serialport can not open, please check."));
        QVERIFY(!gSerialPort->isOpen());
        QVERIFY(QFile::link(line.tty(), board));

        QTimer::singleShot(0, &window, [] {
            for (QWidget *widget : QApplication::topLevelWidgets()) {
                if (auto *console = qobject_cast<consoleForm *>(widget))
                    console->close();
            }
        });
        window.console_mode();
        QVERIFY(gSerialPort->isOpen());
        line.write(protocol::encodeFrame(ModuleId::Sys, 1, QByteArray(1, '\4')));
        auto *mode = window.findChild<QLineEdit *>(QStringLiteral("lineEdit_sysworkmode"));
        QTRY_COMPARE(mode->text(), QStringLiteral("RUN0"));
    }
};

QTEST_MAIN(TestConsole)
#include "tst_console.moc"
