// SPDX-License-Identifier: MIT
#include "app/reportfeed.h"

ReportFeed &reportFeed()
{
    static ReportFeed feed;
    return feed;
}
