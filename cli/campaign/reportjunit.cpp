// SPDX-License-Identifier: MIT
#include "cli/campaign/reportjunit.h"

#include "cli/campaign/figures.h"
#include "cli/campaign/reportfolder.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace campaign {

namespace {

bool isError(const Case &judged, Verdict verdict)
{
    return verdict == Verdict::Invalid || (!judged.control && verdict == Verdict::Undetected);
}

QString secondsText(double milliseconds)
{
    return QString::number(milliseconds / 1000, 'f', 6);
}

// Of all runs, in milliseconds.
double timeOf(const CaseResult &result)
{
    double sum = 0;
    for (const Finding &run : result.runs)
        sum += run.handlingMs.value_or(0);
    return sum;
}

QString messageOf(const Case &judged, const CaseResult &result)
{
    const bool timedOut = result.verdict == Verdict::Undetected && !judged.control;
    return (timedOut ? QStringLiteral("time-out: ") : QString()) + wordsOf(judged.kind(), result.verdict)
        + QStringLiteral(": ") + result.decisive().told;
}

// The figures of each run with their packets.
QString outputOf(const Case &judged, const CaseResult &result)
{
    QStringList lines{QStringLiteral("injected: %1").arg(judged.inject)};
    for (const Finding &run : result.runs) {
        QString line = run.observed.isEmpty() ? nameOf(run.verdict) : run.observed;
        if (run.detectionUs)
            line += QStringLiteral("; detection %1 us").arg(figureText(*run.detectionUs));
        if (run.handlingMs)
            line += QStringLiteral("; handling %1 ms").arg(figureText(*run.handlingMs));
        line +=
            QStringLiteral("; packets %1, %2, %3").arg(run.sentPacket).arg(run.caughtPacket).arg(run.reactionPacket);
        lines.append(line);
    }
    if (!isAsExpected(judged, result.verdict))
        lines.append(QStringLiteral("[[ATTACHMENT|%1]]").arg(QLatin1String(kRecordingFile)));
    return lines.join(QLatin1Char('\n'));
}

void writeCase(QXmlStreamWriter &xml, const Plan &plan, const CaseResult &result)
{
    const Case &judged = plan.cases[result.number];
    xml.writeStartElement(QStringLiteral("testcase"));
    xml.writeAttribute(QStringLiteral("classname"), plan.mechanisms[judged.mechanism].name);
    xml.writeAttribute(QStringLiteral("name"), QStringLiteral("%1: %2").arg(judged.id, judged.title));
    xml.writeAttribute(QStringLiteral("time"), secondsText(timeOf(result)));
    if (!isAsExpected(judged, result.verdict)) {
        xml.writeStartElement(isError(judged, result.verdict) ? QStringLiteral("error") : QStringLiteral("failure"));
        xml.writeAttribute(QStringLiteral("type"), nameOf(result.verdict));
        xml.writeAttribute(QStringLiteral("message"), messageOf(judged, result));
        xml.writeCharacters(messageOf(judged, result));
        xml.writeEndElement();
    }
    xml.writeTextElement(QStringLiteral("system-out"), outputOf(judged, result));
    xml.writeEndElement();
}

// Attributes of a suite, or of all.
void writeCounts(QXmlStreamWriter &xml, const Plan &plan, const std::vector<const CaseResult *> &results)
{
    int failures = 0, errors = 0;
    double milliseconds = 0;
    for (const CaseResult *result : results) {
        const Case &judged = plan.cases[result->number];
        milliseconds += timeOf(*result);
        if (isAsExpected(judged, result->verdict))
            continue;
        (isError(judged, result->verdict) ? errors : failures) += 1;
    }
    xml.writeAttribute(QStringLiteral("tests"), QString::number(results.size()));
    xml.writeAttribute(QStringLiteral("failures"), QString::number(failures));
    xml.writeAttribute(QStringLiteral("errors"), QString::number(errors));
    xml.writeAttribute(QStringLiteral("time"), secondsText(milliseconds));
}

} // namespace

QByteArray junitReport(const Plan &plan, const Outcome &outcome)
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("testsuites"));
    xml.writeAttribute(QStringLiteral("name"), plan.title);
    std::vector<const CaseResult *> all;
    std::ranges::transform(outcome.results, std::back_inserter(all), [](const CaseResult &result) { return &result; });
    writeCounts(xml, plan, all);
    for (std::size_t mechanism = 0; mechanism < plan.mechanisms.size(); ++mechanism) {
        std::vector<const CaseResult *> results;
        std::ranges::copy_if(all, std::back_inserter(results), [&](const CaseResult *result) {
            return plan.cases[result->number].mechanism == mechanism;
        });
        if (results.empty())
            continue;
        xml.writeStartElement(QStringLiteral("testsuite"));
        xml.writeAttribute(QStringLiteral("name"), plan.mechanisms[mechanism].name);
        writeCounts(xml, plan, results);
        for (const CaseResult *result : results)
            writeCase(xml, plan, *result);
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    return bytes;
}

} // namespace campaign
