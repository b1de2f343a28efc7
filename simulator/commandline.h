// SPDX-License-Identifier: MIT
// Command line of the program virtual-board.
#pragma once

#include "simulator/virtualboard.h"

class QCoreApplication;

namespace simulator {

struct CommandLine {
    VirtualBoard::Options board;
    bool verbose = false;
    bool endsWithStandardInput = false;
};

/// Reads the program's arguments. Ends the program on --help, --version, "--defect help" and on what makes no sense.
CommandLine readCommandLine(const QCoreApplication &application);

/// Says why on standard error and ends the program.
[[noreturn]] void refuse(const QString &complaint);

} // namespace simulator
