// Bytes from the line, cut into command lines.
#pragma once

#include <QByteArray>
#include <QStringList>

class CommandLine
{
public:
    /// Longer lines than this, in bytes, are dropped whole.
    static constexpr int kLongest = 65536;

    /// Takes bytes and returns the lines that they complete, without their ends ("\r\n", "\r" or "\n"), Latin-1.
    /// Empty lines are left out.
    QStringList take(const QByteArray &bytes);
    /// Number of lines dropped for their length.
    int dropped() const { return m_dropped; }

private:
    void finish(QStringList &lines);

    QByteArray m_line;
    bool m_tooLong = false;
    int m_dropped = 0;
};
