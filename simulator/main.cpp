// virtual-board: the board as a process of its own, on a pseudo-terminal that it names on standard output.
#include "simulator/signals.h"
#include "simulator/virtualboard.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTextStream>

#include <memory>

#include <signal.h>
#include <unistd.h>

namespace {

// The one who started us holds the other end of our standard input: when that ends, so do we.
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
    const QCommandLineOption seed(QStringLiteral("seed"), QStringLiteral("Seed of all chance (default 1)."),
                                  QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption powerCycle(QStringLiteral("power-cycle-after"),
                                        QStringLiteral("Power-cycle a board held in reset after SECONDS."),
                                        QStringLiteral("SECONDS"));
    const QCommandLineOption withStdin(QStringLiteral("exit-with-stdin"),
                                       QStringLiteral("End when standard input reaches its end."));
    parser.addOptions({verbose, noPace, seed, powerCycle, withStdin});
    parser.process(application);

    VirtualBoard::Options options;
    options.seed = parser.value(seed).toUInt();
    options.paced = !parser.isSet(noPace);
    if (parser.isSet(powerCycle))
        options.powerCycleAfterMs = static_cast<int>(parser.value(powerCycle).toDouble() * 1000);
    VirtualBoard board(options);
    if (board.tty().isEmpty()) {
        QTextStream(stderr) << "virtual-board: no pseudo-terminal to be had" << Qt::endl;
        return 1;
    }
    if (parser.isSet(verbose)) {
        QObject::connect(&board.board(), &Board::executed, &application,
                         [](const QString &line) { QTextStream(stderr) << line << Qt::endl; });
    }
    onSignals({SIGINT, SIGTERM, SIGHUP, SIGUSR1}, &application, [&board](int number) {
        if (number == SIGUSR1)
            board.board().powerCycle();
        else
            QCoreApplication::quit();
    });
    if (parser.isSet(withStdin))
        endWithStandardInput(&application);

    QTextStream(stdout) << "tty: " << board.tty() << Qt::endl;
    return QCoreApplication::exec();
}
