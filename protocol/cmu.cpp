// SPDX-License-Identifier: MIT
#include "protocol/cmu.h"

#include "protocol/frame.h"

#include <algorithm>
#include <array>

namespace protocol::cmu {

namespace {

constexpr std::array descriptions = {
    "Description: Higher than CMU%1 reference frequency limit\r\n",
    "Description: Lower than CMU%1 reference frequency limit\r\n",
    "Description: CMU%1 clock loss\r\n",
};

} // namespace

CmuRecord decodeMonitor(const QByteArray &payload)
{
    return decode<CmuRecord>(payload);
}

ClockStatus decodeClock(const QByteArray &payload)
{
    return decode<ClockStatus>(payload);
}

FaultRecord decodeFaultRecord(const QByteArray &payload, quint32 length)
{
    const int size = static_cast<int>(std::clamp<quint32>(length, 1, kMaxPayloadSize));
    return decode<FaultRecord>(payload.leftJustified(size, '\0', true));
}

QString clockSourceName(quint8 code)
{
    switch (code) { // 3 is no source: there is none between the two loops
    case 0:
        return QStringLiteral("IRC_CLK");
    case 1:
        return QStringLiteral("XOSC_CLK");
    case 2:
        return QStringLiteral("PLL0_PHI_CLK");
    case 4:
        return QStringLiteral("PLL1_PHI_CLK");
    default:
        return QStringLiteral("Error");
    }
}

QString kindName(quint8 kind)
{
    constexpr std::array names = {"too high", "too low", "clock loss"};
    return kind < names.size() ? QString::fromLatin1(names[kind]) : QString();
}

QStringList describe(const FaultRecord &record)
{
    QStringList lines = {QStringLiteral("Fault number: %1 \r").arg(record.count)};
    int number = 0;
    for (const FaultEntry &entry : record.entries) {
        lines.append(QStringLiteral("Fault %1 ").arg(++number));
        lines.append(QStringLiteral("CMU ID: %1").arg(entry.monitor));
        if (entry.kind < descriptions.size())
            lines.append(QString::fromLatin1(descriptions[entry.kind]).arg(entry.monitor));
    }
    return lines;
}

QString enableCommand(int monitor, bool on)
{
    return QStringLiteral("cmu %1 %2").arg(on ? 13 : 14).arg(monitor);
}

QString limitCommand(const QString &selected, int upper, int lower)
{
    return selected + QStringLiteral(" %1 %2").arg(upper).arg(lower);
}

QString injectCommand(int fault)
{
    return QStringLiteral("inject 5 %1").arg(fault);
}

} // namespace protocol::cmu
