// SPDX-License-Identifier: MIT
// Building the form: one call, in a source file of its own because it is the slowest one to compile.
#pragma once

class QMainWindow;
namespace Ui {
class MainWindow;
}

/// Makes all widgets of the window and connects its slots by name.
void setupForm(Ui::MainWindow &form, QMainWindow &window);
