// SPDX-License-Identifier: MIT
#include "app/application.h"
#include "app/startup.h"

int main(int argc, char *argv[])
{
    Application application(argc, argv);
    return runWorkbench(application);
}
