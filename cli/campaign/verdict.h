// SPDX-License-Identifier: MIT
// The verdict on a case: one value, from which every view takes its words.
#pragma once

#include "cli/campaign/observation.h"

namespace campaign {

enum class Verdict { Detected, Late, WrongMechanism, Undetected, Invalid };

/// What was seen in one attempt, judged.
struct Finding {
    Verdict verdict = Verdict::Invalid;
    QString told;                      // what is not as expected, for people; empty where all is
    QString deviates;                  // the kinds of what is not as expected: equal in two attempts that failed alike
    QString observed;                  // "47 XBAR_0, ALARM", "software 'functional' reset event"
    std::optional<double> detectionUs; // by the board's clock
    std::optional<double> handlingMs;  // from the command to the last reaction, by ours
    int sentPacket = 0;
    int caughtPacket = 0;   // the report that tells the detection; 0: none
    int reactionPacket = 0; // the last reaction; 0: none
};

/// The verdict that a case is meant to get.
constexpr Verdict wantedFor(bool control)
{
    return control ? Verdict::Undetected : Verdict::Detected;
}
/// True for the verdict that the case is meant to get.
inline bool isAsExpected(const Case &judged, Verdict verdict)
{
    return verdict == wantedFor(judged.control);
}

/// "wrong mechanism", the same for all cases: for machines and for summaries.
QString nameOf(Verdict verdict);
/// What the verdict means for this kind of case: a check has an answer, a control goes unnoticed.
QString wordsOf(Kind kind, Verdict verdict);
/// "injection"
QString nameOf(Kind kind);

/// True once all is there that ends the wait after the injection.
bool hasReacted(const Case &judged, const Observation &observation);
/// True once all is there that the case expects.
bool isComplete(const Case &judged, const Observation &observation);

Finding judge(const Case &judged, const Observation &observation);

} // namespace campaign
