// SPDX-License-Identifier: MIT
// How far a campaign is: a bar on standard error, where that is a terminal.
#pragma once

#include <QString>

class Progress
{
public:
    explicit Progress(std::size_t cases);
    ~Progress() { hide(); }
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    /// Takes the bar away, so that something can be printed in its place.
    void hide() const;
    /// So many cases are done; the last one was this.
    void show(std::size_t done, const QString &last) const;

private:
    std::size_t m_cases;
    bool m_shown;
};
