// SPDX-License-Identifier: MIT
// safety-workbench-cli: the board without a window.
#include "cli/commandline.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const Task task = taskOf(QCoreApplication::arguments());
    return task.run ? task.run(task.settings) : task.exitCode;
}
