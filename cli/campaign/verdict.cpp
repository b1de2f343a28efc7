// SPDX-License-Identifier: MIT
#include "cli/campaign/verdict.h"

#include <algorithm>
#include <array>

namespace campaign {

namespace {

using protocol::fccu::FaultEvent;

// clang-format off
constexpr std::array names{"detected", "detected late", "wrong mechanism", "undetected", "invalid"};
constexpr std::array kinds{"injection", "control", "reset", "check"};
constexpr std::array<std::array<const char *, names.size()>, kinds.size()> words{{
    {"detected", "detected late", "wrong mechanism", "undetected", "invalid"},
    {"noticed",  "noticed late",  "wrong reaction",  "unnoticed",  "invalid"},
    {"done",     "done late",     "wrong reset",     "no reset",   "invalid"},
    {"right",    "right, late",   "wrong answer",    "no answer",  "invalid"},
}};
// clang-format on

const FaultEvent &eventOf(const Seen &seen)
{
    return std::get<FaultEvent>(seen.report);
}

// The time of an operation, by the board's clock.
std::optional<double> timeOf(const protocol::Report &report)
{
    if (const auto *fault = std::get_if<FaultEvent>(&report))
        return static_cast<double>(fault->time);
    if (const auto *checksum = std::get_if<protocol::crc::Result>(&report))
        return static_cast<double>(checksum->time);
    if (const auto *result = std::get_if<protocol::cse::Result>(&report))
        return static_cast<double>(result->time);
    return std::nullopt;
}

/// Gathers what one attempt shows.
class Judgement
{
public:
    Judgement(const Case &judged, const Observation &observation)
        : m_case(judged),
          m_seen(observation),
          m_faults(observation.named(QStringLiteral("fault")))
    {
        m_finding.sentPacket = observation.sentPacket;
    }

    Finding control();
    Finding positive();

private:
    void deviates(const QString &kind, const QString &text)
    {
        m_kinds.append(kind);
        m_texts.append(text);
    }
    void reactsWith(const Seen *seen)
    {
        if (!seen)
            return;
        m_something = true;
        if (!m_last || seen->time >= m_last->time)
            m_last = seen;
    }
    void lookAtFaults();
    void lookAtState();
    void lookAtReset();
    void lookAtReports();
    void lookAtTimes();
    bool tookEffect();
    bool restartedUnasked() const;
    QString observed() const;
    QString boardsWords() const;
    Finding finish(Verdict verdict);

