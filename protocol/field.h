// SPDX-License-Identifier: MIT
// A field of a report: its place in the payload, its name and unit, its decoded value.
// A field's name is stable: keys of JSON and filters of network analysers are made of it.
#pragma once

#include <QLatin1String>
#include <QString>
#include <QVariant>
#include <QVector>

namespace protocol {

/// How a field's bytes become its value.
enum class Coding : quint8 {
    Big,         // number, most significant byte first
    Little,      // number, least significant byte first
    Halves,      // two 16-bit halves, the low one first, each with its most significant byte first
    Signed,      // one byte in two's complement; -1 where there is none
    Float,       // IEEE 754 single precision, most significant byte first
    FlagsFirst,  // flags: element 0 is the most significant bit of the first byte
    FlagsNumber, // flags of one number, most significant byte first: element 0 is its least significant bit
    One,         // true when exactly 1
    Restart,     // true when the first byte is 7F or the second FE
    Optional,    // one byte; there is no value where neither it nor a count before it has been sent
    Present,     // true when the payload has the byte
    Latin1,      // text up to its first NUL or the payload's end
    Utf8,        // likewise
    Data,        // as many bytes as the 32-bit number at the start of the payload announces
    Tail,        // the last bytes of the payload, as many as the 16-bit number at `at` announces
    Words,       // words for the first field's value
    Computed,    // worked out from the other fields
    Counted,     // records, as many as the payload's first byte says
    Whole,       // records, as many as the payload has whole ones
};

/// A field's place. Bytes count from the start of the payload, or of the record that the field belongs to; bytes beyond
/// the payload's end read as 0.
struct Place {
    Coding coding = Coding::Big;
    int at = 0;
    int size = 1;            // bytes; of records: bytes of each
    int low = 0;             // lowest bit
    int bits = 0;            // how many, 0: all
    bool behindData = false; // `at` counts from the end of the data before
};

// Places as the tables write them.
constexpr Place u8(int at)
{
    return {Coding::Big, at, 1};
}
constexpr Place s8(int at)
{
    return {Coding::Signed, at, 1};
}
constexpr Place bit(int at, int number)
{
    return {Coding::Big, at, 1, number, 1};
}
constexpr Place bits(int at, int high, int low)
{
    return {Coding::Big, at, 1, low, high - low + 1};
}
constexpr Place u16be(int at)
{
    return {Coding::Big, at, 2};
}
constexpr Place u24be(int at)
{
    return {Coding::Big, at, 3};
}
constexpr Place u32be(int at)
{
    return {Coding::Big, at, 4};
}
constexpr Place u32le(int at)
{
    return {Coding::Little, at, 4};
}
constexpr Place halves(int at)
{
    return {Coding::Halves, at, 4};
}
constexpr Place f32be(int at)
{
    return {Coding::Float, at, 4};
}
constexpr Place flagsFirst(int at, int size)
{
    return {Coding::FlagsFirst, at, size};
}
constexpr Place flagsNumber(int at, int size, int bits = 0)
{
    return {Coding::FlagsNumber, at, size, 0, bits};
}
constexpr Place coded(Coding coding, int at = 0, int size = 1)
{
    return {coding, at, size};
}
constexpr Place counted(int at, int size)
{
    return {Coding::Counted, at, size};
}
constexpr Place whole(int at, int size)
{
    return {Coding::Whole, at, size};
}
constexpr Place behindData(Place place)
{
    place.behindData = true;
    return place;
}

/// A code in words; empty where it has none.
using Words = QString (*)(quint8 code);

/// Meaning and unit of a field.
struct Notes {
    const char *meaning = "";
    const char *unit = "";
    Words words = nullptr;
    int divisor = 0;             // counts per `perDivisor`: the value in words is so many of them
    const char *perDivisor = ""; // unit of the quotient
    bool hexadecimal = false;    // an address or a register
    int scale = 0;               // the bytes are a number of this many per unit
    int onlyWhen = -1;           // the field means something only where the report's first field has this value
};

/// A field of a kind of report.
struct FieldInfo {
    QLatin1String name;
    Place place;
    Notes notes;
    bool isFlag = false;         // true or false
    QVector<FieldInfo> elements; // of records: the fields of one
};

/// A field of one report.
struct Field {
    QLatin1String name;
    /// bool, uint, int, float, QString, QByteArray, or a QVariantList of uint: the elements that are set. Invalid where
    /// there are records.
    QVariant value;
    QLatin1String unit;
    QString text; // the value in words, where it says more than the value
    QVector<QVector<Field>> records;
    bool isRecords = false;
};

/// "4 (EOI)", "12.5 us", "0x40000000", "0 4 7": value, unit and words for people. Empty for records.
QString valueText(const Field &field);

} // namespace protocol
