// A board on its line: the two joined.
#pragma once

#include "simulator/board.h"
#include "simulator/commandline.h"
#include "simulator/ptyline.h"

class VirtualBoard : public QObject
{
    Q_OBJECT

public:
    struct Options {
        quint32 seed = 1;
        bool paced = true;
        int powerCycleAfterMs = 0; // 0: a board held in reset waits for powerCycle()
    };

    explicit VirtualBoard(const Options &options, QObject *parent = nullptr);
    VirtualBoard() : VirtualBoard(Options()) {}

    /// Path of the terminal to open; empty where the system gives none.
    QString tty() const { return m_line.tty(); }
    Board &board() { return m_board; }
    PtyLine &line() { return m_line; }

private:
    void take(const QByteArray &bytes);

    Board m_board;
    PtyLine m_line;
    CommandLine m_commands;
};
