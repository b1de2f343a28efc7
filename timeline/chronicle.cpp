// SPDX-License-Identifier: MIT
#include "timeline/chronicle.h"

#include "protocol/commands.h"
#include "protocol/mechanism.h"
#include "protocol/report.h"

#include <algorithm>
#include <cmath>

namespace timeline {

namespace {

using protocol::Deed;
using protocol::ModuleId;

quint8 bandOf(ModuleId module)
{
    const auto found = std::find(kBands.begin(), kBands.end(), module);
    return static_cast<quint8>(found == kBands.end() ? kChipBand : found - kBands.begin());
}

Mark markOf(Deed deed)
{
    return deed == Deed::Clear ? Mark::Clear : Mark::Injection;
}

} // namespace

QString nameOfBand(int band)
{
    const ModuleId module = kBands.at(static_cast<std::size_t>(band));
    if (module == ModuleId::Fccu)
        return QStringLiteral("Others");
    if (module == ModuleId::Reset)
        return QStringLiteral("Chip");
    return QString(protocol::moduleName(static_cast<quint8>(module))).toUpper();
}

int binOf(float us)
{
    if (!(us > 0))
        return 0;
    const double decades = std::log10(static_cast<double>(us)) - kFirstDecade;
    return static_cast<int>(std::clamp(decades * kBinsPerDecade, 0.0, kBins - 1.0));
}

double startOfBin(int bin)
{
    return std::pow(10.0, static_cast<double>(bin) / kBinsPerDecade + kFirstDecade);
}

// What is told late, from another thread's clock or out of a file, is told as soon as it could be.
qint64 Chronicle::noted(qint64 time)
{
    if (isEmpty())
        m_first = time;
    m_last = std::max(m_last, time);
    return m_last;
}

void Chronicle::add(int band, Mark mark, qint64 time)
{
    m_bands[static_cast<std::size_t>(band)].times[static_cast<std::size_t>(mark)].push_back(time);
}

void Chronicle::addFault(qint64 time, const protocol::fccu::FaultEvent &fault)
{
    const qint64 at = noted(time);
    const quint8 band = bandOf(protocol::mechanismOf(fault.id));
    add(band, Mark::Fault, at);
    m_bands[band].faultNumbers.push_back(static_cast<quint32>(m_faults.size()));
    m_bands[band].bins.push_back(static_cast<quint8>(binOf(fault.time)));
    m_faults.push_back({at, fault.time, fault.id, band});
}

void Chronicle::addCommand(qint64 time, const QString &line)
{
    const protocol::CommandInfo *command = protocol::commandOf(line);
    const Deed deed = command ? protocol::deedOf(*command) : Deed::None;
    if (deed == Deed::None)
        return;
    const qint64 at = noted(time);
    const quint8 band = bandOf(command->module);
    add(band, markOf(deed), at);
    m_happenings.push_back({at, band, line + QStringLiteral(": ") + command->help});
}

void Chronicle::addRestart(qint64 time)
{
    const qint64 at = noted(time);
    add(kChipBand, Mark::Restart, at);
    m_happenings.push_back({at, kChipBand, QStringLiteral("restart")});
}

void Chronicle::beginGap(qint64 time, const QString &reason)
{
    if (m_gaps.empty() || m_gaps.back().to != 0)
        m_gaps.push_back({noted(time), 0, reason});
}

void Chronicle::endGap(qint64 time)
{
    if (!m_gaps.empty() && m_gaps.back().to == 0)
        m_gaps.back().to = noted(time);
}

const std::vector<qint64> &Chronicle::times(int band, Mark mark) const
{
    return m_bands.at(static_cast<std::size_t>(band)).times.at(static_cast<std::size_t>(mark));
}

const std::vector<quint32> &Chronicle::faultNumbers(int band) const
{
    return m_bands.at(static_cast<std::size_t>(band)).faultNumbers;
}

Histogram Chronicle::histogram(int band, qint64 from, qint64 to) const
{
    const std::vector<qint64> &when = times(band, Mark::Fault);
    const auto begin = std::lower_bound(when.begin(), when.end(), from) - when.begin();
    const auto end = std::lower_bound(when.begin(), when.end(), to) - when.begin();
    const std::vector<quint8> &bins = m_bands.at(static_cast<std::size_t>(band)).bins;
    Histogram counts = {};
    std::for_each(bins.begin() + begin, bins.begin() + std::max(begin, end), [&counts](quint8 bin) { ++counts[bin]; });
    return counts;
}

} // namespace timeline
