// SPDX-License-Identifier: MIT
// The command line: its verbs, their options, and the help that tells of them.
#pragma once

#include "cli/settings.h"

#include <QStringList>

#include <optional>

using VerbFunction = int (*)(const Settings &);

struct Task {
    VerbFunction run = nullptr; // null: there is nothing to do but to end
    Settings settings;
    int exitCode = 0;
};

/// What `arguments` (the program's name first) ask for. Help and version go to standard output, complaints to standard
/// error.
Task taskOf(const QStringList &arguments);
