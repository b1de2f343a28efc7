// SPDX-License-Identifier: MIT
// A pseudo-terminal that gives all that it is sent, however slowly it is read, and that can go away and come back.
#pragma once

#include "simulator/ptyline.h"
#include "simulator/terminallink.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <deque>
#include <variant>

class Terminal : public QObject
{
    Q_OBJECT

public:
    /// A symbolic link at this path, which stays when the terminal comes back under another name; empty: none.
    explicit Terminal(const QString &link);

    /// "/dev/pts/4", or the link's path; empty where the system gives none.
    QString name() const { return m_name; }
    /// At once where it can be taken. While no program has the terminal open the bytes are lost, as on a line.
    void send(const QByteArray &bytes);
    /// The terminal goes away when all that was sent before has been taken.
    void hangUp();
    /// It comes back. What is sent from then on waits until a program has opened it.
    void plugIn();
    /// True when the program has read everything, or has gone.
    bool isTaken() const;

signals:
    void opened();
    void hungUp();
    void pluggedIn();
    void received(const QByteArray &bytes);
    /// Everything has been read.
    void taken();

private:
    // The system does not count bytes on their way to the program: the line must look empty this many times.
    static constexpr int kQuietLooks = 20;

    enum class Plug { Out, In };
    using Item = std::variant<QByteArray, Plug>;

    void put(const Item &item);
    void feed();
    bool feed(const Item &item);
    void look();
    bool isLineQuiet() const;

    simulator::PtyLine m_line;
    simulator::TerminalLink m_link;
    QString m_name;
    std::deque<Item> m_waiting;
    QTimer m_look;
    int m_quietLooks = kQuietLooks;
    bool m_expected = false; // a program, since the terminal has come back
};
