// SPDX-License-Identifier: MIT
#pragma once

namespace fakeclock {

/// The clock moves on only after nothing real has happened for this long. A pseudo-terminal's bytes take some real time on
/// their way through the kernel; a program that waits for them needs more than the default, 0.
void setRealWait(int microseconds);

} // namespace fakeclock
