// SPDX-License-Identifier: MIT
// The bad cable: how much it harms, that it harms nothing else, and that a seed repeats it.
#include "simulator/badcable.h"

#include <QTest>

#include <bit>
#include <cmath>

using namespace simulator;

namespace {

struct Ends {
    explicit Ends(const CableFaults &faults, quint32 seed = 1) : cable(seed)
    {
        QObject::connect(&cable, &BadCable::reachedProgram, &cable,
                         [this](const QByteArray &bytes) { program += bytes; });
        QObject::connect(&cable, &BadCable::reachedBoard, &cable, [this](const QByteArray &bytes) { board += bytes; });
        cable.setFaults(faults);
    }
    QByteArray program, board;
    BadCable cable;
};

int flippedBits(const QByteArray &bytes)
{
    int count = 0;
    for (const char byte : bytes)
        count += std::popcount(static_cast<quint8>(byte));
    return count;
}

// Within five standard deviations of the expectation.
bool isLikely(int count, int trials, double probability)
{
    return std::abs(count - trials * probability) <= 5 * std::sqrt(trials * probability * (1 - probability));
}

} // namespace

class TestCable : public QObject
{
    Q_OBJECT

private slots:
    void harmIsAsMuchAsAskedFor()
    {
        constexpr int size = 200000;
        const QByteArray zeros(size, '\0');
        Ends noise({.noise = 0.01}), drop({.drop = 0.05}), duplicate({.duplicate = 0.05}), all({.drop = 1});
        for (Ends *ends : {&noise, &drop, &duplicate, &all}) {
            ends->cable.sendToProgram(zeros);
            ends->cable.sendToBoard(zeros);
        }
        QCOMPARE(noise.program.size(), size);
        QVERIFY(isLikely(flippedBits(noise.program), size * 8, 0.01));
        QVERIFY(isLikely(flippedBits(noise.board), size * 8, 0.01));
        QVERIFY(isLikely(size - drop.program.size(), size, 0.05));
        QVERIFY(isLikely(duplicate.program.size() - size, size, 0.05));
        QCOMPARE(flippedBits(drop.program) + flippedBits(duplicate.program), 0);
        QCOMPARE(all.program + all.board, QByteArray());
    }

    void aSeedRepeatsIt()
    {
        const CableFaults faults = {.noise = 0.01, .drop = 0.02, .duplicate = 0.03};
        const QByteArray text("all of this gets through somehow, more or less, one way or the other");
        Ends first(faults, 7), second(faults, 7), other(faults, 8);
        first.cable.sendToBoard(text); // the other way has a chance of its own
        for (Ends *ends : {&first, &second, &other})
            ends->cable.sendToProgram(text);
        QCOMPARE(first.program, second.program);
        QVERIFY(first.program != other.program && first.program != first.board && first.program != text);
    }
};

QTEST_GUILESS_MAIN(TestCable)
#include "tst_cable.moc"
