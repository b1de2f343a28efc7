// SPDX-License-Identifier: MIT
// A cable whose driver hands bytes over in pieces of its own choice, as USB converters do: wherever a frame is cut.
#pragma once

#include "support/rawline.h"

#include <QTimer>

#include <functional>
#include <memory>
#include <random>

class QSocketNotifier;

class CuttingProxy : public QObject
{
    Q_OBJECT

public:
    /// Opens the board's terminal line; the program opens tty(). Until told otherwise, passes on bytes as they come.
    explicit CuttingProxy(const QString &board);
    ~CuttingProxy() override;

    QString tty() const { return m_line.tty(); }
    /// From now on, both ways, pieces of exactly `size` bytes; a shorter rest leaves when the sender pauses.
    void setPieces(int size);
    /// Pieces of 1 to `max` bytes; the same seed gives the same lengths.
    void setRandomPieces(quint32 seed, int max);

signals:
    /// The next piece for the program. The program reads each before the next one leaves.
    void toProgram(const QByteArray &piece);
    void toBoard(const QByteArray &piece);

private:
    struct Way {
        QByteArray waiting;
        std::mt19937 random;
        int size = 0;   // of the next piece
        QTimer forward; // runs while bytes wait
        QTimer pause;   // runs out when the sender pauses
    };

    void add(Way &way, const QByteArray &bytes);
    QByteArray nextPiece(Way &way);
    void readBoard();
    void forwardToProgram();
    void forwardToBoard();
    void hangUp();

    RawLine m_line;
    int m_board = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::function<int(std::mt19937 &)> m_pieceSize; // empty: nothing is cut
    Way m_toProgram, m_toBoard;
};
