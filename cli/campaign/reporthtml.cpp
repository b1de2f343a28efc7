// SPDX-License-Identifier: MIT
#include "cli/campaign/reporthtml.h"

#include "cli/campaign/drawings.h"
#include "cli/campaign/reportfolder.h"
#include "cli/campaign/reportstyle.h"
#include "cli/times.h"

#include <QTextStream>

#include <algorithm>

namespace campaign {

namespace {

constexpr std::size_t kMostPackets = 12; // runs whose packets stand in the table

QString escaped(const QString &text)
{
    return text.toHtmlEscaped();
}

QString packetsOf(const Finding &run)
{
    QStringList numbers{QString::number(run.sentPacket)};
    for (const int packet : {run.caughtPacket, run.reactionPacket}) {
        if (packet > 0 && numbers.last() != QString::number(packet))
            numbers.append(QString::number(packet));
    }
    return run.sentPacket > 0
        ? QStringLiteral("<span class=\"p\">%1</span>").arg(numbers.join(QStringLiteral("\u2192")))
        : QString();
}

/// The sections of the page.
class Page
{
public:
    Page(const Plan &plan, const Outcome &outcome) : m_plan(plan), m_outcome(outcome), m_out(&m_html) {}

    QByteArray write();

private:
    void head();
    void tile(const char *look, const QString &number, const QString &words);
    void summary();
    void identification();
    void mechanisms();
    void deviations();
    void section(const char *title, const char *words, Kind kind);
    void row(const Case &judged, const CaseResult &result);
    void timesOf(const Case &judged, const CaseResult &result);
    void figureCell(const Figures &figures, const QString &unit, std::optional<double> budget);
    void packetCell(const CaseResult &result);
    void map();
    void meaning();
    QString verdictSpan(const Case &judged, Verdict verdict) const;
    const Case &caseOf(const CaseResult &result) const { return m_plan.cases[result.number]; }
    int count(Kind kind, bool passed) const;
    int count(Kind kind, bool passed, std::size_t mechanism) const;