    const Case &m_case;
    const Observation &m_seen;
    std::vector<const Seen *> m_faults;
    const Seen *m_last = nullptr; // reaction
    bool m_something = false;     // of what is expected, or a reaction that is not
    QStringList m_kinds, m_texts;
    Finding m_finding;
};

void Judgement::lookAtFaults()
{
    const auto isExpected = [this](const Seen *seen) { return m_case.expect.fault == eventOf(*seen).id; };
    const auto right = std::ranges::find_if(m_faults, isExpected);
    const auto wrong = std::ranges::find_if_not(m_faults, isExpected);
    if (wrong != m_faults.end()) {
        reactsWith(*wrong);
        deviates(QStringLiteral("fault %1").arg(eventOf(**wrong).id),
                 QStringLiteral("fault %1 was reported").arg(faultText(eventOf(**wrong))));
    }
    if (!m_case.expect.fault)
        return;
    if (right == m_faults.end()) {
        deviates(QStringLiteral("no fault"), QStringLiteral("fault %1 was not reported").arg(*m_case.expect.fault));
        return;
    }
    reactsWith(*right);
    m_finding.caughtPacket = (*right)->packet;
    m_finding.detectionUs = timeOf((*right)->report);
    const auto count = std::ranges::count_if(m_faults, isExpected);
    if (count > 1)
        deviates(QStringLiteral("repeated"), QStringLiteral("the fault was reported %1 times").arg(count));
}

void Judgement::lookAtState()
{
    if (m_case.expect.state.isEmpty())
        return;
    const Seen *entered = findState(m_seen, m_case.expect.state);
    reactsWith(entered);
    if (!entered)
        deviates(QStringLiteral("state"), QStringLiteral("%1 was not entered").arg(m_case.expect.state));
}

bool Judgement::restartedUnasked() const
{
    return !m_seen.named(QStringLiteral("restart")).empty() && !m_case.expect.reset
        && answerOf(m_case.inject) != QLatin1String("reset");
}

void Judgement::lookAtReset()
{
    if (restartedUnasked()) {
        m_something = true;
        deviates(QStringLiteral("restart"), QStringLiteral("the board restarted"));
    }
    if (!m_case.expect.reset)
        return;
    const Seen *reset = findReset(m_seen, m_case.expect);
    const auto came = m_seen.named(QStringLiteral("reset"));
    if (reset) {
        reactsWith(reset);
        if (!m_case.expect.fault)
            m_finding.caughtPacket = reset->packet;
    } else if (came.empty()) {
        deviates(QStringLiteral("no reset"), QStringLiteral("no reset followed"));
    } else {
        m_something = true;
        deviates(QStringLiteral("reset"),
                 QStringLiteral("reset for %1").arg(protocol::fields(came.back()->report).first().text.simplified()));
    }
}

// Of an injection a report tells nothing of the mechanism, but its record does.
void Judgement::lookAtReports()
{
    const bool isAnswer = m_case.kind() == Kind::Check;
    const auto look = [this, isAnswer](const Wanted &wanted, const Seen *found, const char *kind, const QString &what) {
        if (isAnswer && found) {
            reactsWith(found);
            if (m_finding.caughtPacket == 0) {
                m_finding.caughtPacket = found->packet;
                m_finding.detectionUs = timeOf(found->report);
            }
        }
        m_something = m_something || (isAnswer && !m_seen.named(wanted.report).empty());
        const QString instead = insteadText(m_seen, wanted);
        if (!found)
            deviates(QLatin1String(kind) + QLatin1Char(' ') + wanted.report,
                     instead.isEmpty() ? what : QStringLiteral("%1; it says %2").arg(what, instead));
    };
    if (const Wanted &record = m_case.expect.record) {
        const Seen *found = find(m_seen, record);
        m_something = m_something || found;
        look(record, found, "record", QStringLiteral("not recorded: %1").arg(wantedText(record)));
    }
    for (const Wanted &wanted : m_case.expect.reports)
        look(wanted, find(m_seen, wanted), "report", QStringLiteral("expected %1").arg(wantedText(wanted)));
    if (const Wanted &changed = m_case.expect.changed)
        look(changed, findChange(m_seen, m_case.expect), "change",
             QStringLiteral("%1 of %2 stands").arg(m_case.expect.changedField, wantedText(changed)));
}

void Judgement::lookAtTimes()
{
    if (m_last)
        m_finding.handlingMs = static_cast<double>(m_last->time - m_seen.sentTime) / 1e6;
    if (!m_texts.isEmpty())
        return;
    const double detectionUs = m_finding.detectionUs.value_or(0);
    if (m_case.deadlineUs && m_finding.detectionUs && !(detectionUs <= *m_case.deadlineUs))
        deviates(
            QStringLiteral("late"),
            QStringLiteral("detected after %1 us, allowed are %2").arg(detectionUs, 0, 'f', 2).arg(*m_case.deadlineUs));
    const double reactionMs = m_finding.handlingMs.value_or(0) - detectionUs / 1000;
    if (reactionMs > m_case.reactionMs)
        deviates(
            QStringLiteral("slow"),
            QStringLiteral("reaction after %1 ms, allowed are %2").arg(reactionMs, 0, 'f', 0).arg(m_case.reactionMs));
}

// Texts that the board sends in place of a fault say why there is none.
QString Judgement::boardsWords() const
{
    QStringList texts;
    for (const Seen *seen : m_seen.named(QStringLiteral("text")))
        texts.append(std::get<protocol::TextMessage>(seen->report).text.simplified());
    texts.removeAll(QString());
    return texts.join(QLatin1String("; "));
}

QString Judgement::observed() const
{
    QStringList parts;
    for (const Seen *seen : m_faults)
        parts.append(faultText(eventOf(*seen)));
    QString state;
    for (const Seen *seen : m_seen.named(QStringLiteral("fault_state"))) {
        const QString name = protocol::fields(seen->report).first().text;
        if (name != state && (name != QLatin1String("NORMAL") || !m_case.expect.state.isEmpty()))
            parts.append(name);
        state = name;
    }
    for (const Seen *seen : m_seen.named(QStringLiteral("reset")))
        parts.append(protocol::fields(seen->report).first().text.simplified());
    if (m_case.kind() == Kind::Check) {
        for (const Wanted &wanted : m_case.expect.reports)
            parts.append(find(m_seen, wanted) ? wantedText(wanted) : insteadText(m_seen, wanted));
    }
    parts.removeAll(QString());
    parts.removeDuplicates();
    return parts.join(QLatin1String(", "));
}

Finding Judgement::finish(Verdict verdict)
{
    for (const QString &command : m_seen.unanswered)
        deviates(QStringLiteral("unanswered ") + command, QStringLiteral("no answer to \"%1\"").arg(command));
    if (isAsExpected(m_case, verdict) && !m_texts.isEmpty())
        verdict = Verdict::Invalid;
    m_finding.verdict = verdict;
    m_finding.told = m_texts.join(QLatin1String("; "));
    m_finding.deviates = m_kinds.join(QLatin1String("; "));
    m_finding.observed = observed();
    m_finding.reactionPacket = m_last ? m_last->packet : 0;
    return m_finding;
}

// False, and told, where the case names an effect that did not show.
bool Judgement::tookEffect()
{
    if (!m_case.effect || find(m_seen, m_case.effect))
        return true;
    const QString instead = insteadText(m_seen, m_case.effect);
    deviates(QStringLiteral("no effect"),
             QStringLiteral("the injection did not take effect: expected %1").arg(wantedText(m_case.effect))
                 + (instead.isEmpty() ? QString() : QStringLiteral("; it says %1").arg(instead)));
    return false;
}

Finding Judgement::control()
{
    lookAtReset();
    if (m_something)
        return finish(Verdict::WrongMechanism);
    if (!m_faults.empty()) {
        reactsWith(m_faults.front());
        m_finding.caughtPacket = m_faults.front()->packet;
        deviates(QStringLiteral("noticed"),
                 QStringLiteral("fault %1 was reported").arg(faultText(eventOf(*m_faults.front()))));
        lookAtTimes();
        return finish(Verdict::Detected);
    }
    if (!tookEffect())
        return finish(Verdict::Invalid);
    return finish(Verdict::Undetected);
}

Finding Judgement::positive()
{
    lookAtFaults();
    lookAtState();
    lookAtReset();
    lookAtReports();
    lookAtTimes();
    if (m_texts.isEmpty())
        return finish(tookEffect() ? Verdict::Detected : Verdict::Invalid);
    if (m_kinds.first() == QLatin1String("late") || m_kinds.first() == QLatin1String("slow"))
        return finish(Verdict::Late);
    if (m_something)
        return finish(Verdict::WrongMechanism);
    if (!tookEffect())
        return finish(Verdict::Invalid);
    const QString said = boardsWords();
    if (said.isEmpty())
        return finish(Verdict::Undetected);
    deviates(QStringLiteral("refused"), QStringLiteral("the board says: %1").arg(said));
    return finish(Verdict::Invalid);
}

} // namespace

QString nameOf(Verdict verdict)
{
    return QLatin1String(names[static_cast<std::size_t>(verdict)]);
}

QString wordsOf(Kind kind, Verdict verdict)
{
    return QLatin1String(words[static_cast<std::size_t>(kind)][static_cast<std::size_t>(verdict)]);
}

QString nameOf(Kind kind)
{
    return QLatin1String(kinds[static_cast<std::size_t>(kind)]);
}

bool hasReacted(const Case &judged, const Observation &observation)
{
    const Expectation &expect = judged.expect;
    const auto faults = observation.named(QStringLiteral("fault"));
    if (judged.control)
        return !faults.empty();
    const auto isExpected = [&expect](const Seen *seen) { return eventOf(*seen).id == expect.fault; };
    return (!expect.fault || std::ranges::any_of(faults, isExpected))
        && (expect.state.isEmpty() || findState(observation, expect.state))
        && (!expect.reset || findReset(observation, expect));
}

bool isComplete(const Case &judged, const Observation &observation)
{
    const Expectation &expect = judged.expect;
    const auto isThere = [&observation](const Wanted &wanted) { return !wanted || find(observation, wanted); };
    return hasReacted(judged, observation) && isThere(expect.record) && std::ranges::all_of(expect.reports, isThere)
        && isThere(judged.effect) && (!expect.changed || findChange(observation, expect));
}

Finding judge(const Case &judged, const Observation &observation)
{
    Judgement judgement(judged, observation);
    return judged.control ? judgement.control() : judgement.positive();
}

} // namespace campaign
