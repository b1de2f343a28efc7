// SPDX-License-Identifier: MIT
// The drawings of a campaign's page, as inline SVG.
#pragma once

#include "cli/campaign/faultmap.h"
#include "cli/campaign/figures.h"

namespace campaign {

/// A strip from 0 to the budget: the bar from minimum to maximum, a stroke at the median, a ring at the 95th percentile,
/// the budget as the line at the right. What lies beyond the budget ends in an arrow.
QString stripDrawing(const Figures &figures, const QString &unit, std::optional<double> budget);

/// The 128 inputs, sixteen in a row: a sign and a colour for what became of each.
QString mapDrawing(const FaultMap &map);
/// One cell of the map, for its legend.
QString cellDrawing(Input input);

} // namespace campaign
