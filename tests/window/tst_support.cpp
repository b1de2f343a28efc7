// SPDX-License-Identifier: MIT
// The tools of the other tests work.
#include "support/cuttingproxy.h"

#include <QSerialPort>
#include <QTest>

class TestSupport : public QObject
{
    Q_OBJECT

private slots:
    void piecesReachTheProgramOneByOne_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("max");
        QTest::newRow("single bytes") << 1 << 1;
        QTest::newRow("a frame in halves") << 7 << 7;
        QTest::newRow("packets less their status bytes") << 62 << 62;
        QTest::newRow("packets") << 512 << 512;
        QTest::newRow("drawn lengths") << 0 << 64;
    }

    void piecesReachTheProgramOneByOne()
    {
        QFETCH(int, size);
        QFETCH(int, max);
        RawLine board;
        CuttingProxy proxy(board.tty());
        if (size > 0)
            proxy.setPieces(size);
        else
            proxy.setRandomPieces(1, max);
        QByteArray sent;
        for (int i = 0; i < 700; ++i)
            sent += static_cast<char>(i * i >> 2);
        QSerialPort program(proxy.tty());
        QVERIFY(program.open(QIODevice::ReadWrite));
        QByteArray received;
        QList<int> lengths, passed;
        connect(&program, &QSerialPort::readyRead, this, [&] {
            const QByteArray bytes = program.readAll();
            lengths.append(bytes.size());
            received += bytes;
        });
        connect(&proxy, &CuttingProxy::toProgram, this, [&](const QByteArray &piece) { passed.append(piece.size()); });
        board.write(sent);
        program.write(sent);
        QTRY_COMPARE(received.size(), sent.size());
        QTRY_COMPARE(board.received(), sent);
        QCOMPARE(received, sent);
        QCOMPARE(lengths, passed);
        passed.removeLast(); // the rest
        const auto [shortest, longest] = std::minmax_element(passed.begin(), passed.end());
        QVERIFY(*longest <= max && *longest > max - 8);
        QCOMPARE(*shortest == max, size > 0);
    }

    void aBoardThatHangsUpTakesTheProxyAlong()
    {
        RawLine board;
        CuttingProxy proxy(board.tty());
        QSerialPort program(proxy.tty());
        QVERIFY(program.open(QIODevice::ReadWrite));
        board.hangUp();
        QTRY_VERIFY(program.error() != QSerialPort::NoError);
    }
};

QTEST_GUILESS_MAIN(TestSupport)
#include "tst_support.moc"
