// SPDX-License-Identifier: MIT
// A campaign's outcome as JUnit XML, as GitLab and Jenkins read it: a suite per mechanism.
#pragma once

#include "cli/campaign/outcome.h"

namespace campaign {

/// What did not come in time, and what cannot be judged, is an error; another mechanism, a late one, and a fault that
/// should have gone unnoticed are failures. The message says all: some readers show nothing else.
QByteArray junitReport(const Plan &plan, const Outcome &outcome);

} // namespace campaign
