// SPDX-License-Identifier: MIT
#include "protocol/layout.h"

#include "protocol/frame.h"
#include "protocol/hextext.h"

#include <algorithm>

namespace protocol {

namespace {

int dataSize(const PayloadReader &payload)
{
    return static_cast<int>(std::min<quint32>(payload.u32be(0), kMaxPayloadSize));
}

quint32 big(const PayloadReader &payload, int at, int size)
{
    quint32 number = 0;
    for (int i = 0; i < size; ++i)
        number = number << 8 | payload.u8(at + i);
    return number;
}

QString joined(const QVariantList &elements, const Notes &notes)
{
    QStringList words;
    for (const QVariant &element : elements)
        words.append(wordsOf(element, notes));
    words.removeAll(QString());
    return words.join(QStringLiteral("; "));
}

// A code without a word may come as its number.
QString wordFor(quint8 code, Words words)
{
    const QString word = words(code);
    return word == QString::number(code) ? QString() : word;
}

QString shortest(double value)
{
    return QString::number(value, 'g', 7);
}

} // namespace

int Source::at() const
{
    return start + place.at + (place.behindData ? dataSize(payload) : 0);
}

quint32 Source::number() const
{
    switch (place.coding) {
    case Coding::Little:
        return payload.u32le(at());
    case Coding::Halves:
        return static_cast<quint32>(payload.u16be(at() + 2)) << 16 | payload.u16be(at());
    case Coding::Signed: // wraps around in the member
        return payload.size() > at() ? payload.u8(at()) : 0xFF;
    case Coding::One:
        return payload.u8(at()) == 1;
    case Coding::Restart:
        return payload.u8(at()) == 0x7F || payload.u8(at() + 1) == 0xFE;
    case Coding::Present:
        return payload.size() > at();
    default:
        const quint32 whole = big(payload, at(), place.size) >> place.low;
        return place.bits == 0 ? whole : whole & ((1U << place.bits) - 1);
    }
}

QBitArray Source::flags() const
{
    QBitArray flags(place.bits == 0 ? place.size * 8 : place.bits);
    for (int i = 0; i < flags.size(); ++i) {
        const bool first = place.coding == Coding::FlagsFirst;
        const int byte = first ? i / 8 : place.size - 1 - i / 8;
        const int bit = first ? 7 - i % 8 : i % 8;
        flags.setBit(i, payload.u8(at() + byte) >> bit & 1);
    }
    return flags;
}

QByteArray Source::bytes() const
{
    if (place.coding == Coding::Tail)
        return payload.tail(payload.u16be(at()));
    if (place.coding == Coding::Data)
        return payload.part(at(), dataSize(payload));
    return payload.part(at(), place.size);
}

QString Source::text() const
{
    const QByteArray all = payload.part(at(), payload.size());
    const QByteArray line = all.left(static_cast<int>(qstrnlen(all.constData(), static_cast<uint>(all.size()))));
    return place.coding == Coding::Utf8 ? QString::fromUtf8(line) : QString::fromLatin1(line);
}

int Source::recordCount() const
{
    if (place.coding == Coding::Counted)
        return payload.u8(0);
    return std::max(0, payload.size() - place.at) / place.size;
}

QString wordsOf(const QVariant &value, const Notes &notes)
{
    if (value.type() == QVariant::List)
        return joined(value.toList(), notes);
    if (value.type() == QVariant::String)
        return {};
    if (notes.words)
        return wordFor(static_cast<quint8>(value.toUInt()), notes.words);
    if (notes.hexadecimal)
        return hexText(value.toUInt(), 8);
    if (notes.divisor > 0)
        return QStringLiteral("%1 %2")
            .arg(value.toUInt() / static_cast<uint>(notes.divisor))
            .arg(QLatin1String(notes.perDivisor));
    return {};
}

namespace detail {

QVariantList setElements(const QBitArray &flags)
{
    QVariantList elements;
    for (int i = 0; i < flags.size(); ++i) {
        if (flags.testBit(i))
            elements.append(static_cast<uint>(i));
    }
    return elements;
}

QBitArray reversed(const QBitArray &flags)
{
    QBitArray turned(flags.size());
    for (int i = 0; i < flags.size(); ++i)
        turned.setBit(flags.size() - 1 - i, flags.testBit(i));
    return turned;
}

QVariant partOf(quint8 byte, const Place &place)
{
    const PayloadReader payload(QByteArray(1, static_cast<char>(byte)));
    Place first = place;
    first.at = 0;
    const Source from = {payload, 0, first};
    if (place.coding == Coding::FlagsNumber)
        return setElements(from.flags());
    return place.bits == 1 ? QVariant(from.number() != 0) : QVariant(from.number());
}

} // namespace detail

QString valueText(const Field &field)
{
    QString text;
    switch (field.value.userType()) {
    case QMetaType::QVariantList:
        text = field.value.toStringList().join(QLatin1Char(' '));
        break;
    case QMetaType::Float:
        text = shortest(field.value.toDouble());
        break;
    case QMetaType::QByteArray:
        text = QString::fromLatin1(field.value.toByteArray().toHex(' '));
        break;
    default:
        text = field.value.toString();
        break;
    }
    if (!field.unit.isEmpty())
        text.append(QLatin1Char(' ')).append(field.unit);
    if (!field.text.isEmpty())
        text.append(QLatin1String(" (")).append(field.text).append(QLatin1Char(')'));
    return text;
}

} // namespace protocol
