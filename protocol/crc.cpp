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
    const int shown = static_cast<int>(std::min<quint32>(result.size, kLargestPayload));
    result.data = payload.mid(4, shown);
    result.data.append(QByteArray(shown - result.data.size(), '\0'));
    result.value = read.u32be(4 + shown);
    result.time = read.f32be(8 + shown);
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

QString dataText(const QByteArray &data)
{
    static constexpr char digits[] = "0123456789ABCDEF";
    QByteArray text;
    text.reserve(data.size() * 9);
    for (const char byte : data) {
        const auto bits = static_cast<unsigned char>(byte);
        text.append("0x").append(digits[bits >> 4]).append(digits[bits & 15]).append("h    ");
    }
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
            QStringLiteral("CRC calculate data size: %1 \r\nData:\r\n").arg(result.size) + dataText(result.data),
            QStringLiteral("Calculate Result:") + valueText(result.value, condition.polynomial),
            timeText(result.time)};
}

QString command(int polynomial, int instance, int channel)
{
    return QStringLiteral("crc %1 %2 %3").arg(polynomial + 1).arg(instance).arg(channel);
}

} // namespace protocol::crc
