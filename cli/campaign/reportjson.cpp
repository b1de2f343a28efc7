// SPDX-License-Identifier: MIT
#include "cli/campaign/reportjson.h"

#include "cli/campaign/faultmap.h"
#include "cli/campaign/figures.h"
#include "cli/times.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <cmath>

namespace campaign {

namespace {

constexpr std::array verdicts{Verdict::Detected, Verdict::Late, Verdict::WrongMechanism, Verdict::Undetected,
                              Verdict::Invalid};

// As many digits as mean something: a tenth of a nanosecond, a microsecond.
double rounded(double value)
{
    return std::round(value * 10000) / 10000;
}

QJsonValue valueOf(const std::optional<double> &value)
{
    return value ? QJsonValue(rounded(*value)) : QJsonValue();
}

QJsonValue figuresJson(const Figures &figures)
{
    if (!figures)
        return {};
    return QJsonObject{{QStringLiteral("count"), static_cast<int>(figures.values.size())},
                       {QStringLiteral("min"), rounded(figures.least)},
                       {QStringLiteral("median"), rounded(figures.median)},
                       {QStringLiteral("p95"), rounded(figures.p95)},
                       {QStringLiteral("max"), rounded(figures.most)}};
}

QJsonObject identification(const Plan &plan, const Outcome &outcome)
{
    return {
        {QStringLiteral("campaign"), plan.title},
        {QStringLiteral("file"), plan.file},
        {QStringLiteral("sha256"), QString::fromLatin1(plan.sha256.toHex())},
        {QStringLiteral("program"), QStringLiteral("safety-workbench-cli " WORKBENCH_VERSION)},
        {QStringLiteral("firmware"), outcome.firmware},
        {QStringLiteral("line"), outcome.line},
        {QStringLiteral("board"), outcome.board},
        {QStringLiteral("shuffle"), outcome.shuffle ? QJsonValue(static_cast<qint64>(*outcome.shuffle)) : QJsonValue()},
        {QStringLiteral("began"), QString::fromLatin1(isoTime(outcome.began))},
        {QStringLiteral("ended"), QString::fromLatin1(isoTime(outcome.ended))}};
}

QJsonObject summary(const Plan &plan, const Outcome &outcome)
{
    QJsonObject counts;
    for (const Verdict verdict : verdicts)
        counts.insert(nameOf(verdict), countOf(outcome, verdict));
    return {{QStringLiteral("cases"), static_cast<int>(plan.cases.size())},
            {QStringLiteral("run"), static_cast<int>(outcome.results.size())},
            {QStringLiteral("as_expected"), passedOf(plan, outcome)},
            {QStringLiteral("verdicts"), counts},
            {QStringLiteral("ended_by"), outcome.endedBy},
            {QStringLiteral("bytes_received"), outcome.received},
            {QStringLiteral("bytes_damaged"), outcome.damaged}};
}

QJsonObject runJson(const Finding &run)
{
    return {{QStringLiteral("verdict"), nameOf(run.verdict)},
            {QStringLiteral("observed"), run.observed},
            {QStringLiteral("told"), run.told},
            {QStringLiteral("detection_us"), valueOf(measured(run, Measure::Detection))},
            {QStringLiteral("reaction_ms"), valueOf(measured(run, Measure::Reaction))},
            {QStringLiteral("handling_ms"), valueOf(measured(run, Measure::Handling))},
            {QStringLiteral("packets"),
             QJsonObject{{QStringLiteral("injection"), run.sentPacket},
                         {QStringLiteral("detection"), run.caughtPacket},
                         {QStringLiteral("reaction"), run.reactionPacket}}}};
}

QJsonObject caseJson(const Plan &plan, const CaseResult &result)
{
    const Case &judged = plan.cases[result.number];
    QJsonArray runs;
    for (const Finding &run : result.runs)
        runs.append(runJson(run));
    return {{QStringLiteral("id"), judged.id},
            {QStringLiteral("title"), judged.title},
            {QStringLiteral("text"), judged.text},
            {QStringLiteral("mechanism"), plan.mechanisms[judged.mechanism].name},
            {QStringLiteral("kind"), nameOf(judged.kind())},
            {QStringLiteral("inject"), judged.inject},
            {QStringLiteral("fault"), judged.expect.fault ? QJsonValue(*judged.expect.fault) : QJsonValue()},
            {QStringLiteral("verdict"), nameOf(result.verdict)},
            {QStringLiteral("as_expected"), isAsExpected(judged, result.verdict)},
            {QStringLiteral("told"), result.decisive().told},
            {QStringLiteral("deadline_us"), valueOf(judged.deadlineUs)},
            {QStringLiteral("reaction_budget_ms"), judged.reactionMs},
            {QStringLiteral("detection_us"), figuresJson(figuresOf(result, Measure::Detection))},
            {QStringLiteral("reaction_ms"), figuresJson(figuresOf(result, Measure::Reaction))},
            {QStringLiteral("handling_ms"), figuresJson(figuresOf(result, Measure::Handling))},
            {QStringLiteral("runs"), runs}};
}

// The identifiers by what became of them.
QJsonObject faultInputs(const Plan &plan, const Outcome &outcome)
{
    QJsonObject inputs;
    for (const Input input : {Input::Caught, Input::Missed, Input::NotRun, Input::Unreached})
        inputs.insert(nameOf(input), QJsonArray());
    const FaultMap map = faultMapOf(plan, outcome);
    for (std::size_t id = 0; id < map.size(); ++id) {
        QJsonArray list = inputs[nameOf(map[id])].toArray();
        list.append(static_cast<int>(id));
        inputs[nameOf(map[id])] = list;
    }
    return inputs;
}

} // namespace

QByteArray jsonReport(const Plan &plan, const Outcome &outcome)
{
    QJsonArray cases;
    for (const CaseResult &result : outcome.results)
        cases.append(caseJson(plan, result));
    return QJsonDocument({{QStringLiteral("v"), 1},
                          {QStringLiteral("identification"), identification(plan, outcome)},
                          {QStringLiteral("summary"), summary(plan, outcome)},
                          {QStringLiteral("cases"), cases},
                          {QStringLiteral("fault_inputs"), faultInputs(plan, outcome)}})
        .toJson();
}

} // namespace campaign
