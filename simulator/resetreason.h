// SPDX-License-Identifier: MIT
// Reset reasons by the number of their flag, as far as the virtual board has them.
#pragma once

enum ResetReason : int {
    SoftwareFunctional = 1,
    FccuShortFunctional = 3,
    FccuLongFunctional = 4,
    SoftwareDestructive = 9,
    PowerOnReset = 10,
    FunctionalEscalation = 21,
};
