// SPDX-License-Identifier: MIT
// A virtual board as a child process.
#pragma once

#include <QProcess>
#include <QStringList>

class BoardProcess
{
public:
    /// Starts the board and waits for the name of its terminal line. isRunning() tells whether that worked.
    explicit BoardProcess(const QStringList &options);
    ~BoardProcess();

    bool isRunning() const { return !m_tty.isEmpty(); }
    /// Path of the terminal line, "/dev/pts/4".
    QString tty() const { return m_tty; }
    qint64 processId() const { return m_process.processId(); }
    /// Why it does not run.
    QString errorString() const;

private:
    QProcess m_process;
    QString m_tty;
};
