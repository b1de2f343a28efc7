// SPDX-License-Identifier: MIT
// A board, its serial line, and the cable between them.
#pragma once

#include "simulator/badcable.h"
#include "simulator/board.h"
#include "simulator/ptyline.h"
#include "simulator/shell.h"
#include "simulator/terminallink.h"

namespace simulator {

class VirtualBoard : public QObject
{
    Q_OBJECT

public:
    struct Options {
        quint32 seed = 1;
        bool paced = true;
        int packetSize = PtyLine::kPacketSize; // bytes
        int powerCycleAfterMs = 0;             // 0: a board held in reset waits for powerCycle()
        CableFaults cable;
        QString link;        // path of a symbolic link to the terminal; empty: none
        QStringList defects; // names of defects of the board
    };

    explicit VirtualBoard(const Options &options, QObject *parent = nullptr);
    VirtualBoard() : VirtualBoard(Options()) {}

    /// Path to open, the link's where there is one; empty where there is no terminal or no link to be had.
    QString tty() const { return m_tty; }
    Board &board() { return m_board; }
    PtyLine &line() { return m_line; }
    BadCable &cable() { return m_cable; }

signals:
    /// The cable has been plugged in again: tty() is the terminal from now on.
    void pluggedIn();

private:
    void joinBoardAndLine();
    void joinCableAndLine();

    Board m_board;
    PtyLine m_line;
    BadCable m_cable;
    TerminalLink m_link;
    Shell m_shell;
    QString m_tty;
};

} // namespace simulator
