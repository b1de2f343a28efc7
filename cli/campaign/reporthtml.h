// SPDX-License-Identifier: MIT
// A campaign's outcome as one page for people: no script, no outside link, drawings inline. It is well-formed XML, and
// its style knows paper.
#pragma once

#include "cli/campaign/outcome.h"

namespace campaign {

QByteArray htmlReport(const Plan &plan, const Outcome &outcome);

} // namespace campaign
