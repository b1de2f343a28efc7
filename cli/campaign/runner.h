// SPDX-License-Identifier: MIT
// Runs the cases of a campaign on a board, one after the other.
//
// A case: the commands that prepare it, each answered; the injection; the wait for what is expected, or, of a control, for
// its budget; the questions that it asks; the commands that clean up, until fault collection is back to NORMAL.
//
// What is not as expected is believed only if it happens again on a line that has answered twenty questions without a
// flaw: a command that got lost looks like a fault that nobody noticed. All else is invalid.
#pragma once

#include "cli/campaign/outcome.h"
#include "cli/conversation.h"

namespace campaign {

class Runner
{
public:
    /// The board's line is opened by run(); both outlive the runner.
    Runner(Conversation &board, const Plan &plan);

    /// Called with each case that has ended, in the order in which they are run.
    std::function<void(const CaseResult &)> onCase;

    /// Runs the cases at these places of the plan, and stops at the first that is not as expected if `failFast`. Controls
    /// without an effect of their own come after all others: they rest on a case that shows their injection at work.
    /// Returns the exit code.
    int run(std::vector<std::size_t> order, bool failFast);

    Outcome &outcome() { return m_outcome; }

private:
    using Done = std::function<bool()>;

    void take(const session::Packet &packet);
    void take(const frameData &frame, qint64 time);
    bool wait(int milliseconds, const Done &done);
    bool exchange(const QString &command);
    bool exchange(const QStringList &commands);
    bool sync();
    bool prepare();
    bool settle();
    bool inspectLine();
    bool proveLine(int &lost);
    bool ask(const Case &asked);
    bool attempt(const Case &tried, Finding &finding);
    bool runOnce(const Case &tried, Finding &finding);
    bool runCase(std::size_t number);
    void checkControl(const Case &control, Finding &finding) const;
    qint64 strayBytes() const { return m_outcome.received - m_framed - m_outcome.damaged; }
    int endedEarly();

    Conversation &m_board;
    const Plan &m_plan;
    Outcome m_outcome;
    Conversation::Waited m_ended = Conversation::Waited::Done; // by what the campaign ends early
    bool m_silent = false;                                     // the board does not answer any more
    int m_packets = 0;
    qint64 m_framed = 0; // bytes of whole frames
    int m_unknown = 0;   // reports of no known kind
    bool m_injecting = false;
    Observation m_observation;
    QString m_answer; // waited for
    bool m_answered = false;
    QString m_state; // of fault collection, as last told
};

} // namespace campaign
