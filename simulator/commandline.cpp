// SPDX-License-Identifier: MIT
#include "simulator/commandline.h"

#include "simulator/defects.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace simulator {

namespace {

constexpr double kMaxSeconds = 86400;
constexpr double kMaxSeed = 4294967295.0;

QCommandLineOption flag(const char *name, const char *help)
{
    return QCommandLineOption(QString::fromLatin1(name), QString::fromLatin1(help));
}

QCommandLineOption option(const char *name, const char *help, const char *value, const char *standard = "")
{
    return QCommandLineOption(QString::fromLatin1(name), QString::fromLatin1(help), QString::fromLatin1(value),
                              QString::fromLatin1(standard));
}

// clang-format off
QList<QCommandLineOption> options() {
    return {
        flag("verbose", "Log each command on standard error."),
        flag("no-pace", "Send as fast as the bytes are taken."),
        option("seed", "Seed of all chance (default 1).", "N", "1"),
        option("packet", "Send in packets of BYTES, cut wherever they fall (default 62).", "BYTES", "62"),
        option("power-cycle-after", "Power-cycle a board held in reset after SECONDS.", "SECONDS", "0"),
        option("noise", "Flip each bit with this probability, both ways.", "RATE", "0"),
        option("drop", "Lose each byte with this probability, both ways.", "RATE", "0"),
        option("duplicate", "Double each byte with this probability, both ways.", "RATE", "0"),
        option("stall", "Stop sending for SECONDS, each time after 5 to 15 times as long.", "SECONDS", "0"),
        option("hang-up", "Hang up AFTER seconds and come back 1 s later on a new terminal, again and again.", "AFTER", "0"),
        option("link", "Make PATH a symbolic link to the terminal.", "PATH"),
        option("defect", "Give the board a defect; may be repeated. \"help\" lists all.", "NAME"),
        flag("exit-with-stdin", "End when standard input reaches its end."),
    };
}
// clang-format on

[[noreturn]] void listDefects()
{
    QTextStream out(stdout);
    for (const Defect &defect : allDefects())
        out << QString::fromLatin1(defect.name).leftJustified(26) << defect.effect << '\n';
    out.flush();
    std::exit(0);
}

class Reader
{
public:
    explicit Reader(const QCoreApplication &application)
    {
        m_parser.setApplicationDescription(QStringLiteral("A model of the demonstration board on a pseudo-terminal."));
        m_parser.addHelpOption();
        m_parser.addVersionOption();
        m_parser.addOptions(options());
        m_parser.process(application);
    }

    bool isSet(const char *name) const { return m_parser.isSet(QString::fromLatin1(name)); }
    QString text(const char *name) const { return m_parser.value(QString::fromLatin1(name)); }
    QStringList texts(const char *name) const { return m_parser.values(QString::fromLatin1(name)); }

    // From 0 to `max`; anything else ends the program.
    double number(const char *name, double max) const
    {
        bool isNumber = false;
        const double value = text(name).toDouble(&isNumber);
        if (!isNumber || !(value >= 0 && value <= max))
            refuse(QStringLiteral("--%1 takes a number from 0 to %2, not \"%3\"")
                       .arg(QLatin1String(name))
                       .arg(max, 0, 'f', 0)
                       .arg(text(name)));
        return value;
    }
    double rate(const char *name) const { return number(name, 1); }
    int milliseconds(const char *name) const { return static_cast<int>(std::lround(number(name, kMaxSeconds) * 1000)); }

private:
    QCommandLineParser m_parser;
};

QStringList defects(const QStringList &names)
{
    for (const QString &name : names) {
        if (name == QLatin1String("help"))
            listDefects();
        if (std::ranges::none_of(allDefects(), [&name](const Defect &known) { return known.isCalled(name); }))
            refuse(QStringLiteral("no defect \"%1\"; \"--defect help\" lists all").arg(name));
    }
    return names;
}

} // namespace

void refuse(const QString &complaint)
{
    QTextStream(stderr) << "virtual-board: " << complaint << Qt::endl;
    std::exit(1);
}

CommandLine readCommandLine(const QCoreApplication &application)
{
    const Reader reader(application);
    CommandLine line;
    line.verbose = reader.isSet("verbose");
    line.endsWithStandardInput = reader.isSet("exit-with-stdin");
    line.board.seed = static_cast<quint32>(reader.number("seed", kMaxSeed));
    line.board.paced = !reader.isSet("no-pace");
    line.board.packetSize = static_cast<int>(reader.number("packet", PtyLine::kMaxPacketSize));
    line.board.powerCycleAfterMs = reader.milliseconds("power-cycle-after");
    line.board.cable = {reader.rate("noise"), reader.rate("drop"), reader.rate("duplicate"),
                        reader.milliseconds("stall"), reader.milliseconds("hang-up")};
    line.board.link = reader.text("link");
    line.board.defects = defects(reader.texts("defect"));
    return line;
}

} // namespace simulator
