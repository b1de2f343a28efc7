// SPDX-License-Identifier: MIT
// A stable symbolic link to the terminal, whose own name changes after a hang-up.
#pragma once

#include <QString>

namespace simulator {

/// Removes its symbolic link when it is destroyed. A file at its path that is not a link is left alone.
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

} // namespace simulator
