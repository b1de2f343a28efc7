// SPDX-License-Identifier: MIT
// Each report of the board, announced before its page shows it: to all observers.
#pragma once

#include "protocol/report.h"

#include <QObject>

class ReportFeed : public QObject
{
    Q_OBJECT

signals:
    void reported(const protocol::Report &report);
};

/// The program's only feed. What listens keeps short: the page waits meanwhile.
ReportFeed &reportFeed();
