// SPDX-License-Identifier: MIT
// The workbench in front of virtual boards: the same window, with their terminal lines as the only ports.
#include "app/application.h"
#include "app/mainwindow.h"
#include "app/startup.h"
#include "support/boardprocess.h"
#include "demo/presentation.h"
#include "demo/replayprocess.h"
#include "demo/screenshots.h"
#include "demo/tour.h"
#include "demo/transportbar.h"
#include "demo/tutorial.h"
#include "link/linetraffic.h"
#include "link/serialports.h"

#include <QCommandLineParser>
#include <QDir>
#include <QTextStream>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

namespace {

// Options of the virtual board that are passed on to it as they are.
struct BoardOption {
    const char *name;
    const char *value;
    const char *help;
};

constexpr BoardOption boardOptions[] = {
    {"seed", "N", "Seed of the boards' chance."},
    {"noise", "RATE", "A bad cable: flip each bit with this probability."},
    {"drop", "RATE", "A bad cable: lose each byte with this probability."},
    {"duplicate", "RATE", "A bad cable: double each byte with this probability."},
    {"stall", "SECONDS", "A bad cable: stop for SECONDS now and then."},
    {"hang-up", "AFTER", "A bad cable: unplugged AFTER seconds, plugged in again 1 s later, again and again."},
};

QStringList passedOn(const QCommandLineParser &parser)
{
    QStringList options{QStringLiteral("--power-cycle-after"), QStringLiteral("5")};
    if (parser.isSet(QStringLiteral("screenshots")))
        options << QStringLiteral("--no-pace"); // the same pieces each time
    for (const BoardOption &option : boardOptions) {
        const QString name = QString::fromLatin1(option.name);
        if (parser.isSet(name))
            options << QStringLiteral("--") + name << parser.value(name);
    }
    return options;
}

// A name for a board that stays when a bad cable brings it back on another terminal. The board takes it away at its end.
QStringList nameOf(int board)
{
    const QString name = QStringLiteral("virtual-board-%1-%2").arg(QCoreApplication::applicationPid()).arg(board);
    return {QStringLiteral("--link"), QDir::temp().filePath(name)};
}

std::vector<std::unique_ptr<BoardProcess>> startBoards(int count, const QStringList &options)
{
    std::vector<std::unique_ptr<BoardProcess>> boards;
    const bool moves = options.contains(QStringLiteral("--hang-up"));
    for (int i = 1; i <= count; ++i)
        boards.push_back(std::make_unique<BoardProcess>(moves ? options + nameOf(i) : options));
    return boards;
}

} // namespace

