// SPDX-License-Identifier: MIT
// The window's keys: pages, the status, the manual, and on each page its buttons and fields. A key's what's-this text says
// what it does; the sheet of keys shows these.
#pragma once

namespace Ui {
class MainWindow;
}
class MainWindow;

/// Gives the window its keys. Those of a page work while it is in front, those of a button while it can be pressed.
void installKeys(MainWindow &window, const Ui::MainWindow &form);
