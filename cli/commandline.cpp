// SPDX-License-Identifier: MIT
#include "cli/commandline.h"

#include "cli/complain.h"
#include "cli/exitcode.h"
#include "cli/nearest.h"
#include "cli/verbs.h"

#include <QCommandLineParser>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

enum OptionBit : unsigned {
    Line = 1 << 0, // --port, --tcp, --virtual, --seed
    Record = 1 << 1,
    Timeout = 1 << 2,
    For = 1 << 3,
    Replay = 1 << 4, // --from, --link
    Control = 1 << 5,
    Speed = 1 << 6,
    Json = 1 << 7,
    Gap = 1 << 8,
    Cases = 1 << 9, // --report, --only, --shuffle, --fail-fast
};

struct Verb {
    const char *name;
    const char *arguments;
    const char *help;
    unsigned options;
    int least, most; // arguments
    VerbFunction run;
};

constexpr int kMany = 1000;

// clang-format off
const Verb table[] = {
    {"ports", "", "List the serial ports, who may open them, and what to do where you may not.",
     Json, 0, 0, &verbs::ports},
    {"status", "[MODULE...]", "Ask the modules, or all of them, for their state and print it.",
     Line | Record | Timeout | Json, 0, kMany, &verbs::status},
    {"send", "COMMAND...", "Send command lines, and print what the board answers to each until it is silent; \"# word\" sets a mark.",
     Line | Record | Timeout | Gap | Json, 1, kMany, &verbs::send},
    {"inject", "MODULE CASE [ARGUMENT...]",
     "Inject a fault, wait until fault collection reports it, and print fault, time, reaction and record.",
     Line | Record | Timeout | Json, 2, 4, &verbs::inject},
    {"monitor", "", "Print every report as it comes, until interrupted.",
     Line | Record | For | Json, 0, 0, &verbs::monitor},
    {"record", "FILE", "Record the line until interrupted, \"-\" for standard output.",
     Line | For | Json, 1, 1, &verbs::record},
    {"decode", "FILE", "Print a recording as reports.",
     Record | Json, 1, 1, &verbs::decode},
    {"serve", "FILE", "Be the board of a recording, on a terminal, with the original timing.",
     Record | Timeout | Replay | Speed | Control | Json, 1, 1, &verbs::serve},
    {"check", "FILE", "Send a recording's commands to a board and compare the answers.",
     Line | Record | Timeout | Speed | Json, 1, 1, &verbs::check},
    {"campaign", "FILE", "Run the cases of a campaign: inject, and judge what catches each fault, how fast, and what follows.",
     Line | Cases | Json, 1, 1, &verbs::campaign},
};

struct Option {
    const char *name;
    const char *value; // empty: none
    const char *help;
    unsigned bit;
};

constexpr Option options[] = {
    {"port",    "NAME",      "The serial port; not needed where there is only one.",              Line},
    {"tcp",     "HOST:PORT", "A port that another machine shares as a plain TCP connection.",     Line},
    {"virtual", "",          "A virtual board, started and ended with the tool.",                 Line},
    {"seed",    "N",         "Seed of the virtual board's chance (default 1).",                   Line},
    {"record",  "FILE",      "Record what passes the line.",                                      Record},
    {"timeout", "SECONDS",   "The longest wait for an answer.",                                   Timeout},
    {"for",     "SECONDS",   "End after so long.",                                                For},
    {"gap",     "SECONDS",   "Wait so long between two commands (default 0).",                    Gap},
    {"speed",   "N",         "So many times as fast as recorded (default 1).",                    Speed},
    {"from",    "SECONDS",   "Begin so long after the recording's first packet.",                 Replay},
    {"link",    "PATH",      "A symbolic link to the terminal, which stays where a loss in the recording renames it.", Replay},
    {"control", "",          "Take commands on standard input: play, pause, step, speed N, to SECONDS, fault, mark.",
                                                                                                  Control},
    {"report",  "DIR",       "Write reports and the recording into this folder.",                 Cases},
    {"only",    "IDS",       "Run these cases alone: \"swt-1,cmu-*\".",                           Cases},
    {"shuffle", "SEED",      "Run the cases in an order drawn with this seed.",                   Cases},
    {"fail-fast", "",        "End with the first case that is not as expected.",                  Cases},
    {"json",    "",          "JSON lines, and nothing else on standard output.",                  Json},
};
// clang-format on

