// SPDX-License-Identifier: MIT
#include "link/linetraffic.h"

LineTraffic &lineTraffic()
{
    static LineTraffic traffic;
    return traffic;
}
