#include "simulator/virtualboard.h"

VirtualBoard::VirtualBoard(const Options &options, QObject *parent)
    : QObject(parent), m_board(options.seed), m_line(options.seed), m_shell(m_board)
{
    m_line.setPaced(options.paced);
    connect(&m_board, &Board::output, &m_line, &PtyLine::send);
    connect(&m_line, &PtyLine::received, this, [this](const QByteArray &bytes) { m_shell.take(bytes); });
    if (options.powerCycleAfterMs > 0) {
        connect(&m_board, &Board::heldInReset, &m_board,
                [this, ms = options.powerCycleAfterMs] { QTimer::singleShot(ms, &m_board, &Board::powerCycle); });
    }
}