    const Plan &m_plan;
    const Outcome &m_outcome;
    QString m_html;
    QTextStream m_out;
};

int Page::count(Kind kind, bool passed, std::size_t mechanism) const
{
    return static_cast<int>(std::ranges::count_if(m_outcome.results, [&](const CaseResult &result) {
        const Case &judged = caseOf(result);
        return judged.kind() == kind && judged.mechanism == mechanism
            && (!passed || isAsExpected(judged, result.verdict));
    }));
}

int Page::count(Kind kind, bool passed) const
{
    int sum = 0;
    for (std::size_t i = 0; i < m_plan.mechanisms.size(); ++i)
        sum += count(kind, passed, i);
    return sum;
}

void Page::head()
{
    m_out << "<!DOCTYPE html>\n<html lang=\"en\" xmlns=\"http://www.w3.org/1999/xhtml\"><head><meta charset=\"utf-8\"/>"
             "<meta name=\"viewport\" content=\"width=device-width\"/><title>"
          << escaped(m_plan.title) << "</title><style>" << kReportStyle << "</style></head><body>\n<h1>"
          << escaped(m_plan.title)
          << "</h1>\n<p class=\"lead\">Fault-injection campaign on the safety demonstration's board. "
          << escaped(m_plan.text) << "</p>\n";
}

void Page::tile(const char *look, const QString &number, const QString &words)
{
    m_out << "<div class=\"tile " << look << "\"><b>" << number << "</b><span>" << words << "</span></div>\n";
}

void Page::summary()
{
    const int all = static_cast<int>(m_plan.cases.size());
    const int run = static_cast<int>(m_outcome.results.size()), passed = passedOf(m_plan, m_outcome);
    const auto of = [](int some, int total) { return QStringLiteral("%1 of %2").arg(some).arg(total); };
    m_out << "<div class=\"sum\">\n";
    tile(passed == all ? "good big" : "bad big",
         QString::fromUtf8(passed == all ? "\u2713 " : "\u2717 ") + of(passed, all),
         run == all ? QStringLiteral("cases as expected") : QStringLiteral("cases as expected, %1 were run").arg(run));
    const auto kindTile = [&](Kind kind, const char *words) {
        const int ran = count(kind, false), good = count(kind, true);
        tile(ran == 0 ? "none" : ran == good ? "good" : "bad", of(good, ran), QLatin1String(words));
    };
    kindTile(Kind::Injection, "faults detected in time");
    kindTile(Kind::Control, "controls unnoticed");
    kindTile(Kind::Reset, "resets as expected");
    kindTile(Kind::Check, "answers right");
    const int invalid = countOf(m_outcome, Verdict::Invalid);
    tile(invalid > 0 ? "bad" : "good", QString::number(invalid), QStringLiteral("invalid"));
    m_out << "</div>\n";
    if (!m_outcome.endedBy.isEmpty())
        m_out << "<p class=\"note told\">The campaign ended early: " << escaped(m_outcome.endedBy) << ".</p>\n";
}

void Page::identification()
{
    using Fact = std::pair<const char *, QString>;
    const double seconds = static_cast<double>(m_outcome.ended - m_outcome.began) / 1e9;
    const Fact facts[] = {
        {"Board", escaped(m_outcome.board.isEmpty() ? QStringLiteral("not told") : m_outcome.board)},
        {"Campaign", escaped(m_plan.file)},
        {"Firmware", escaped(m_outcome.firmware)},
        {"its SHA-256", QStringLiteral("<code>%1</code>").arg(QString::fromLatin1(m_plan.sha256.toHex()))},
        {"Line", escaped(m_outcome.line) + QStringLiteral(", 1958400 bit/s")},
        {"Order of cases",
         m_outcome.shuffle ? QStringLiteral("drawn with seed %1").arg(*m_outcome.shuffle)
                           : QStringLiteral("as in the campaign")},
        {"Received",
         QStringLiteral("%1 bytes, %2 of them in no report").arg(m_outcome.received).arg(m_outcome.damaged)},
        {"Began",
         QStringLiteral("%1 UTC, took %2 s")
             .arg(QString::fromLatin1(isoTime(m_outcome.began).left(19)).replace(QLatin1Char('T'), QLatin1Char(' ')))
             .arg(seconds, 0, 'f', 1)},
        {"Program", QStringLiteral("safety-workbench-cli " WORKBENCH_VERSION)},
        {"Recording", QStringLiteral("<code>%1</code>, packets counted from 1").arg(QLatin1String(kRecordingFile))},
    };
    m_out << "<section class=\"whole\"><h2>Identification</h2>\n<table class=\"facts pairs\">\n";
    for (std::size_t i = 0; i < std::size(facts); i += 2) {
        m_out << "<tr>";
        for (const Fact &fact : {facts[i], facts[i + 1]})
            m_out << "<th>" << fact.first << "</th><td>" << fact.second << "</td>";
        m_out << "</tr>\n";
    }
    m_out << "</table></section>\n";
}

void Page::mechanisms()
{
    m_out << "<section class=\"whole\"><h2>By mechanism</h2>\n<table><tr><th>Mechanism</th><th></th>"
             "<th class=\"n\">Faults detected</th><th class=\"n\">Controls unnoticed</th><th class=\"n\">Resets</th>"
             "<th class=\"n\">Answers right</th></tr>\n";
    for (std::size_t i = 0; i < m_plan.mechanisms.size(); ++i) {
        m_out << "<tr><td class=\"id\">" << escaped(m_plan.mechanisms[i].name) << "</td><td>"
              << escaped(m_plan.mechanisms[i].title) << "</td>";
        for (const Kind kind : {Kind::Injection, Kind::Control, Kind::Reset, Kind::Check}) {
            const int ran = count(kind, false, i), good = count(kind, true, i);
            m_out << "<td class=\"n\">";
            if (ran > 0)
                m_out << (good < ran ? "<span class=\"v no\">" : "<span>") << good << " of " << ran << "</span>";
            m_out << "</td>";
        }
        m_out << "</tr>\n";
    }
    m_out << "</table></section>\n";
}

QString Page::verdictSpan(const Case &judged, Verdict verdict) const
{
    const bool good = isAsExpected(judged, verdict);
    return QStringLiteral("<span class=\"v %1\">%2\u00A0%3</span>")
        .arg(QLatin1String(good                              ? "ok"
                               : verdict == Verdict::Invalid ? "odd"
                                                             : "no"),
             QString::fromUtf8(good                              ? "\u2713"
                                   : verdict == Verdict::Invalid ? "?"
                                                                 : "\u2717"),
             wordsOf(judged.kind(), verdict));
}

void Page::deviations()
{
    if (passedOf(m_plan, m_outcome) == static_cast<int>(m_outcome.results.size()))
        return;
    m_out << "<h2>Not as expected</h2>\n<table class=\"cases\"><tr><th>Case</th><th>Verdict</th><th>What was seen</th>"
             "<th>Packets</th></tr>\n";
    for (const CaseResult &result : m_outcome.results) {
        const Case &judged = caseOf(result);
        if (isAsExpected(judged, result.verdict))
            continue;
        m_out << "<tr><td><span class=\"id\">" << escaped(judged.id) << "</span><br/>" << escaped(judged.title)
              << "</td><td>" << verdictSpan(judged, result.verdict) << "</td><td class=\"told\">"
              << escaped(result.decisive().told) << "</td><td class=\"packets\">" << packetsOf(result.decisive())
              << "</td></tr>\n";
    }
    m_out << "</table>\n";
}

void Page::figureCell(const Figures &figures, const QString &unit, std::optional<double> budget)
{
    m_out << "<td>";
    if (figures) {
        QStringList texts;
        for (const double value : {figures.least, figures.median, figures.p95, figures.most})
            texts.append(figureText(value));
        m_out << stripDrawing(figures, unit, budget) << "<div class=\"f\">"
              << (figures.values.size() == 1 ? texts.last() : texts.join(QStringLiteral(" \u00B7 "))) << ' ' << unit
              << "</div>";
        if (budget)
            m_out << "<span class=\"more\">of " << QString::number(*budget, 'g', *budget < 1000 ? 4 : 6) << "</span>";
    }
    m_out << "</td>";
}

void Page::timesOf(const Case &judged, const CaseResult &result)
{
    if (judged.control) {
        m_out << "<td class=\"n\">" << judged.reactionMs << " ms</td>";
        return;
    }
    if (judged.kind() != Kind::Reset)
        figureCell(figuresOf(result, Measure::Detection), QStringLiteral("\u00B5s"), judged.deadlineUs);
    figureCell(figuresOf(result, Measure::Reaction), QStringLiteral("ms"), judged.reactionMs);
    figureCell(figuresOf(result, Measure::Handling), QStringLiteral("ms"),
               judged.reactionMs + judged.deadlineUs.value_or(0) / 1000);
}

void Page::packetCell(const CaseResult &result)
{
    QStringList packets;
    for (const Finding &run : result.runs) {
        if (packets.size() < static_cast<int>(kMostPackets))
            packets.append(packetsOf(run));
    }
    if (result.runs.size() > kMostPackets)
        packets.append(QStringLiteral("and %1 more in report.json").arg(result.runs.size() - kMostPackets));
    m_out << "<td class=\"packets\">" << packets.join(QLatin1Char(' ')) << "</td></tr>\n";
}

void Page::row(const Case &judged, const CaseResult &result)
{
    const Finding &run = result.decisive();
    m_out << "<tr><td>" << verdictSpan(judged, result.verdict) << "<br/><span class=\"more\">"
          << escaped(m_plan.mechanisms[judged.mechanism].name) << "</span></td><td><span class=\"id\">"
          << escaped(judged.id) << "</span><br/>" << escaped(judged.title);
    if (!judged.text.isEmpty())
        m_out << "<br/><span class=\"more\">" << escaped(judged.text) << "</span>";
    m_out << "</td><td><code>" << escaped(judged.inject.left(60)) << (judged.inject.size() > 60 ? "..." : "")
          << "</code><br/>" << escaped(run.observed);
    if (!run.told.isEmpty())
        m_out << "<br/><span class=\"told\">" << escaped(run.told) << "</span>";
    m_out << "</td>";
    timesOf(judged, result);
    packetCell(result);
}

void Page::section(const char *title, const char *words, Kind kind)
{
    if (count(kind, false) == 0)
        return;
    m_out << "<h2>" << title << "</h2>\n<p>" << words
          << "</p>\n<table class=\"cases\"><thead><tr><th>Verdict</th><th>Case</th><th>Command; what was seen</th>";
    if (kind == Kind::Control)
        m_out << "<th class=\"n\">Watched for</th>";
    else if (kind != Kind::Reset)
        m_out << "<th>" << (kind == Kind::Check ? "Operation, board's clock" : "Detection, board's clock") << "</th>";
    if (kind != Kind::Control)
        m_out << "<th>Reaction</th><th>Handling</th>";
    m_out << "<th>Packets</th></tr></thead><tbody>\n";
    for (const CaseResult &result : m_outcome.results) {
        const Case &judged = caseOf(result);
        if (judged.kind() == kind)
            row(judged, result);
    }
    m_out << "</tbody></table>\n";
}

void Page::map()
{
    const FaultMap map = faultMapOf(m_plan, m_outcome);
    m_out << "<section class=\"whole\"><h2>Inputs of fault collection</h2>\n<p>The 128 fault inputs by number. "
          << countOf(map, Input::Caught) << " were exercised and caught, " << countOf(map, Input::Missed)
          << " exercised and not caught; " << countOf(map, Input::Unreached)
          << " are not reachable: no case of this campaign injects them.</p>\n<div class=\"legend\">";
    for (const Input input : {Input::Caught, Input::Missed, Input::NotRun, Input::Unreached})
        m_out << "<span>" << cellDrawing(input) << ' ' << nameOf(input) << "</span>";
    m_out << "</div>\n" << mapDrawing(map) << "</section>\n";
}

constexpr const char *kMeaning =
    "<section class=\"whole\"><h2>What the figures mean, and what they do not</h2>\n"
    "<table class=\"facts\">\n"
    "<tr><th>Detection</th><td>From the injection to its detection by the hardware, measured and told by the board. Of "
    "a "
    "check: the time of the operation.</td></tr>\n"
    "<tr><th>Handling</th><td>From the moment at which the command left the computer to the arrival of the last "
    "expected "
    "reaction: the state of fault collection, the fault, the reset. It contains the line and the computer, so it is an "
    "upper "
    "limit.</td></tr>\n"
    "<tr><th>Reaction</th><td>Handling without detection; an upper limit too.</td></tr>\n"
    "<tr><th>Plots</th><td>The bar reaches from minimum to maximum, the stroke is the median, the ring the 95th "
    "percentile, "
    "the line at the right the budget of the campaign. Figures stand below in this order. Percentiles are measured "
    "values.</td></tr>\n"
    "<tr><th>Packets</th><td>Of the recording, per run: the command, the report of the detection, the last "
    "reaction.</td></tr>\n"
    "<tr><th>Detected</th><td>The expected fault, and no other, reported once, with the expected state, record and "
    "reset, "
    "within the budget.</td></tr>\n"
    "<tr><th>Wrong mechanism</th><td>Something reacted, and not as expected. Wrong reset, wrong answer: the same of a "
    "reset "
    "or a check.</td></tr>\n"
    "<tr><th>Undetected</th><td>Nothing reacted, twice, on a line that answered twenty questions in between without a "
    "flaw.</td></tr>\n"
    "<tr><th>Invalid</th><td>The injection did not take effect, or the line lost or damaged something. It counts "
    "neither as "
    "passed nor as undetected.</td></tr>\n"
    "<tr><th>Controls</th><td>The monitor was off and the fault had to go unnoticed. Either a report shows that the "
    "injection "
    "took effect, or the same injection was caught elsewhere in this campaign.</td></tr>\n"
    "</table>\n"
    "<p class=\"note\">The budgets are the campaign's. This report does not claim a fault-tolerant time interval, "
    "which "
    "belongs to an item and not to a component, and no diagnostic coverage, which is a ratio of failure rates: \"k of "
    "n "
    "detected\" counts injected faults. An injection acts through the firmware; it does not damage the silicon.</p>\n"
    "</section>\n</body></html>\n";

void Page::meaning()
{
    m_out << kMeaning;
}

QByteArray Page::write()
{
    head();
    summary();
    deviations();
    identification();
    map();
    mechanisms();
    section("Injected faults",
            "Each fault was injected with its monitor on. Times beside the campaign's budget; minimum, median, 95th "
            "percentile and maximum where a case was repeated.",
            Kind::Injection);
    section("Negative controls", "The monitor was off: the fault had to go unnoticed for as long as it was watched.",
            Kind::Control);
    section("Resets", "Each reset had to come for its reason and with what it restores.", Kind::Reset);
    section("Self-tests and check values", "Answers that are known beforehand.", Kind::Check);
    map();
    meaning();
    m_out.flush();
    return m_html.toUtf8();
}

} // namespace

QByteArray htmlReport(const Plan &plan, const Outcome &outcome)
{
    return Page(plan, outcome).write();
}

} // namespace campaign
