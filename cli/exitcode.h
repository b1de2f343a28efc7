// SPDX-License-Identifier: MIT
// The tool's exit codes.
#pragma once

enum ExitCode {
    kAsAsked = 0,
    kNotAsExpected = 1, // no fault where one was injected; answers that differ
    kUsageOrFile = 2,   // arguments that make no sense; a file that cannot be read or written, or is cut
    kLineOrBoard = 3,   // no port, no permission, unplugged, no answer in time
    kInterrupted = 130, // by a signal
};
