// SPDX-License-Identifier: MIT
#include "cli/modules.h"

#include "protocol/report.h"

#include <algorithm>
#include <iterator>

namespace {

using Id = protocol::ModuleId;

// clang-format off
constexpr Module table[] = {
    {Id::Text},
    {Id::Sys,     "get 1"},
    {Id::Cmu,     "get 3|get 4", 5, 5, "cmu 16"},
    {Id::Xbic,    "get 11",      7, 5, "xbic 4"},
    {Id::Smpu,    "get 5",       6, 6, "smpu 4"},
    {Id::RegProt, "get 8"},
    {Id::Crc},
    {Id::Memu,    "memu 1",      9, 7, "memu 1", "100|100|100 55|100 55|100 55|100 55"},
    {Id::Intcm,   "get 7",       8, 3, "intcm 2"},
    {Id::Bist},
    {Id::Pmc,     "get 6",       4, 4, "pmc 6"},
    {Id::Swt,     "get 2",       3, 2},
    {Id::Fccu,    "get 0"},
    {Id::Reset,   "get 9",       0, 2}, // each reset has an inject command of its own
    {Id::Vg5k,    "get 10"},
    {Id::Cse},
    {Id::Spt,     "spt 1",      10, 2, "spt 1"},
};
// clang-format on
static_assert(std::size(table) == protocol::kModuleCount);

} // namespace

std::span<const Module> modules()
{
    return table;
}

QString nameOf(const Module &module)
{
    return protocol::moduleName(static_cast<quint8>(module.id));
}

bool comesUnasked(const frameData &frame)
{
    return frame.moduleId == static_cast<quint8>(Id::Spt) && frame.dataType == protocol::spt::FrameCountReport;
}

QString injectCommand(const Module &module, int number, const QStringList &arguments)
{
    QStringList words{QStringLiteral("inject")};
    if (module.injection > 0)
        words.append(QString::number(module.injection));
    words.append(QString::number(number));
    if (arguments.isEmpty())
        words.append(QString::fromLatin1(module.arguments).split(QLatin1Char('|')).value(number - 1));
    words += arguments;
    words.removeAll(QString());
    return words.join(QLatin1Char(' '));
}

const Module *moduleOf(int id)
{
    return id >= 0 && id < protocol::kModuleCount ? &table[id] : nullptr;
}

const Module *moduleOf(const QString &word)
{
    bool isNumber = false;
    const int id = word.toInt(&isNumber);
    if (isNumber)
        return moduleOf(id);
    const auto found = std::find_if(std::begin(table), std::end(table), [&word](const Module &module) {
        return word.compare(nameOf(module), Qt::CaseInsensitive) == 0;
    });
    return found == std::end(table) ? nullptr : found;
}

QStringList moduleNames(bool (*fits)(const Module &))
{
    QStringList names;
    for (const Module &module : table) {
        if (!fits || fits(module))
            names.append(nameOf(module));
    }
    return names;
}
