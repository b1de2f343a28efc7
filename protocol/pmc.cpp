// SPDX-License-Identifier: MIT
#include "protocol/pmc.h"

#include "protocol/payload.h"

namespace protocol::pmc {

namespace {

constexpr std::array faultTexts = {"Temperature Sensor fault", "HVD fault", "LVD fault", "Self Test fault"};

} // namespace

DetectorBits decodeDetectors(const QByteArray &payload)
{
    const PayloadReader read(payload);
    DetectorBits bits = {(read.u8(0) & 1) != 0};
    for (std::size_t k = 1; k < bits.size(); ++k)
        bits[k] = read.u8(1) >> (k - 1) & 1;
    return bits;
}

SelfTest decodeSelfTest(const QByteArray &payload)
{
    const PayloadReader read(payload);
    return {read.u8(0), read.u8(1) != 0};
}

FaultRecord decodeFaultRecord(const QByteArray &payload)
{
    const PayloadReader read(payload);
    FaultRecord record = {read.u8(0), {}, {}};
    if (record.count > 0 || read.size() > 1)
        record.shown = read.u8(1);
    for (int i = 1; i <= record.count; ++i)
        record.codes.append(static_cast<char>(read.u8(i)));
    return record;
}

QString faultText(quint8 code)
{
    return code < faultTexts.size() ? QString::fromLatin1(faultTexts[code]) : QString();
}

QStringList describe(const FaultRecord &record)
{
    QStringList lines = {QStringLiteral("Fault Number: %1\r\n").arg(record.count)};
    for (int i = 0; i < record.codes.size(); ++i)
        lines.append(QStringLiteral("Fault %1:").arg(i + 1) + faultText(static_cast<quint8>(record.codes[i]))
                     + QStringLiteral("\r\n"));
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
