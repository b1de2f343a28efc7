// SPDX-License-Identifier: MIT
// Which module's mechanism raises a fault of the fault collection unit.
#pragma once

#include "protocol/moduleid.h"

namespace protocol {

/// The module; Fccu for the faults of parts without a module of their own. `fault` is any number that a report can have.
ModuleId mechanismOf(quint8 fault);

} // namespace protocol
