// SPDX-License-Identifier: MIT
// virtual-board: the board as a process of its own, on a pseudo-terminal that it names on standard output.
#include "simulator/signals.h"
#include "simulator/virtualboard.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTextStream>

#include <cmath>
#include <cstdlib>

#include <signal.h>
#include <unistd.h>

namespace {

// Ends the process when its parent closes standard input.
void endWithStandardInput(QObject *context)
{
    auto *notifier = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, context);
    QObject::connect(notifier, &QSocketNotifier::activated, context, [notifier] {
        char buffer[256];
        if (read(STDIN_FILENO, buffer, sizeof buffer) > 0)
            return;
        notifier->setEnabled(false);
        QCoreApplication::quit();
    });
}

[[noreturn]] void refuse(const QString &complaint)
{
    QTextStream(stderr) << "virtual-board: " << complaint << Qt::endl;
    std::exit(1);
}

// Reads a number from 0 to `highest`; anything else ends the program.
double numberOf(const QCommandLineParser &parser, const QCommandLineOption &option, double highest)
{
    const QString text = parser.value(option);
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber || !(number >= 0 && number <= highest))
        refuse(QStringLiteral("--%1 takes a number from 0 to %2, not \"%3\"")
                   .arg(option.names().constFirst())
                   .arg(highest, 0, 'f', 0)
                   .arg(text));
    return number;
}

constexpr double kMaxSeconds = 86400;

int millisecondsOf(const QCommandLineParser &parser, const QCommandLineOption &option)
{
    return static_cast<int>(std::lround(numberOf(parser, option, kMaxSeconds) * 1000));
}

QCommandLineOption number(const char *name, const char *help, const char *value, const char *standard = "0")
{
    return QCommandLineOption(QString::fromLatin1(name), QString::fromLatin1(help), QString::fromLatin1(value),
                              QString::fromLatin1(standard));
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("virtual-board"));
    QCoreApplication::setApplicationVersion(QStringLiteral(WORKBENCH_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A model of the demonstration board on a pseudo-terminal."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption verbose(QStringLiteral("verbose"), QStringLiteral("Log each command on standard error."));
    const QCommandLineOption noPace(QStringLiteral("no-pace"), QStringLiteral("Send as fast as the bytes are taken."));
    const QCommandLineOption link(QStringLiteral("link"), QStringLiteral("Make PATH a symbolic link to the terminal."),
                                  QStringLiteral("PATH"));
    const QCommandLineOption withStdin(QStringLiteral("exit-with-stdin"),
                                       QStringLiteral("End when standard input reaches its end."));
    const auto seed = number("seed", "Seed of all chance (default 1).", "N", "1");
    const auto packet =
        number("packet", "Send in packets of BYTES, cut wherever they fall (default 62).", "BYTES", "62");
    const auto powerCycle = number("power-cycle-after", "Power-cycle a board held in reset after SECONDS.", "SECONDS");
    const auto noise = number("noise", "Flip each bit with this probability, both ways.", "RATE");
    const auto drop = number("drop", "Lose each byte with this probability, both ways.", "RATE");
    const auto duplicate = number("duplicate", "Double each byte with this probability, both ways.", "RATE");
    const auto stall = number("stall", "Stop sending for SECONDS, each time after 5 to 15 times as long.", "SECONDS");
    const auto hangUp =
        number("hang-up", "Hang up AFTER seconds and come back 1 s later on a new terminal, again and again.", "AFTER");
    parser.addOptions(
        {verbose, noPace, seed, packet, powerCycle, noise, drop, duplicate, stall, hangUp, link, withStdin});
    parser.process(application);

    simulator::VirtualBoard::Options options;
    options.seed = static_cast<quint32>(numberOf(parser, seed, 4294967295.0));
    options.paced = !parser.isSet(noPace);
    options.packetSize = static_cast<int>(numberOf(parser, packet, PtyLine::kMaxPacketSize));
    options.powerCycleAfterMs = millisecondsOf(parser, powerCycle);
    options.cable = {numberOf(parser, noise, 1), numberOf(parser, drop, 1), numberOf(parser, duplicate, 1),
                     millisecondsOf(parser, stall), millisecondsOf(parser, hangUp)};
    options.link = parser.value(link);
    simulator::VirtualBoard board(options);
    if (board.line().tty().isEmpty())
        refuse(QStringLiteral("no pseudo-terminal to be had"));
    if (board.tty().isEmpty())
        refuse(QStringLiteral("no link can be made at \"%1\"").arg(options.link));
    if (parser.isSet(verbose)) {
        QObject::connect(&board.board(), &simulator::Board::executed, &application,
                         [](const QString &line) { QTextStream(stderr) << line << Qt::endl; });
    }
    simulator::onSignals({SIGINT, SIGTERM, SIGHUP, SIGUSR1}, &application, [&board](int number) {
        if (number == SIGUSR1)
            board.board().powerCycle();
        else
            QCoreApplication::quit();
    });
    if (parser.isSet(withStdin))
        endWithStandardInput(&application);

    const auto nameTerminal = [&board] { QTextStream(stdout) << "tty: " << board.tty() << Qt::endl; };
    QObject::connect(&board, &simulator::VirtualBoard::pluggedIn, &application, nameTerminal);
    nameTerminal();
    return QCoreApplication::exec();
}
