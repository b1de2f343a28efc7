// SPDX-License-Identifier: MIT
#include "cli/campaign/faultmap.h"

#include <algorithm>

namespace campaign {

FaultMap faultMapOf(const Plan &plan, const Outcome &outcome)
{
    FaultMap map = {};
    for (const Case &planned : plan.cases) {
        if (planned.expect.fault)
            map[static_cast<std::size_t>(*planned.expect.fault)] = Input::NotRun;
    }
    for (const CaseResult &result : outcome.results) {
        const Case &judged = plan.cases[result.number];
        if (!judged.expect.fault)
            continue;
        Input &input = map[static_cast<std::size_t>(*judged.expect.fault)];
        if (!isAsExpected(judged, result.verdict))
            input = Input::Missed;
        else if (input != Input::Missed)
            input = Input::Caught;
    }
    return map;
}

QString nameOf(Input input)
{
    static constexpr std::array names{"not reachable", "not run", "not caught", "caught"};
    return QLatin1String(names[static_cast<std::size_t>(input)]);
}

int countOf(const FaultMap &map, Input input)
{
    return static_cast<int>(std::ranges::count(map, input));
}

} // namespace campaign
