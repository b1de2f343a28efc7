// SPDX-License-Identifier: MIT
// A clock that runs ahead while the program sleeps. It replaces the system's calls: linking it is enough.
#pragma once

namespace fakeclock {

/// A sleep, or a wait for events that none ends, takes a `speed`th of its time, and the clock shows all of it. At 0 it
/// takes none. Work, and bytes on their way, take their real time.
void setSpeed(int speed);

} // namespace fakeclock
