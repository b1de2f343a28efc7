// SPDX-License-Identifier: MIT
// Diagnostics: on standard error, in one place.
#pragma once

#include <QString>

/// "safety-workbench-cli: " and the text, in a line of its own on standard error.
void complain(const QString &text);
