// SPDX-License-Identifier: MIT
#include "protocol/crc.h"

#include "protocol/frame.h"
#include "protocol/hextext.h"
#include "protocol/payload.h"

#include <algorithm>

namespace protocol::crc {

Result decodeResult(const QByteArray &payload)
{
    const PayloadReader read(payload);
    Result result;
    result.size = read.u32be(0);
    const int size = static_cast<int>(std::min<quint32>(result.size, kMaxPayloadSize)); // a payload ends before
    result.data = payload.mid(4, size);
    result.data.append(QByteArray(std::min(size - result.data.size(), kMaxZeros), '\0'));
    result.value = read.u32be(4 + size);
    result.time = read.f32be(8 + size);
    return result;
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
    QByteArray text;
    text.reserve(result.data.size() * 9);
    for (const char byte : result.data) {
        const auto bits = static_cast<unsigned char>(byte);
        text.append("0x").append(digits[bits >> 4]).append(digits[bits & 15]).append("h    ");
    }
    if (const quint32 more = result.size - static_cast<quint32>(result.data.size()); more > 0)
        text.append("\n... and ").append(QByteArray::number(more)).append(" more zeros");
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
