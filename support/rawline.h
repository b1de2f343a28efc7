// SPDX-License-Identifier: MIT
// A terminal line whose board is the test: bytes in, bytes out, nothing in between.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <memory>

class QSocketNotifier;

class RawLine : public QObject
{
    Q_OBJECT

public:
    RawLine();
    ~RawLine() override;

    /// Path of the end that the program opens.
    QString tty() const { return m_tty; }
    /// Sends bytes to the program, all of them.
    void write(const QByteArray &bytes);
    /// The same, and waits until they lie at the program's end.
    void deliver(const QByteArray &bytes);
    /// The program has read all that was sent.
    bool isTaken() const;
    /// Bytes that the program has sent since the last clear().
    const QByteArray &received() const { return m_received; }
    void clear() { m_received.clear(); }
    /// The board goes away: the program's end reports errors from now on.
    void hangUp();

signals:
    void arrived(const QByteArray &bytes);

private:
    void readAvailable();

    int m_master = -1;
    int m_slave = -1; // kept open, so that the line stands while the program has it closed
    QString m_tty;
    QByteArray m_received;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
