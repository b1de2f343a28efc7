// SPDX-License-Identifier: MIT
// The driver is the presenter's; tests know it as their own.
#pragma once

#include "presenter/driver.h" // IWYU pragma: export
