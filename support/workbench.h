// SPDX-License-Identifier: MIT
// The fixtures by their earlier names.
#pragma once

#include "support/fixtures.h"

using Bench = RealWindow;
using RawBench = WindowFixture;
using Workbench = BoardFixture;
