// SPDX-License-Identifier: MIT
// What a campaign came to: the source of every report.
#pragma once

#include "cli/campaign/verdict.h"

namespace campaign {

struct CaseResult {
    std::size_t number = 0; // place in Plan::cases
    Verdict verdict = Verdict::Invalid;
    std::vector<Finding> runs; // one per repeat, up to the first that is not as expected

    /// The run that gave the case its verdict.
    const Finding &decisive() const { return runs.back(); }
};

struct Outcome {
    std::vector<CaseResult> results; // in the plan's order
    QString endedBy;                 // why not all cases were run, for people; empty: all were
    QString firmware;                // as the board tells it
    QString line;                    // "/dev/ttyUSB0"
    QString board;                   // "virtual board, seed 1"; empty: nothing is known of it
    std::optional<quint32> shuffle;  // seed of the order
    qint64 began = 0;                // nanoseconds since 1970
    qint64 ended = 0;
    qint64 received = 0; // bytes
    qint64 damaged = 0;  // bytes that belonged to no report
};

/// Cases that were run, cases that ended as they should.
int passedOf(const Plan &plan, const Outcome &outcome);
/// Cases with this verdict.
int countOf(const Outcome &outcome, Verdict verdict);

} // namespace campaign