constexpr double kLongestSeconds = 1e6;
constexpr double kFastest = 1000;
constexpr double kLargestSeed = 4294967295.0;

QStringList verbNames()
{
    QStringList names;
    for (const Verb &verb : table)
        names.append(QLatin1String(verb.name));
    return names;
}

const Verb *verbOf(const QString &name)
{
    const auto found = std::find_if(std::begin(table), std::end(table),
                                    [&name](const Verb &verb) { return name == QLatin1String(verb.name); });
    return found == std::end(table) ? nullptr : found;
}

void addOptions(QCommandLineParser &parser, unsigned bits)
{
    for (const Option &option : options) {
        if (option.bit & bits)
            parser.addOption({QLatin1String(option.name), QLatin1String(option.help), QLatin1String(option.value)});
    }
    parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show the options and end.")});
    parser.addOption({{QStringLiteral("v"), QStringLiteral("version")}, QStringLiteral("Show the version and end.")});
}

// Without the list of arguments, which the first line has.
QString helpOf(const QCommandLineParser &parser)
{
    const QString text = parser.helpText();
    return text.left(text.indexOf(QLatin1String("\nArguments:")));
}

QString generalHelp()
{
    QCommandLineParser parser;
    QString about = QStringLiteral("The demonstration board without a window.\n\nVerbs:\n");
    for (const Verb &verb : table)
        about += QStringLiteral("  %1 %2\n")
                     .arg(QStringLiteral("%1 %2").arg(QLatin1String(verb.name), QLatin1String(verb.arguments)), -34)
                     .arg(QLatin1String(verb.help));
    about +=
        QStringLiteral("\nEnds with 0 as asked, 1 not as expected, 2 usage or file, 3 line or board, 130 interrupted."
                       "\n\"VERB --help\" tells the options of one verb.");
    parser.setApplicationDescription(about);
    addOptions(parser, ~0U);
    parser.addPositionalArgument(QStringLiteral("verb"), QStringLiteral("What to do."), QStringLiteral("VERB ..."));
    return helpOf(parser);
}

void describe(QCommandLineParser &parser, const Verb &verb)
{
    parser.setApplicationDescription(QLatin1String(verb.help));
    addOptions(parser, verb.options);
    parser.addPositionalArgument(QLatin1String(verb.name), QString(), QLatin1String(verb.name));
    if (*verb.arguments)
        parser.addPositionalArgument(QStringLiteral("arguments"), QString(), QLatin1String(verb.arguments));
}

Task refused(const QString &complaint)
{
    complain(complaint);
    return {nullptr, {}, kUsageOrFile};
}

Task told(const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), stdout);
    return {};
}

// Reads a number above `least` and up to `most`; nothing where the option is absent. `wrong` gets the complaint.
std::optional<double> numberOf(const QCommandLineParser &parser, const char *name, double least, double most,
                               QString &wrong)
{
    const QString option = QLatin1String(name);
    if (!parser.isSet(option))
        return std::nullopt;
    const QString text = parser.value(option);
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (isNumber && number >= least && number <= most)
        return number;
    wrong = QStringLiteral("--%1 takes a number from %2 to %3, not \"%4\"").arg(option).arg(least).arg(most).arg(text);
    return std::nullopt;
}

std::optional<int> millisecondsOf(const QCommandLineParser &parser, const char *name, QString &wrong)
{
    const auto seconds = numberOf(parser, name, 0, kLongestSeconds, wrong);
    return seconds ? std::optional(static_cast<int>(std::lround(*seconds * 1000))) : std::nullopt;
}

