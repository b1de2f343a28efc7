// SPDX-License-Identifier: MIT
#include "support/boardprocess.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

constexpr int kStartMs = 10000;
constexpr int kStopMs = 2000;

QString boardProgram()
{
    const QString name = QStringLiteral("virtual-board");
    const QString beside = QCoreApplication::applicationDirPath() + QLatin1Char('/') + name;
    return QFileInfo(beside).isExecutable() ? beside : name;
}

} // namespace

BoardProcess::BoardProcess(const QStringList &options)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // Its standard input is ours: the board ends with us, whichever way we end.
    m_process.start(boardProgram(), QStringList(QStringLiteral("--exit-with-stdin")) + options);
    while (!m_process.canReadLine() && m_process.waitForReadyRead(kStartMs)) {}
    if (!m_process.canReadLine())
        m_process.waitForFinished(kStopMs);
    const QString line = QString::fromLocal8Bit(m_process.readLine()).trimmed();
    const QString head = QStringLiteral("tty: ");
    if (line.startsWith(head))
        m_tty = line.mid(head.size());
}

QString BoardProcess::errorString() const
{
    // One that ended by itself has said why on standard error.
    return m_process.error() == QProcess::UnknownError
        ? QStringLiteral("it ended with exit code %1").arg(m_process.exitCode())
        : m_process.errorString();
}

BoardProcess::~BoardProcess()
{
    m_process.closeWriteChannel();
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(kStopMs)) {
        m_process.kill();
        m_process.waitForFinished(kStopMs);
    }
}
