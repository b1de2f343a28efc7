// SPDX-License-Identifier: MIT
// The virtual board takes every command of the protocol's table, and no other but its own.
#include "protocol/commands.h"
#include "simulator/board.h"

#include <QTest>

#include <algorithm>

using protocol::CommandInfo;

namespace {

// "<monitor 0-12> <upper MHz>" has two.
int argumentCount(const CommandInfo &command)
{
    return QString(command.arguments).count('<');
}

} // namespace

class TestCommandTable : public QObject
{
    Q_OBJECT

private slots:
    void theBoardTakesEachCommand()
    {
        const simulator::Board board;
        for (const CommandInfo &info : protocol::commandInfos()) {
            const int count = argumentCount(info);
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
    void theTableHasEachCommand()
    {
        const QStringList own = {"help", "status", "sick"};
        const simulator::Board board;
        for (const simulator::Command &command : board.commands()) {
            if (command.help.isEmpty() || own.contains(command.words.section(' ', 0, 0)) || command.words == "inject 6")
                continue;
            const CommandInfo *const info = protocol::commandOf(command.words);
            QVERIFY2(info && info->words == command.words, qPrintable(command.words));
        }
    }
};

QTEST_GUILESS_MAIN(TestCommandTable)
#include "tst_commandtable.moc"
