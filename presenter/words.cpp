// SPDX-License-Identifier: MIT
#include "presenter/words.h"

#include "protocol/commands.h"

#include <QStringList>

namespace presenter {

namespace {

using protocol::ModuleId;

struct Deed {
    const char *words; // that the command begins with
    const char *text;
};

// clang-format off
constexpr Deed deeds[] = {
    {"inject 1", "A functional reset is ordered"},
    {"inject 2", "A destructive reset is ordered"},
    {"inject 3 1", "Nobody serves the watchdog any more"},
    {"inject 3 2", "The watchdog is touched by a stranger"},
    {"inject 4 1", "The temperature goes out of range"},
    {"inject 4 2", "A supply voltage goes too high"},
    {"inject 4 3", "A supply voltage goes too low"},
    {"inject 4 4", "A voltage detector fails its self-test"},
    {"inject 5 1", "The clock MC_CLK becomes too slow"},
    {"inject 5 2", "The clock ADC_CLK becomes too fast"},
    {"inject 5 3", "The clock SPI_CLK is taken away"},
    {"inject 5 4", "The limits of MC_CLK move above it"},
    {"inject 5 5", "The limits of MC_CLK move below it"},
    {"inject 6 1", "Software writes where it must not"},
    {"inject 6 2", "Software reads flash it must not read"},
    {"inject 6 3", "Software writes to the test flash"},
    {"inject 6 4", "Software writes to the EEPROM"},
    {"inject 6 5", "Software writes to the program flash"},
    {"inject 6 6", "A core writes to another core's memory"},
    {"inject 7", "A transfer on a crossbar is spoilt"},
    {"inject 8", "An interrupt is held back"},
    {"inject 9 1", "One bit in the flash flips"},
    {"inject 9 2", "Two bits in the flash flip"},
    {"inject 9 3", "One bit in peripheral RAM flips"},
    {"inject 9 4", "Two bits in peripheral RAM flip"},
    {"inject 9 5", "One bit in system RAM flips"},
    {"inject 9 6", "Two bits in system RAM flip"},
    {"inject 9 7", "The data cache returns a wrong word"},
    {"inject 10 1", "A bit of the radar's data flips"},
    {"inject 10 2", "The radar's table of factors is spoilt"},
};

struct Monitor {
    ModuleId module;
    const char *name;
    const char *meaning;
};

constexpr Monitor monitors[] = {
    {ModuleId::Cmu, "Clock monitor", "Whatever a wrong clock drives goes wrong."},
    {ModuleId::Xbic, "Crossbar checker", "Spoilt data is noticed before it is used."},
    {ModuleId::Smpu, "Memory protection", "Software stays within its own memory."},
    {ModuleId::Memu, "Memory check", "A memory that forgets is noticed."},
    {ModuleId::Intcm, "Interrupt monitor", "In a radar, right but late is wrong."},
    {ModuleId::Pmc, "Voltage monitor", "Beyond its limits no chip can be trusted."},
    {ModuleId::Swt, "Watchdog", "Software that hangs cannot say so itself."},
    {ModuleId::Spt, "Radar memory check", "A picture from bad memory is no picture."},
    {ModuleId::Reset, "Reset unit", "After a reset the chip tests itself first."},
    {ModuleId::Fccu, "Fault collection", "All faults of the chip are told here."},
};
// clang-format on

const Monitor &rowOf(ModuleId module)
{
    for (const Monitor &row : monitors) {
        if (row.module == module)
            return row;
    }
    return monitors[std::size(monitors) - 1];
}

} // namespace

QString deedInWords(const QString &line)
{
    const protocol::CommandInfo *command = protocol::commandOf(line);
    if (!command)
        return line;
    for (const Deed &deed : deeds) {
        if (command->words == QLatin1String(deed.words))
            return QString::fromUtf8(deed.text);
    }
    const QString help = command->help;
    return help.left(1).toUpper() + help.mid(1);
}

QString monitorOf(ModuleId module)
{
    return QString::fromUtf8(rowOf(module).name);
}

QString meaningOf(ModuleId module)
{
    return QString::fromUtf8(rowOf(module).meaning);
}

QString timeInWords(double us)
{
    if (us >= 1000)
        return QString::fromUtf8("%1 ms").arg(us / 1000, 0, 'f', us >= 10000 ? 0 : 1);
    return QString::fromUtf8("%1 µs").arg(us, 0, 'f', us >= 100 ? 1 : 2);
}

QStringList allSentences()
{
    QStringList all;
    for (const Deed &deed : deeds)
        all.append(QString::fromUtf8(deed.text));
    for (const Monitor &row : monitors)
        all.append(QString::fromUtf8(row.meaning));
    return all;
}

} // namespace presenter
