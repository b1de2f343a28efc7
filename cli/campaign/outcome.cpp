// SPDX-License-Identifier: MIT
#include "cli/campaign/outcome.h"

#include <algorithm>

namespace campaign {

int passedOf(const Plan &plan, const Outcome &outcome)
{
    return static_cast<int>(std::ranges::count_if(outcome.results, [&plan](const CaseResult &result) {
        return isAsExpected(plan.cases[result.number], result.verdict);
    }));
}

int countOf(const Outcome &outcome, Verdict verdict)
{
    return static_cast<int>(std::ranges::count(outcome.results, verdict, &CaseResult::verdict));
}

} // namespace campaign
