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

struct Option {
    const char *name = "";
    const char *value = ""; // what stands for it in the help; a switch has none
    const char *help = "";
    const char *usual = "";
};

constexpr Option ownOptions[] = {
    {"boards", "N", "Number of boards (default 1).", "1"},
    {"present", "", "Play the speaker's script by itself, again and again."},
    {"rounds", "N", "End after N rounds of the script; fail where a step could not be taken.", "0"},
    {"stay", "SECONDS", "Let each step of the script stay SECONDS in place of its own time.", "0"},
    {"replay", "FILE", "Play the recording FILE instead of a virtual board."},
    {"speed", "N", "Replay N times as fast (default 1).", "1"},
    {"from", "SECONDS", "Replay from the second SECONDS on (default 0).", "0"},
    {"tour", "DIR", "Save a picture of every page in DIR, then end."},
    {"size", "WIDTHxHEIGHT", "Size of the window for the tour."},
    {"screenshots", "DIR", "Save the pictures of the manual in DIR, then end."},
    {"tutorial", "FILE", "Play the tutorial, record it with ffmpeg in FILE, then end."},
};

// Passed on to the virtual board as they are.
constexpr Option boardOptions[] = {
    {"seed", "N", "Seed of the boards' chance."},
    {"noise", "RATE", "A bad cable: flip each bit with this probability."},
    {"drop", "RATE", "A bad cable: lose each byte with this probability."},
    {"duplicate", "RATE", "A bad cable: double each byte with this probability."},
    {"stall", "SECONDS", "A bad cable: stop for SECONDS now and then."},
    {"hang-up", "AFTER", "A bad cable: unplugged AFTER seconds, plugged in again 1 s later, again and again."},
};

template <std::size_t count> void addOptions(QCommandLineParser &parser, const Option (&options)[count])
{
    for (const Option &option : options)
        parser.addOption({QString::fromLatin1(option.name), QString::fromLatin1(option.help),
                          QString::fromLatin1(option.value), QString::fromLatin1(option.usual)});
}

void parse(QCommandLineParser &parser, const QApplication &application)
{
    parser.setApplicationDescription(QStringLiteral("Runs the safety workbench in front of virtual boards."));
    parser.addHelpOption();
    parser.addVersionOption();
    addOptions(parser, ownOptions);
    addOptions(parser, boardOptions);
    parser.process(application);
}

// Of the file or folder that the option names; empty without the option.
QString pathIn(const QCommandLineParser &parser, const char *option)
{
    const QString name = QString::fromLatin1(option);
    return parser.isSet(name) ? QDir().absoluteFilePath(parser.value(name)) : QString();
}

QStringList passedOn(const QCommandLineParser &parser)
{
    QStringList options{QStringLiteral("--power-cycle-after"), QStringLiteral("5")};
    if (parser.isSet(QStringLiteral("screenshots")))
        options << QStringLiteral("--no-pace"); // the same pieces each time
    for (const Option &option : boardOptions) {
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

bool allRun(const std::vector<std::unique_ptr<BoardProcess>> &boards)
{
    for (const auto &board : boards) {
        if (!board->isRunning()) {
            QTextStream(stderr) << "The virtual board did not start: " << board->errorString() << Qt::endl;
            return false;
        }
    }
    return true;
}

void addStrip(MainWindow &window, ReplayProcess &replay)
{
    window.addToolBarBreak(Qt::BottomToolBarArea); // a line of its own, below the presenter's banner
    window.addToolBar(Qt::BottomToolBarArea, new TransportBar(replay, &window));
    QObject::connect(&replay, &ReplayProcess::recalled, &window,
                     [](const QByteArray &command) { emit lineTraffic().recalled(command + '\n'); });
}

// What the command line asks to be shown in the window, once it is open; then the program ends.
std::function<bool()> showIn(MainWindow &window, const QCommandLineParser &parser, const QStringList &ports)
{
    if (const QString file = pathIn(parser, "tutorial"); !file.isEmpty())
        return [&window, file] { return recordTutorial(window, file); };
    if (const QString folder = pathIn(parser, "screenshots"); !folder.isEmpty())
        return [&window, folder, ports] { return takeScreenshots(window, folder, ports); };
    if (const QString folder = pathIn(parser, "tour"); !folder.isEmpty())
        return [&window, folder] { return takeTour(window, folder); };
    return {};
}

void begin(MainWindow &window, const QCommandLineParser &parser, const QStringList &ports)
{
    const QStringList size = parser.value(QStringLiteral("size")).split(QLatin1Char('x'));
    if (size.size() == 2)
        window.resize(size[0].toInt(), size[1].toInt());
    if (parser.isSet(QStringLiteral("present")))
        present(window, parser.value(QStringLiteral("rounds")).toInt(),
                parser.value(QStringLiteral("stay")).toDouble());
    else if (const auto show = showIn(window, parser, ports))
        QTimer::singleShot(0, &window, [show] { QApplication::exit(show() ? 0 : 1); });
}

} // namespace

int main(int argc, char *argv[])
{
    Application application(argc, argv, QStringLiteral("safety-workbench-demo"));
    QApplication::setApplicationVersion(QStringLiteral(WORKBENCH_VERSION));
    QCommandLineParser parser;
    parse(parser, application);

    std::unique_ptr<ReplayProcess> replay;
    QStringList ports;
    if (const QString recording = pathIn(parser, "replay"); !recording.isEmpty()) {
        replay = std::make_unique<ReplayProcess>(recording, parser.value(QStringLiteral("speed")),
                                                 parser.value(QStringLiteral("from")));
        if (!replay->isRunning())
            return 1; // it has said why
        ports.append(replay->tty());
    }
    const auto boards = startBoards(replay ? 0 : parser.value(QStringLiteral("boards")).toInt(), passedOn(parser));
    if (!allRun(boards))
        return 1;
    for (const auto &board : boards)
        ports.append(board->tty());
    setAvailablePortNames([ports] { return ports; });

    return runWorkbench(application, [&](MainWindow &window) {
        if (replay)
            addStrip(window, *replay);
        begin(window, parser, ports);
    });
}
