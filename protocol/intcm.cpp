// SPDX-License-Identifier: MIT
#include "protocol/intcm.h"

#include <array>

namespace protocol::intcm {

namespace {

constexpr std::array coreNames = {"K4(0)", "K7a(1)", "K7b(2)"};
constexpr std::array modeNames = {"NONE", "IACK", "EOI", "SW"};
static_assert(coreNames.size() == kCoreCount);

template <std::size_t N> QString nameIn(const std::array<const char *, N> &names, quint8 code)
{
    return code < N ? QString::fromLatin1(names[code]) : QString::number(code);
}

} // namespace

std::vector<Channel> decodeChannels(const QByteArray &payload)
{
    return decode<Status>(payload).channels;
}

QString coreName(quint8 core)
{
    return nameIn(coreNames, core);
}

QString modeName(quint8 mode)
{
    return nameIn(modeNames, mode);
}

QStringList describe(const std::vector<Channel> &faults)
{
    QStringList lines = {QStringLiteral("Fault Number: %1\r\n").arg(faults.size())};
    int number = 0;
    for (const Channel &fault : faults) {
        lines << QStringLiteral("Fault %1").arg(++number) << QStringLiteral("Description:")
              << QStringLiteral("Core Channel: ") + coreName(fault.core)
              << QStringLiteral("Core Index: %1").arg(fault.index) << QStringLiteral("Mode: ") + modeName(fault.mode)
              << QStringLiteral("Irq: %1").arg(fault.irq)
              << QStringLiteral("Latency: %1 us").arg(fault.latency / kCountsPerUs)
              << QStringLiteral("Timer: %1.008 us\r\n").arg(fault.timer / kCountsPerUs);
    }
    return lines;
}

QString configureCommand(const QString &mode, int core, int index, const QString &latency, const QString &irq)
{
    // Joined, not formatted: a typed "%1" is text like any other.
    return QStringList{QStringLiteral("intcm"), mode, QString::number(core), QString::number(index), latency, irq}.join(
        QLatin1Char(' '));
}

QString closeCommand(int core, int index)
{
    return QStringLiteral("intcm 4 %1 %2").arg(core).arg(index);
}

QString injectCommand(int core)
{
    return QStringLiteral("inject 8 %1").arg(core + 1);
}

} // namespace protocol::intcm
