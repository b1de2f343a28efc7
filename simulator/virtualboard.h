// A board on its line: the two joined.
#pragma once

#include "simulator/board.h"
#include "simulator/ptyline.h"
#include "simulator/shell.h"

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
    Board m_board;
    PtyLine m_line;
    Shell m_shell;
};
