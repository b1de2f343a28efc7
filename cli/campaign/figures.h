// SPDX-License-Identifier: MIT
// The figures of repeated measurements.
#pragma once

#include "cli/campaign/outcome.h"

namespace campaign {

struct Figures {
    std::vector<double> values; // in ascending order
    double least = 0, median = 0, p95 = 0, most = 0;

    explicit operator bool() const { return !values.empty(); }
};

/// Percentiles are values that were measured: the smallest that as many of all do not exceed. The median of an even number
/// is the lower of the two in the middle.
Figures figuresOf(std::vector<double> values);

/// What is measured of each run.
enum class Measure {
    Detection, // us: from the injection to its detection, by the board's clock
    Reaction,  // ms: from the detection to the last reaction
    Handling,  // ms: both, from the command to the last reaction, by our clock
};
std::optional<double> measured(const Finding &run, Measure measure);
/// Of all runs that were measured.
Figures figuresOf(const CaseResult &result, Measure measure);

/// "0.02", "35.1", "1200": three digits or more, none that say nothing.
QString figureText(double value);

} // namespace campaign
