// SPDX-License-Identifier: MIT
// Settings from the command line.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

struct Settings {
    QString verb;
    QStringList arguments; // of the verb
    QString port;          // empty: the only one there is
    QString tcp;           // HOST:PORT
    bool virtualBoard = false;
    std::optional<QString> seed;
    QString record; // file, "-" for standard output; empty: none
    bool json = false;
    std::optional<int> timeoutMs;
    std::optional<int> forMs;
    std::optional<int> gapMs;
    double speed = 1;
    double fromSeconds = 0;
    bool control = false;
    QString link;   // to the terminal; empty: none
    QString report; // folder; empty: none
    QString only;   // patterns of cases; empty: all
    std::optional<quint32> shuffle;
    bool failFast = false;
};
