// SPDX-License-Identifier: MIT
// A name for the terminal that stays when the terminal is another one after a hang-up.
#pragma once

#include <QString>

/// A symbolic link, taken away with this object. What stands at its path and is no link is left alone.
class TerminalLink
{
public:
    /// An empty path: no link.
    explicit TerminalLink(const QString &path) : m_path(path) {}
    ~TerminalLink() { remove(); }
    TerminalLink(const TerminalLink &) = delete;
    TerminalLink &operator=(const TerminalLink &) = delete;

    /// Returns the name under which `tty` can be opened: the link's, or its own where there is none. Empty on failure.
    QString pointTo(const QString &tty);
    void remove();

private:
    QString m_path;
    bool m_made = false;
};
