// SPDX-License-Identifier: MIT
// virtual-board: the board as a process of its own, on a pseudo-terminal that it names on standard output.
#include "simulator/commandline.h"
#include "simulator/signals.h"
#include "simulator/virtualboard.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTextStream>

#include <signal.h>
#include <unistd.h>

using namespace simulator;

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

void checkStarted(VirtualBoard &board, const VirtualBoard::Options &options)
{
    if (board.line().tty().isEmpty())
        refuse(QStringLiteral("no pseudo-terminal to be had"));
    if (board.tty().isEmpty())
        refuse(QStringLiteral("no link can be made at \"%1\"").arg(options.link));
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("virtual-board"));
    QCoreApplication::setApplicationVersion(QStringLiteral(WORKBENCH_VERSION));

    const CommandLine line = readCommandLine(application);
    VirtualBoard board(line.board);
    checkStarted(board, line.board);
    if (line.verbose) {
        QObject::connect(&board.board(), &Board::executed, &application,
                         [](const QString &command) { QTextStream(stderr) << command << Qt::endl; });
    }
    onSignals({SIGINT, SIGTERM, SIGHUP, SIGUSR1}, &application, [&board](int number) {
        if (number == SIGUSR1)
            board.board().powerCycle();
        else
            QCoreApplication::quit();
    });
    if (line.endsWithStandardInput)
        endWithStandardInput(&application);

    const auto nameTerminal = [&board] { QTextStream(stdout) << "tty: " << board.tty() << Qt::endl; };
    QObject::connect(&board, &VirtualBoard::pluggedIn, &application, nameTerminal);
    nameTerminal();
    return QCoreApplication::exec();
}
