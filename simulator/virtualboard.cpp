// SPDX-License-Identifier: MIT
#include "simulator/virtualboard.h"

namespace simulator {

VirtualBoard::VirtualBoard(const Options &options, QObject *parent)
    : QObject(parent),
      m_board(options.seed),
      m_cable(options.seed),
      m_link(options.link),
      m_shell(m_board),
      m_tty(m_link.pointTo(m_line.tty()))
{
    m_line.setPaced(options.paced);
    m_line.setPacketSize(options.packetSize);
    for (const QString &name : options.defects)
        m_board.addDefect(name);
    joinBoardAndLine();
    joinCableAndLine();
    m_cable.setFaults(options.cable);
    if (options.powerCycleAfterMs > 0) {
        connect(&m_board, &Board::heldInReset, &m_board,
                [this, ms = options.powerCycleAfterMs] { QTimer::singleShot(ms, &m_board, &Board::powerCycle); });
    }
}

void VirtualBoard::joinBoardAndLine()
{
    connect(&m_board, &Board::output, &m_cable, &BadCable::sendToProgram);
    connect(&m_cable, &BadCable::reachedProgram, &m_line, &PtyLine::send);
    connect(&m_line, &PtyLine::received, &m_cable, &BadCable::sendToBoard);
    connect(&m_cable, &BadCable::reachedBoard, this, [this](const QByteArray &bytes) { m_shell.take(bytes); });
}

void VirtualBoard::joinCableAndLine()
{
    connect(&m_cable, &BadCable::pulledOut, this, [this] {
        m_link.remove();
        m_line.hangUp();
    });
    connect(&m_cable, &BadCable::pluggedIn, this, [this] {
        m_line.plugIn();
        m_tty = m_link.pointTo(m_line.tty());
        emit pluggedIn();
    });
}

} // namespace simulator
