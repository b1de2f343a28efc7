// SPDX-License-Identifier: MIT
// A pseudo-terminal in raw mode that behaves like the board's USB serial line.
#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>

class QSocketNotifier;

namespace simulator {

class PtyLine : public QObject
{
    Q_OBJECT

public:
    /// Bytes per second at 1958400 bit/s with ten bits per byte.
    static constexpr double kBytesPerSecond = 195840;
    /// A full-speed USB packet of 64 bytes has room for 62 behind the serial adapter's two status bytes.
    static constexpr int kPacketSize = 62;
    static constexpr int kMaxPacketSize = 4096;
    /// Bytes beyond this many in the queue are lost, as in a board whose buffer is full.
    static constexpr int kQueueLimit = 4 * 1024 * 1024;

    /// Opens the terminal; tty() is empty where the system gives none.
    explicit PtyLine(QObject *parent = nullptr);
    ~PtyLine() override;

    /// Path of the end that the program opens, "/dev/pts/4".
    QString tty() const { return m_tty; }
    /// With false the bytes leave as fast as they are taken.
    void setPaced(bool paced) { m_paced = paced; }
    /// The line carries bytes in packets of this size, 1 to kMaxPacketSize; frames are cut wherever a packet ends.
    void setPacketSize(int bytes);
    bool isConnected() const { return m_connected; }

    /// Bytes that have not left yet.
    int pending() const { return static_cast<int>(m_queue.size()) - m_sent; }

    /// Sends bytes. While no program has the line open they are lost.
    void send(const QByteArray &bytes);
    /// The line goes away: the program's end reports errors from now on.
    void hangUp();
    /// After a hang-up: a new terminal, which may have another name.
    void plugIn();

signals:
    void received(const QByteArray &bytes);
    /// A program has opened the line, or closed it.
    void connectedChanged(bool connected);

private:
    void readAvailable();
    void flush();
    void setConnected(bool connected);
    void lookForProgram();
    int allowance();
    bool writePacket(int most);

    int m_master = -1;
    QString m_tty;
    int m_packetSize = kPacketSize;
    bool m_paced = true;
    bool m_connected = false;
    QByteArray m_queue;
    int m_sent = 0;      // bytes of m_queue that have left
    double m_budget = 0; // bytes that may leave now
    QElapsedTimer m_clock;
    QTimer m_pace;
    QTimer m_watch;
    std::unique_ptr<QSocketNotifier> m_readable;
};

} // namespace simulator
