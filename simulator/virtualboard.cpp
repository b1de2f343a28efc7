#include "simulator/virtualboard.h"

VirtualBoard::VirtualBoard(const Options &options, QObject *parent)
    : QObject(parent), m_board(options.seed), m_line(options.seed)
{
    m_line.setPaced(options.paced);
    connect(&m_board, &Board::output, &m_line, &PtyLine::send);
    connect(&m_line, &PtyLine::received, this, &VirtualBoard::take);
    if (options.powerCycleAfterMs > 0) {
        connect(&m_board, &Board::heldInReset, &m_board,
                [this, ms = options.powerCycleAfterMs] { QTimer::singleShot(ms, &m_board, &Board::powerCycle); });
    }
}

void VirtualBoard::take(const QByteArray &bytes)
{
    const int dropped = m_commands.dropped();
    const QStringList lines = m_commands.take(bytes);
    for (const QString &line : lines)
        m_board.execute(line);
    if (m_commands.dropped() > dropped)
        m_board.say(QStringLiteral("line too long, dropped"));
}
