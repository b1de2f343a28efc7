// SPDX-License-Identifier: MIT
// Standard output: texts for people or JSON lines, and nothing else.
#pragma once

#include <QByteArray>
#include <QString>

/// Takes text in pieces and hands it on in large ones; flush() before anything is waited for. What standard output does
/// not take is told once.
class Output
{
public:
    Output();
    ~Output() { flush(); }
    Output(const Output &) = delete;
    Output &operator=(const Output &) = delete;

    /// One line, without its end.
    void line(const QByteArray &utf8);
    void flush();
    /// False once something could not be written.
    bool isGood() const { return m_good; }

private:
    QByteArray m_waiting;
    bool m_good = true;
};

/// True where people look at standard output and want colours: a terminal, and no NO_COLOR in the environment.
bool wantsColour();
