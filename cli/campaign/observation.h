// SPDX-License-Identifier: MIT
// What the board said while a case ran: its reports in order, with the packet of the recording that brought each.
#pragma once

#include "cli/campaign/plan.h"
#include "protocol/report.h"

#include <vector>

namespace campaign {

/// A report and the packet of the recording that ended it, counted from 1.
struct Seen {
    protocol::Report report;
    QString name; // of its kind
    int packet = 0;
    qint64 time = 0; // nanoseconds since 1970
};

struct Observation {
    std::vector<Seen> before;  // while the case was prepared
    std::vector<Seen> reports; // from the injection on
    int sentPacket = 0;        // the injection
    qint64 sentTime = 0;
    QStringList unanswered; // commands that the board should have answered
    QString damage;         // what the line did meanwhile, for people; empty: nothing that shows

    std::vector<const Seen *> named(const QString &name) const;
};

/// True where the report has these values.
bool matches(const Seen &seen, const Wanted &wanted);
/// The first report from the injection on that is as wanted; null for none.
const Seen *find(const Observation &observation, const Wanted &wanted);
/// The report that shows the change: the first from the injection on whose field differs from the one before it.
const Seen *findChange(const Observation &observation, const Expectation &expect);
const Seen *findState(const Observation &observation, const QString &state);
/// The first reset for the expected reason, and source where one is given.
const Seen *findReset(const Observation &observation, const Expectation &expect);

/// "47 XBAR_0"
QString faultText(const protocol::fccu::FaultEvent &fault);
/// "value 0xCBF43926, size 9": a wanted report's values.
QString wantedText(const Wanted &wanted);
/// "crc: value 30": what such a report said instead, in the wanted fields; empty where none came.
QString insteadText(const Observation &observation, const Wanted &wanted);
/// The name of the report that ends the answer to a command; empty where none has to come.
QString answerOf(const QString &command);

} // namespace campaign
