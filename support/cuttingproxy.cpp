// SPDX-License-Identifier: MIT
#include "support/cuttingproxy.h"

#include <QSocketNotifier>

#include <algorithm>
#include <utility>

#include <errno.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kPauseMs = 2;
constexpr int kRetryMs = 1;

} // namespace

CuttingProxy::CuttingProxy(const QString &board)
    : m_board(open(board.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
{
    if (m_board < 0)
        qFatal("cannot open the board's line %s", qPrintable(board));
    m_notifier = std::make_unique<QSocketNotifier>(m_board, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &CuttingProxy::readBoard);
    connect(&m_line, &RawLine::arrived, this, [this](const QByteArray &bytes) { add(m_toBoard, bytes); });
    connect(&m_toProgram.forward, &QTimer::timeout, this, &CuttingProxy::forwardToProgram);
    connect(&m_toBoard.forward, &QTimer::timeout, this, &CuttingProxy::forwardToBoard);
    for (Way *way : {&m_toProgram, &m_toBoard}) {
        way->pause.setSingleShot(true);
        way->pause.setTimerType(Qt::PreciseTimer);
        way->forward.setTimerType(Qt::PreciseTimer);
    }
}

CuttingProxy::~CuttingProxy()
{
    hangUp();
}

void CuttingProxy::setPieces(int size)
{
    m_pieceSize = [size](std::mt19937 &) { return size; };
}

void CuttingProxy::setRandomPieces(quint32 seed, int max)
{
    m_toProgram.random.seed(seed);
    m_toBoard.random.seed(seed);
    m_pieceSize = [max](std::mt19937 &random) { return 1 + static_cast<int>(random() % static_cast<unsigned>(max)); };
}

void CuttingProxy::add(Way &way, const QByteArray &bytes)
{
    way.waiting += bytes;
    way.pause.start(kPauseMs);
    if (!way.forward.isActive())
        way.forward.start(0);
}

// Empty while a whole piece may still come together.
QByteArray CuttingProxy::nextPiece(Way &way)
{
    if (way.size == 0)
        way.size = m_pieceSize ? m_pieceSize(way.random) : way.waiting.size();
    if (way.waiting.size() < way.size && way.pause.isActive())
        return {};
    QByteArray piece = way.waiting.left(std::exchange(way.size, 0));
    way.waiting.remove(0, piece.size());
    if (way.waiting.isEmpty())
        way.forward.stop();
    return piece;
}

void CuttingProxy::readBoard()
{
    char buffer[4096];
    ssize_t count = 0;
    while ((count = ::read(m_board, buffer, sizeof buffer)) > 0)
        add(m_toProgram, QByteArray(buffer, static_cast<int>(count)));
    if (count == 0 || errno != EAGAIN)
        hangUp();
}

void CuttingProxy::forwardToProgram()
{
    if (!m_line.isTaken())
        return m_toProgram.forward.start(kRetryMs);
    m_toProgram.forward.start(0);
    const QByteArray piece = nextPiece(m_toProgram);
    if (piece.isEmpty())
        return;
    m_line.deliver(piece);
    emit toProgram(piece);
}

void CuttingProxy::forwardToBoard()
{
    m_toBoard.forward.start(0); // nobody tells when the board has taken a piece: one in each round of events
    const QByteArray piece = nextPiece(m_toBoard);
    if (piece.isEmpty())
        return;
    const ssize_t count = ::write(m_board, piece.constData(), static_cast<size_t>(piece.size()));
    if (count != piece.size()) { // full: the board reads in its own time
        m_toBoard.waiting.prepend(piece.mid(static_cast<int>(std::max<ssize_t>(count, 0))));
        return m_toBoard.forward.start(kRetryMs);
    }
    emit toBoard(piece);
}

void CuttingProxy::hangUp()
{
    if (m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier.release()->deleteLater(); // this may be its own handler
    }
    m_toProgram.forward.stop();
    m_toBoard.forward.stop();
    m_line.hangUp();
    if (m_board >= 0)
        close(m_board);
    m_board = -1;
}
