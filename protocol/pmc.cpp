// SPDX-License-Identifier: MIT
#include "protocol/pmc.h"

namespace protocol::pmc {

namespace {

constexpr std::array faultTexts = {"Temperature Sensor fault", "HVD fault", "LVD fault", "Self Test fault"};

} // namespace

DetectorBits decodeDetectors(const QByteArray &payload)
{
    return decode<Detectors>(payload).bits;
}

SelfTest decodeSelfTest(const QByteArray &payload)
{
    return decode<SelfTest>(payload);
}

FaultRecord decodeFaultRecord(const QByteArray &payload)
{
    return decode<FaultRecord>(payload);
}

QString faultText(quint8 code)
{
    return code < faultTexts.size() ? QString::fromLatin1(faultTexts[code]) : QString();
}

QString detectorName(quint8 code)
{
    // 3 is not used.
    constexpr std::array names = {"all",       "core LVD", "core HVD", "",        "PMC LVD",
                                  "flash LVD", "ADC LVD",  "PLL LVD",  "I/O LVD", "ADC HVD"};
    return code < names.size() ? QString::fromLatin1(names[code]) : QString();
}

QStringList describe(const FaultRecord &record)
{
    QStringList lines = {QStringLiteral("Fault Number: %1\r\n").arg(record.count)};
    int number = 0;
    for (const FaultCode &fault : record.faults)
        lines.append(QStringLiteral("Fault %1:").arg(++number) + faultText(fault.code) + QStringLiteral("\r\n"));
    return lines;
}

QString selfTestCommand(Detector detector)
{
    return QStringLiteral("pmc 2 %1").arg(static_cast<int>(detector));
}

QString switchCommand(Detector detector, bool on)
{
    return QStringLiteral("pmc %1 %2").arg(on ? 3 : 4).arg(static_cast<int>(detector));
}

QString injectCommand(int fault)
{
    return QStringLiteral("inject 4 %1").arg(fault);
}

} // namespace protocol::pmc
