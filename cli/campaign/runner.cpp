// SPDX-License-Identifier: MIT
#include "cli/campaign/runner.h"

#include "cli/complain.h"
#include "cli/exitcode.h"

#include <algorithm>

namespace campaign {

namespace {

constexpr int kAnswerMs = 2000;
constexpr int kPatientAnswers = 5;
constexpr int kProofs = 20;
constexpr int kQuietMs = 20;

QString marker()
{
    return QStringLiteral("get 1");
}

} // namespace

Runner::Runner(Conversation &board, const Plan &plan) : m_board(board), m_plan(plan)
{
    board.onPacket = [this](const session::Packet &packet) { take(packet); };
    board.onFrame = [this](const frameData &frame, qint64 time) { take(frame, time); };
}

void Runner::take(const session::Packet &packet)
{
    ++m_packets;
    if (packet.direction == session::Direction::Received)
        m_outcome.received += packet.bytes.size();
    if (packet.direction != session::Direction::Sent || !m_injecting || m_observation.sentPacket > 0)
        return;
    m_observation.sentPacket = m_packets;
    m_observation.sentTime = packet.time;
}

void Runner::take(const frameData &frame, qint64 time)
{
    m_framed += protocol::kFrameOverhead + frame.data.size();
    const auto report = protocol::decode(frame.moduleId, frame.dataType, frame.data);
    if (!report) {
        ++m_unknown;
        return;
    }
    const QString name = protocol::infoOf(*report).name;
    m_answered = m_answered || name == m_answer;
    if (name == QLatin1String("fault_state"))
        m_state = protocol::fields(*report).first().text;
    if (const auto *version = std::get_if<protocol::sys::FirmwareVersion>(&*report))
        m_outcome.firmware = protocol::sys::versionText(*version);
    auto &seen = m_injecting ? m_observation.reports : m_observation.before;
    seen.push_back({*report, name, m_packets, time});
}

// False where the campaign ends: interrupted, or the line is lost.
bool Runner::wait(int milliseconds, const Done &done)
{
    const auto ended = m_board.wait(milliseconds, done);
    if (ended == Conversation::Waited::Interrupted || ended == Conversation::Waited::Lost)
        m_ended = ended;
    return m_ended == Conversation::Waited::Done;
}

// A command and the end of its answer, where the board has to give one.
bool Runner::exchange(const QString &command)
{
    m_answer = answerOf(command);
    m_answered = m_answer.isEmpty();
    m_board.send(command);
    if (!m_answered && !wait(kAnswerMs, [this] { return m_answered; }))
        return false;
    if (!m_answered)
        m_observation.unanswered.append(command);
    return true;
}

bool Runner::exchange(const QStringList &commands)
{
    return std::ranges::all_of(commands, [this](const QString &command) { return exchange(command); });
}

// All that the board had to say before has been said. Asks again where the answer is lost; a board that stays silent ends
// the campaign.
bool Runner::sync()
{
    for (int i = 0; i < kPatientAnswers; ++i) {
        if (!exchange(marker()))
            return false;
        if (m_answered)
            return true;
    }
    m_silent = true;
    return false;
}

bool Runner::prepare()
{
    if (!sync() || !exchange(m_plan.setup) || !sync())
        return false;
    return settle();
}

// Leaves the board in order for the next case.
bool Runner::settle()
{
    m_state.clear();
    if (!exchange(QStringLiteral("get 0")))
        return false;
    if (m_state == QLatin1String("NORMAL") || m_plan.recover.isEmpty())
        return true;
    return exchange(m_plan.recover) && sync();
}

// A report that has begun ends before the answer to the next question.
bool Runner::inspectLine()
{
    for (int i = 0; i < kPatientAnswers && strayBytes() != 0; ++i) {
        if (!wait(kQuietMs, [this] { return strayBytes() == 0; }) || (strayBytes() != 0 && !exchange(marker())))
            return false;
    }
    const qint64 stray = strayBytes();
    m_outcome.damaged += stray;
    if (stray != 0)
        m_observation.damage = QStringLiteral("%1 bytes on the line belonged to no report").arg(stray);
    else if (m_unknown > 0)
        m_observation.damage = QStringLiteral("%1 reports of no known kind").arg(m_unknown);
    m_unknown = 0;
    return true;
}

bool Runner::proveLine(int &lost)
{
    const qint64 damaged = m_outcome.damaged;
    const QStringList unanswered = std::exchange(m_observation.unanswered, {});
    for (int i = 0; i < kProofs; ++i) {
        if (!exchange(marker()))
            return false;
    }
    if (!inspectLine())
        return false;
    lost = static_cast<int>(m_observation.unanswered.size()) + (m_outcome.damaged > damaged ? 1 : 0);
    m_observation.unanswered = unanswered;
    return true;
}

// What the case wants to know once the fault has been caught, or should have been.
bool Runner::ask(const Case &asked)
{
    if (!exchange(asked.ask) || (!asked.askRecord.isEmpty() && !exchange(asked.askRecord)))
        return false;
    const int patienceMs = hasReacted(asked, m_observation) ? m_plan.patienceMs + asked.reactionMs : 0;
    if (!asked.control && !wait(patienceMs, [&] { return isComplete(asked, m_observation); }))
        return false;
    return sync() && inspectLine();
}

bool Runner::attempt(const Case &tried, Finding &finding)
{
    m_injecting = false;
    m_observation = {};
    if (!exchange(tried.before) || !sync() || !inspectLine())
        return false;
    m_injecting = true;
    m_board.send(tried.inject);
    const double budgetMs = tried.reactionMs + tried.deadlineUs.value_or(0) / 1000;
    const int patienceMs = static_cast<int>(budgetMs) + (tried.control ? 0 : m_plan.patienceMs);
    if (!wait(patienceMs, [&] { return hasReacted(tried, m_observation); }) || !ask(tried))
        return false;
    m_injecting = false;
    finding = judge(tried, m_observation);
    if (!m_observation.damage.isEmpty()) {
        finding.verdict = Verdict::Invalid;
        finding.told = m_observation.damage;
    }
    return exchange(tried.after) && settle();
}

bool Runner::runOnce(const Case &tried, Finding &finding)
{
    if (!attempt(tried, finding))
        return false;
    if (isAsExpected(tried, finding.verdict) || !m_observation.damage.isEmpty())
        return true;
    Finding again;
    int lost = 0;
    if (!proveLine(lost) || !attempt(tried, again))
        return false;
    const bool isSame = again.verdict == finding.verdict && again.deviates == finding.deviates;
    if (isSame && lost == 0)
        return true;
    finding.verdict = Verdict::Invalid;
    finding.told += lost > 0   ? QStringLiteral("; but the line loses or damages what passes")
        : again.told.isEmpty() ? QStringLiteral("; but not when it was tried again")
                               : QStringLiteral("; tried again: %1").arg(again.told);
    return true;
}

// A control without an effect of its own says something only where the same injection has been caught.
void Runner::checkControl(const Case &control, Finding &finding) const
{
    if (control.effect || finding.verdict != Verdict::Undetected)
        return;
    const auto shows = [&](const CaseResult &result) {
        const Case &other = m_plan.cases[result.number];
        return !other.control && other.inject == control.inject && isAsExpected(other, result.verdict);
    };
    if (std::ranges::any_of(m_outcome.results, shows))
        return;
    finding.verdict = Verdict::Invalid;
    finding.told = QStringLiteral("no case shows that this injection takes effect");
}

bool Runner::runCase(std::size_t number)
{
    const Case &tried = m_plan.cases[number];
    CaseResult result{number, wantedFor(tried.control), {}};
    bool goesOn = true;
    for (int i = 0; i < tried.repeat && goesOn && isAsExpected(tried, result.verdict); ++i) {
        m_board.mark(tried.repeat > 1 ? QStringLiteral("%1 run %2").arg(tried.id).arg(i + 1) : tried.id);
        Finding finding;
        goesOn = runOnce(tried, finding);
        if (!goesOn)
            finding = {Verdict::Invalid, QStringLiteral("the campaign ended in this case"), {}, {}, {}, {}, 0, 0, 0};
        if (tried.control)
            checkControl(tried, finding);
        result.verdict = finding.verdict;
        result.runs.push_back(std::move(finding));
    }
    m_outcome.results.push_back(std::move(result));
    if (onCase)
        onCase(m_outcome.results.back());
    return goesOn;
}

int Runner::endedEarly()
{
    if (m_silent)
        complain(QStringLiteral("the board does not answer"));
    const int code = m_silent ? kLineOrBoard : m_board.codeOf(m_ended);
    m_outcome.endedBy = code == kInterrupted ? QStringLiteral("interrupted")
        : m_silent                           ? QStringLiteral("the board does not answer any more")
                                             : QStringLiteral("the line was lost");
    return code;
}

int Runner::run(std::vector<std::size_t> order, bool failFast)
{
    std::stable_partition(order.begin(), order.end(), [this](std::size_t number) {
        const Case &tried = m_plan.cases[number];
        return !tried.control || tried.effect;
    });
    if (const int code = m_board.open())
        return code;
    if (m_outcome.line.isEmpty())
        m_outcome.line = m_board.lineName();
    m_outcome.began = m_board.now();
    int code = prepare() ? kAsAsked : endedEarly();
    for (const std::size_t number : order) {
        if (code == kLineOrBoard || code == kInterrupted || (failFast && code != kAsAsked))
            break;
        if (!runCase(number))
            code = endedEarly();
        else if (!isAsExpected(m_plan.cases[number], m_outcome.results.back().verdict))
            code = kNotAsExpected;
    }
    m_outcome.ended = m_board.now();
    if (m_outcome.results.size() < order.size() && m_outcome.endedBy.isEmpty())
        m_outcome.endedBy = QStringLiteral("the first case that was not as expected ended it");
    std::ranges::sort(m_outcome.results, {}, &CaseResult::number);
    return code;
}

} // namespace campaign
