// SPDX-License-Identifier: MIT
// campaign: the cases of a file, one after the other, and what came of each.
#include "cli/campaign/figures.h"
#include "cli/campaign/planfile.h"
#include "cli/campaign/progress.h"
#include "cli/campaign/reportfolder.h"
#include "cli/campaign/runner.h"
#include "cli/complain.h"
#include "cli/exitcode.h"
#include "cli/printer.h"
#include "cli/settings.h"
#include "cli/verbs.h"

#include <QDir>
#include <QRegularExpression>

#include <algorithm>
#include <numeric>
#include <random>

using namespace campaign;

namespace {

// "cmu-*,swt-1"
bool isChosen(const QString &id, const QString &patterns)
{
    const QStringList list = patterns.split(QLatin1Char(','), Qt::SkipEmptyParts);
    return list.isEmpty() || std::ranges::any_of(list, [&id](const QString &pattern) {
               const QString exact = QRegularExpression::wildcardToRegularExpression(pattern.trimmed());
               return QRegularExpression(exact, QRegularExpression::CaseInsensitiveOption).match(id).hasMatch();
           });
}

// The same order for the same seed, on every machine.
void shuffle(std::vector<std::size_t> &order, quint32 seed)
{
    std::mt19937 random(seed);
    for (std::size_t left = order.size(); left > 1; --left)
        std::swap(order[left - 1], order[random() % left]);
}

std::vector<std::size_t> orderOf(const Plan &plan, const Settings &settings)
{
    std::vector<std::size_t> order(plan.cases.size());
    std::iota(order.begin(), order.end(), 0U);
    std::erase_if(order, [&](std::size_t number) { return !isChosen(plan.cases[number].id, settings.only); });
    if (settings.shuffle)
        shuffle(order, *settings.shuffle);
    return order;
}

QString rangeText(const Figures &figures, const char *unit)
{
    if (!figures)
        return {};
    const QString least = figureText(figures.least), most = figureText(figures.most);
    return QStringLiteral("%1 %2").arg(least == most ? most : least + QStringLiteral(" to ") + most,
                                       QLatin1String(unit));
}

void print(Printer &printer, const Plan &plan, const CaseResult &result)
{
    const Case &judged = plan.cases[result.number];
    const bool good = isAsExpected(judged, result.verdict);
    const Figures detection = figuresOf(result, Measure::Detection), handling = figuresOf(result, Measure::Handling);
    JsonLine json("case");
    json.add("id", judged.id)
        .add("verdict", nameOf(result.verdict))
        .add("as_expected", good)
        .add("told", result.decisive().told)
        .add("runs", result.runs.size());
    json.raw("detection_us", detection ? jsonNumber(detection.most) : "null")
        .raw("handling_ms", handling ? jsonNumber(handling.most) : "null");
    QStringList times{rangeText(detection, "us"), rangeText(handling, "ms")};
    times.removeAll(QString());
    printer.finding(json,
                    QStringLiteral("%1 %2 %3 %4")
                        .arg(good ? QStringLiteral("ok  ") : QStringLiteral("FAIL"))
                        .arg(judged.id, -22)
                        .arg(wordsOf(judged.kind(), result.verdict), -15)
                        .arg(good ? times.join(QStringLiteral(", ")) : result.decisive().told)
                        .trimmed());
}

void printSummary(Printer &printer, const Plan &plan, const Outcome &outcome, const QString &folder)
{
    const double seconds = static_cast<double>(outcome.ended - outcome.began) / 1e9;
    JsonLine json("campaign");
    json.add("title", plan.title)
        .add("sha256", QString::fromLatin1(plan.sha256.toHex()))
        .add("cases", plan.cases.size())
        .add("run", outcome.results.size())
        .add("as_expected", passedOf(plan, outcome))
        .add("seconds", seconds)
        .add("report", folder);
    QString words = QStringLiteral("%1 of %2 cases as expected in %3 s")
                        .arg(passedOf(plan, outcome))
                        .arg(outcome.results.size())
                        .arg(seconds, 0, 'f', 1);
    if (!outcome.endedBy.isEmpty())
        words += QStringLiteral("; ") + outcome.endedBy;
    if (!folder.isEmpty())
        words += QStringLiteral("; report in ") + folder;
    printer.finding(json, words);
}

// What the reports say of the board beside its firmware.
QString boardOf(const Settings &settings)
{
    return settings.virtualBoard
        ? QStringLiteral("virtual board, seed %1").arg(settings.seed.value_or(QStringLiteral("1")))
        : QString();
}

// The campaign on the line, its verdicts printed as they come.
int run(const Plan &plan, const std::vector<std::size_t> &order, const Settings &settings)
{
    Conversation board(settings);
    Runner runner(board, plan);
    Printer printer(settings);
    const Progress progress(order.size());
    std::size_t done = 0;
    runner.onCase = [&](const CaseResult &result) {
        progress.hide();
        print(printer, plan, result);
        printer.flush();
        progress.show(++done, plan.cases[result.number].id);
    };
    Outcome &outcome = runner.outcome();
    outcome.shuffle = settings.shuffle;
    outcome.board = boardOf(settings);
    if (settings.virtualBoard) // its terminal's name is another one each time
        outcome.line = QStringLiteral("pseudo-terminal");
    int code = runner.run(order, settings.failFast);
    progress.hide();
    if (outcome.began == 0)
        return board.finish(code);
    code = board.finish(code);
    const QString trouble = settings.report.isEmpty() ? QString() : writeReports(settings.report, plan, outcome);
    if (!trouble.isEmpty())
        complain(trouble);
    printSummary(printer, plan, outcome, settings.report);
    const bool written = printer.flush() && trouble.isEmpty();
    return written || code == kLineOrBoard || code == kInterrupted ? code : kUsageOrFile;
}

} // namespace

int verbs::campaign(const Settings &settings)
{
    QString trouble;
    const Plan plan = readPlan(settings.arguments.first(), trouble);
    const std::vector<std::size_t> order = orderOf(plan, settings);
    if (trouble.isEmpty() && order.empty())
        trouble = QStringLiteral("no case is called \"%1\"").arg(settings.only);
    if (trouble.isEmpty() && !settings.report.isEmpty())
        trouble = makeFolder(settings.report);
    if (!trouble.isEmpty()) {
        complain(trouble);
        return kUsageOrFile;
    }
    Settings recorded = settings;
    if (!settings.report.isEmpty())
        recorded.record = QDir(settings.report).filePath(QLatin1String(kRecordingFile));
    return run(plan, order, recorded);
}
