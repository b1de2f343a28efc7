// SPDX-License-Identifier: MIT
#include "simulator/detection.h"

#include <algorithm>

namespace simulator {

namespace {

constexpr bool coversEverySource()
{
    int next = 0;
    for (const Detection &row : detections) {
        if (row.first != next || row.last < row.first)
            return false;
        next = row.last + 1;
    }
    return next == 256;
}
static_assert(coversEverySource());

} // namespace

const Detection &detectionOf(quint8 source)
{
    return *std::ranges::find_if(detections, [source](const Detection &row) { return source <= row.last; });
}

} // namespace simulator
