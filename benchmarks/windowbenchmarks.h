// SPDX-License-Identifier: MIT
#pragma once

#include "app/application.h"

#include <benchmark/benchmark.h>

/// The main function of benchmarks that need the window or fonts: runs all that are registered, on no display.
inline int runWindowBenchmarks(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const Application application(argc, argv); // cppcheck-suppress unreadVariable
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