// An option that the verb does not have counts as not given: QCommandLineParser warns of one that it does not know.
Settings settingsOf(const QCommandLineParser &parser, const Verb &verb, QString &wrong)
{
    Settings settings;
    settings.verb = QLatin1String(verb.name);
    settings.arguments = parser.positionalArguments().mid(1);
    settings.json = verb.options & Json && parser.isSet(QStringLiteral("json"));
    if (verb.options & Line) {
        settings.port = parser.value(QStringLiteral("port"));
        settings.tcp = parser.value(QStringLiteral("tcp"));
        settings.virtualBoard = parser.isSet(QStringLiteral("virtual"));
        if (numberOf(parser, "seed", 0, kLargestSeed, wrong))
            settings.seed = parser.value(QStringLiteral("seed"));
    }
    if (verb.options & Record)
        settings.record = parser.value(QStringLiteral("record"));
    if (verb.options & Timeout)
        settings.timeoutMs = millisecondsOf(parser, "timeout", wrong);
    if (verb.options & Gap)
        settings.gapMs = millisecondsOf(parser, "gap", wrong);
    if (verb.options & For)
        settings.forMs = millisecondsOf(parser, "for", wrong);
    if (verb.options & Speed)
        settings.speed = numberOf(parser, "speed", 1 / kFastest, kFastest, wrong).value_or(1);
    if (verb.options & Replay) {
        settings.fromSeconds = numberOf(parser, "from", 0, kLongestSeconds, wrong).value_or(0);
        settings.link = parser.value(QStringLiteral("link"));
    }
    if (verb.options & Cases) {
        settings.report = parser.value(QStringLiteral("report"));
        settings.only = parser.value(QStringLiteral("only"));
        if (const auto seed = numberOf(parser, "shuffle", 0, kLargestSeed, wrong))
            settings.shuffle = static_cast<quint32>(*seed);
        settings.failFast = parser.isSet(QStringLiteral("fail-fast"));
    }
    settings.control = verb.options & Control && parser.isSet(QStringLiteral("control"));
    if (settings.json && settings.record == QLatin1String("-"))
        wrong = QStringLiteral("--json and --record - both want standard output");
    return settings;
}

// The verb is the first word that is no option, wherever the options stand.
Task taskOf(const QStringList &arguments, const Verb &verb)
{
    QCommandLineParser parser;
    describe(parser, verb);
    if (!parser.parse(arguments))
        return refused(QStringLiteral("%1: %2").arg(QLatin1String(verb.name), parser.errorText()));
    if (parser.isSet(QStringLiteral("help")))
        return told(helpOf(parser));
    const auto count = parser.positionalArguments().size() - 1;
    if (count < verb.least || count > verb.most)
        return refused(QStringLiteral("usage: safety-workbench-cli %1 %2")
                           .arg(QLatin1String(verb.name), QLatin1String(verb.arguments))
                           .trimmed());
    QString wrong;
    const Settings settings = settingsOf(parser, verb, wrong);
    return wrong.isEmpty() ? Task{verb.run, settings, kAsAsked} : refused(wrong);
}

} // namespace

Task taskOf(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(parser, ~0U);
    parser.parse(arguments); // unknown options are refused below, with the verb's own
    const QStringList words = parser.positionalArguments();
    if (parser.isSet(QStringLiteral("version")))
        return told(QStringLiteral("safety-workbench-cli " WORKBENCH_VERSION "\n"));
    if (words.isEmpty())
        return parser.isSet(QStringLiteral("help")) ? told(generalHelp())
            : parser.unknownOptionNames().isEmpty() ? refused(
                  QStringLiteral("what to do? verbs: %1; --help tells more").arg(verbNames().join(QLatin1String(", "))))
                                                    : refused(parser.errorText());
    const Verb *verb = verbOf(words.first());
    return verb ? taskOf(arguments, *verb) : refused(unknownText(QStringLiteral("verb"), words.first(), verbNames()));
}
