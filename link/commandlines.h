// SPDX-License-Identifier: MIT
// Command lines out of sent bytes, however they are cut.
#pragma once

#include <QByteArray>
#include <QByteArrayList>

class CommandLines
{
public:
    /// What is kept of a command that does not end.
    static constexpr int kLongest = 256;

    /// The lines that `bytes` complete, without their ends.
    QByteArrayList take(const QByteArray &bytes);
    /// Forgets the beginning of a line: the port was opened anew.
    void clear() { m_unfinished.clear(); }

private:
    QByteArray m_unfinished;
};
