// SPDX-License-Identifier: MIT
// State of the fault collection panel.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <vector>

/// One reported fault.
struct FccuFaultRecord {
    uint8_t id = 0;
    float time = 0; // microseconds
    QString source;
    QString description;
};

struct FccuPanel {
    std::vector<FccuFaultRecord> fccuHistory; // entry k is item k of the history selector; only grows
    QStringList log;                          // paragraphs that are not in the log box yet
};
