// SPDX-License-Identifier: MIT
// A campaign's outcome as JSON; docs/campaign-report.schema.json describes it.
#pragma once

#include "cli/campaign/outcome.h"

namespace campaign {

QByteArray jsonReport(const Plan &plan, const Outcome &outcome);

} // namespace campaign
