// SPDX-License-Identifier: MIT
// What the commands say of themselves is what the board does: it takes each of them and no other but its own, an injection
// brings a fault of its own module's mechanism, and a clear makes the board calm again.
#include "protocol/commands.h"
#include "protocol/fccu.h"
#include "protocol/mechanism.h"
#include "simulator/board.h"

#include <QTest>

#include <algorithm>
#include <set>

using protocol::Deed;
using protocol::ModuleId;

class TestMechanism : public QObject
{
    Q_OBJECT

private slots:
    void injectionMeetsItsModule_data();
    void injectionMeetsItsModule();
    void clearsAndResetsAreKnown();
    void theBoardTakesEachCommand();
    void theTableHasEachCommand();
};

// Numbers from the arguments' own description, "<core + 1, 1-3>".
static QStringList argumentsOf(const protocol::CommandInfo &command)
{
    const QString text = command.arguments;
    if (text.contains(QLatin1String("offset")))
        return {text.contains(QLatin1String("data")) ? QStringLiteral(" 100 55") : QStringLiteral(" 100")};
    if (text.isEmpty())
        return {QString()};
    QStringList all;
    for (int n = 1; n <= text.section('-', -1).chopped(1).toInt(); ++n)
        all.append(QStringLiteral(" %1").arg(n));
    return all;
}

void TestMechanism::injectionMeetsItsModule_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("module");
    for (const protocol::CommandInfo &command : protocol::commandInfos()) {
        if (protocol::deedOf(command) != Deed::Inject)
            continue;
        const QStringList arguments = argumentsOf(command);
        for (const QString &argument : arguments)
            QTest::addRow("%s%s", command.words.data(), qPrintable(argument))
                << command.words + argument << static_cast<int>(command.module);
    }
}

void TestMechanism::injectionMeetsItsModule()
{
    QFETCH(const QString, line);
    QFETCH(const int, module);
    simulator::Board board;
    std::set<int> modules;
    connect(&board, &simulator::Board::output, &board, [&](const QByteArray &frame) {
        if (frame[4] == static_cast<char>(ModuleId::Fccu) && frame[5] == protocol::fccu::FaultReport)
            modules.insert(static_cast<int>(protocol::mechanismOf(static_cast<quint8>(frame[8]))));
    });
    // Some mechanisms are off when the board starts.
    for (const char *on : {"smpu 1", "pmc 3 10", "swt 3 4"})
        board.execute(QString::fromLatin1(on));
    board.execute(line);
    QTRY_VERIFY(!modules.empty());
    QCOMPARE(modules, std::set<int>{module});
}

void TestMechanism::clearsAndResetsAreKnown()
{
    QStringList clears, resets;
    for (const protocol::CommandInfo &command : protocol::commandInfos()) {
        if (protocol::deedOf(command) == Deed::Clear)
            clears.append(command.words);
        if (protocol::deedOf(command) == Deed::Reset)
            resets.append(command.words);
    }
    QCOMPARE(clears, QStringList({"cmu 17", "xbic 5", "smpu 5", "memu 2", "memu 3", "intcm 3", "pmc 7", "spt 2"}));
    QCOMPARE(resets, QStringList({"inject 1", "inject 2"}));
}

void TestMechanism::theBoardTakesEachCommand()
{
    const simulator::Board board;
    for (const protocol::CommandInfo &info : protocol::commandInfos()) {
        const int count = QString(info.arguments).count('<'); // "<monitor 0-12> <upper MHz>" has two
        const bool taken =
            std::any_of(board.commands().begin(), board.commands().end(), [&](const simulator::Command &command) {
                const bool same = command.words == info.words && command.takes(count);
                // The board may take the last word as an argument.
                const bool shorter =
                    QString(info.words).section(' ', 0, -2) == command.words && command.takes(count + 1);
                return same || shorter;
            });
        QVERIFY2(taken, info.words.latin1());
    }
}

// Those that are not listed are answers to wrong ones; "inject 6" has a row per number in the table.
void TestMechanism::theTableHasEachCommand()
{
    const QStringList own = {"help", "status", "sick"};
    const simulator::Board board;
    for (const simulator::Command &command : board.commands()) {
        if (command.help.isEmpty() || own.contains(command.words.section(' ', 0, 0)) || command.words == "inject 6")
            continue;
        const auto *const info = protocol::commandOf(command.words);
        QVERIFY2(info && info->words == command.words, qPrintable(command.words));
    }
}

QTEST_GUILESS_MAIN(TestMechanism)
#include "tst_mechanism.moc"
