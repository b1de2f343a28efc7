// SPDX-License-Identifier: MIT
#include "app/form.h"

#include "ui_mainwindow.h"

void setupForm(Ui::MainWindow &form, QMainWindow &window)
{
    form.setupUi(&window);
}
