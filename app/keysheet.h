// SPDX-License-Identifier: MIT
// The sheet of all keys of a window: its shortcuts with their what's-this texts, and the menu's.
#pragma once

#include <QDialog>

class KeySheet : public QDialog
{
public:
    /// Shows the window's sheet, or closes the one that is shown.
    static void toggle(QWidget &window);

private:
    explicit KeySheet(QWidget &window);
};
