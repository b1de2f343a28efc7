// SPDX-License-Identifier: MIT
// A pseudo-terminal that gives all that it is sent, however slowly it is read.
#pragma once

#include "simulator/ptyline.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <deque>

class Terminal : public QObject
{
    Q_OBJECT

public:
    Terminal();

    /// "/dev/pts/4"; empty where the system gives none.
    QString name() const { return m_line.tty(); }
    /// At once where it can be taken. While no program has the terminal open the bytes are lost, as on a line.
    void send(const QByteArray &bytes);
    /// True when the program has read everything, or has gone.
    bool isTaken() const { return m_quietLooks >= kQuietLooks; }

signals:
    void opened();
    void received(const QByteArray &bytes);
    /// Everything has been read.
    void taken();

private:
    // The system does not count bytes on their way to the program: the line must look empty this many times.
    static constexpr int kQuietLooks = 20;

    void feed();
    void look();
    bool isQuiet() const;

    simulator::PtyLine m_line;
    std::deque<QByteArray> m_waiting;
    QTimer m_look;
    int m_quietLooks = kQuietLooks;
};
