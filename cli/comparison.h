// SPDX-License-Identifier: MIT
// Two boards' answers to the same commands, told apart field by field.
#pragma once

#include "protocol/frame.h"

#include <QString>

#include <map>
#include <optional>
#include <utility>
#include <vector>

/// An answer, with what differs from run to run masked.
struct Answer {
    int command = 0; // number of the command before it
    int module = 0;
    QString report;                                  // "cmu"; "module 23 type 4" where it is unknown
    std::vector<std::pair<QString, QString>> fields; // name and value

    /// The same report with the same values.
    bool matches(const Answer &other) const { return report == other.report && fields == other.fields; }
};

/// Nothing for a report that comes unasked.
std::optional<Answer> answerOf(const frameData &frame, int command);

struct Difference {
    enum Kind { Changed, Missing, Extra };
    Kind kind = Changed;
    int command = 0; // number of the command before it
    QString report;
    QString field; // empty where a whole report is missing or extra
    QString expected, received;
};

/// The answers in the order in which they came. Modules are compared each for itself: their answers may cross.
class Comparison
{
public:
    void expect(const Answer &answer);
    void receive(const Answer &answer);

    /// Answers expected before those to command `command`.
    int expectedBefore(int command) const;
    int expected() const { return m_expectedCount; }
    int received() const { return m_receivedCount; }

    std::vector<Difference> differences() const;

private:
    using Answers = std::map<int, std::vector<Answer>>; // by module

    Answers m_expected;
    Answers m_received;
    std::map<int, int> m_expectedByCommand;
    int m_expectedCount = 0;
    int m_receivedCount = 0;
};
