// SPDX-License-Identifier: MIT
#include "cli/complain.h"

#include <cstdio>

void complain(const QString &text)
{
    std::fprintf(stderr, "safety-workbench-cli: %s\n", text.toLocal8Bit().constData());
}