int main(int argc, char *argv[])
{
    Application application(argc, argv, QStringLiteral("safety-workbench-demo"));
    QApplication::setApplicationVersion(QStringLiteral(WORKBENCH_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Runs the safety workbench in front of virtual boards."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption tutorialOption(
        QStringLiteral("tutorial"), QStringLiteral("Play the tutorial, record it with ffmpeg in FILE, then end."),
        QStringLiteral("FILE"));
    parser.addOption(tutorialOption);
    const QCommandLineOption boardsOption(QStringLiteral("boards"), QStringLiteral("Number of boards (default 1)."),
                                          QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption tourOption(QStringLiteral("tour"),
                                        QStringLiteral("Save a picture of every page in DIR, then end."),
                                        QStringLiteral("DIR"));
    const QCommandLineOption sizeOption(QStringLiteral("size"), QStringLiteral("Size of the window for the tour."),
                                        QStringLiteral("WIDTHxHEIGHT"));
    const QCommandLineOption screenshotsOption(QStringLiteral("screenshots"),
                                               QStringLiteral("Save the pictures of the manual in DIR, then end."),
                                               QStringLiteral("DIR"));
    const QCommandLineOption replayOption(QStringLiteral("replay"),
                                          QStringLiteral("Play the recording FILE instead of a virtual board."),
                                          QStringLiteral("FILE"));
    const QCommandLineOption speedOption(QStringLiteral("speed"), QStringLiteral("Replay N times as fast (default 1)."),
                                         QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption fromOption(QStringLiteral("from"),
                                        QStringLiteral("Replay from the second SECONDS on (default 0)."),
                                        QStringLiteral("SECONDS"), QStringLiteral("0"));
    const QCommandLineOption presentOption(QStringLiteral("present"),
                                           QStringLiteral("Play the speaker's script by itself, again and again."));
    const QCommandLineOption roundsOption(
        QStringLiteral("rounds"),
        QStringLiteral("End after N rounds of the script; fail where a step could not be taken."), QStringLiteral("N"),
        QStringLiteral("0"));
    const QCommandLineOption stayOption(
        QStringLiteral("stay"), QStringLiteral("Let each step of the script stay SECONDS in place of its own time."),
        QStringLiteral("SECONDS"), QStringLiteral("0"));
    parser.addOptions({presentOption, roundsOption, stayOption});
    parser.addOptions({boardsOption, tourOption, sizeOption, screenshotsOption, replayOption, speedOption, fromOption});
    for (const BoardOption &option : boardOptions)
        parser.addOption(
            {QString::fromLatin1(option.name), QString::fromLatin1(option.help), QString::fromLatin1(option.value)});
    parser.process(application);

    const QString tour = parser.isSet(tourOption) ? QDir(parser.value(tourOption)).absolutePath() : QString();
    const QString screenshots =
        parser.isSet(screenshotsOption) ? QDir(parser.value(screenshotsOption)).absolutePath() : QString();
    const QStringList size = parser.value(sizeOption).split(QLatin1Char('x'));
    const QString tutorial =
        parser.isSet(tutorialOption) ? QDir().absoluteFilePath(parser.value(tutorialOption)) : QString();
    const QString recording =
        parser.isSet(replayOption) ? QDir().absoluteFilePath(parser.value(replayOption)) : QString();

    std::unique_ptr<ReplayProcess> replay;
    if (!recording.isEmpty()) {
        replay = std::make_unique<ReplayProcess>(recording, parser.value(speedOption), parser.value(fromOption));
        if (!replay->isRunning())
            return 1; // it has said why
    }
    const auto boards = startBoards(replay ? 0 : parser.value(boardsOption).toInt(), passedOn(parser));
    QStringList ports;
    if (replay)
        ports.append(replay->tty());
    for (const auto &board : boards) {
        if (!board->isRunning()) {
            QTextStream(stderr) << "The virtual board did not start: " << board->errorString() << Qt::endl;
            return 1;
        }
        ports.append(board->tty());
    }
    setAvailablePortNames([ports] { return ports; });

    return runWorkbench(application, [&](MainWindow &window) {
        if (replay) {
            window.addToolBarBreak(Qt::BottomToolBarArea); // a line of its own, below the presenter's banner
            window.addToolBar(Qt::BottomToolBarArea, new TransportBar(*replay, &window));
            QObject::connect(replay.get(), &ReplayProcess::recalled, &window,
                             [](const QByteArray &command) { emit lineTraffic().recalled(command + '\n'); });
        }
        if (size.size() == 2)
            window.resize(size[0].toInt(), size[1].toInt());
        const auto show = [&](const std::function<bool()> &play) {
            QTimer::singleShot(0, &window, [play] { QApplication::exit(play() ? 0 : 1); });
        };
        if (parser.isSet(presentOption))
            present(window, parser.value(roundsOption).toInt(), parser.value(stayOption).toDouble());
        else if (!tutorial.isEmpty())
            show([&] { return recordTutorial(window, tutorial); });
        else if (!screenshots.isEmpty())
            show([&] { return takeScreenshots(window, screenshots, ports); });
        else if (!tour.isEmpty())
            show([&] { return takeTour(window, tour); });
    });
}
