// SPDX-License-Identifier: MIT
// Campaign files (TOML).
#pragma once

#include "cli/campaign/plan.h"

namespace campaign {

/// Reads a campaign. A key, a report or a field that is not known, a value of the wrong kind or out of its range is an
/// error: `trouble` gets it with file, line and column, and the plan is of no use.
Plan readPlan(const QString &path, QString &trouble);

} // namespace campaign
