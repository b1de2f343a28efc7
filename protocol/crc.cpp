// SPDX-License-Identifier: MIT
#include "protocol/crc.h"

#include "protocol/hextext.h"

#include <algorithm>

namespace protocol::crc {

Result decodeResult(const QByteArray &payload)
{
    return decode<Result>(payload);
}

QString valueText(quint32 value, int polynomial)
{
    switch (polynomial) {
    case Crc16Ccitt:
        return hexText(value & 0xFFFF, 4);
    case Crc32Itu:
        return hexText(value, 8);
    default:
        return hexText(value & 0xFF, 2);
    }
}

QString dataText(const Result &result)
{
    static constexpr char digits[] = "0123456789ABCDEF";
    const quint32 missing = result.size - static_cast<quint32>(result.data.size());
    const auto zeros = static_cast<int>(std::min(missing, kMaxZeros));
    QByteArray text;
    text.reserve((result.data.size() + zeros) * 9);
    for (const char byte : QByteArray(result.data + QByteArray(zeros, '\0'))) {
        const auto bits = static_cast<unsigned char>(byte);
        text.append("0x").append(digits[bits >> 4]).append(digits[bits & 15]).append("h    ");
    }
    if (missing > kMaxZeros)
        text.append("\n... and ").append(QByteArray::number(missing - kMaxZeros)).append(" more zeros");
    return QString::fromLatin1(text);
}

QString timeText(float microseconds)
{
    return QStringLiteral("Calculate Time:") + QString::number(static_cast<double>(microseconds), 'f', 6);
}

QStringList describe(const Result &result, const Condition &condition)
{
    return {QStringLiteral("\r\nCRC calculate condition:\r\nCalculate Polynomials: ") + condition.polynomialName,
            QStringLiteral("Calculate Instance: ") + condition.instance,
            QStringLiteral("Calculate Channel: ") + condition.channel,
            QStringLiteral("CRC calculate data size: %1 \r\nData:\r\n").arg(result.size) + dataText(result),
            QStringLiteral("Calculate Result:") + valueText(result.value, condition.polynomial),
            timeText(result.time)};
}

QString command(int polynomial, int instance, int channel)
{
    return QStringLiteral("crc %1 %2 %3").arg(polynomial + 1).arg(instance).arg(channel);
}

} // namespace protocol::crc
