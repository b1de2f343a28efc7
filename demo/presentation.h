// SPDX-License-Identifier: MIT
// The speaker's script without a speaker: for a stand, and for endurance.
#pragma once

class MainWindow;

/// Plays the shipped script in the window's event loop, from now on. After `rounds`, where that is not 0, the program ends:
/// with 1 where a scene's steps could not all be taken. A `staySeconds` above 0 takes the place of each scene's own time.
void present(MainWindow &window, int rounds, double staySeconds);
