// SPDX-License-Identifier: MIT
#include "protocol/memu.h"

#include <array>

namespace protocol::memu {

namespace {

constexpr std::array typeTexts = {"memu flash correctable error", "memu flash uncorrectable error",
                                  "memu pram correctable error",  "memu pram uncorrectable error",
                                  "memu sram correctable error",  "memu sram uncorrectable error"};
static_assert(typeTexts.size() == SramUncorrectable + 1);

} // namespace

std::vector<Fault> decodeFaults(const QByteArray &payload)
{
    return decode<FaultRecord>(payload).faults;
}

QString typeText(quint8 type)
{
    return type < typeTexts.size() ? QString::fromLatin1(typeTexts[type]) : QString::number(type);
}

QStringList describe(const std::vector<Fault> &faults)
{
    QStringList lines = {QStringLiteral("Fault Number: %1\r\n").arg(faults.size())};
    int number = 0;
    for (const Fault &fault : faults) {
        lines << QStringLiteral("Fault %1\r\nDescription: %2\r\nFault Address: %3\r\n")
                     .arg(++number)
                     .arg(typeText(fault.type))
                     .arg(fault.address, 8, 16, QLatin1Char('0'));
    }
    return lines;
}

QString injectCommand(Memory memory, bool doubleBit, const QString &arguments)
{
    return QStringLiteral("inject 9 %1 ").arg(1 + 2 * static_cast<int>(memory) + (doubleBit ? 1 : 0)) + arguments;
}

} // namespace protocol::memu
