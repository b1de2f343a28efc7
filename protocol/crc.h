// SPDX-License-Identifier: MIT
// Checksum unit.
#pragma once

#include "protocol/layout.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace protocol::crc {

enum ReportType : quint8 { ResultReport = 3 };

/// Hard-wired polynomials in the order of the selector.
enum Polynomial { Crc8Vda = 0, Crc16Ccitt = 1, Crc32Itu = 2, Crc8H2f = 3 };

/// A damaged size announces up to four billion bytes: of those that the payload lacks only so many are listed.
inline constexpr quint32 kMaxZeros = 4096;

struct Result {
    quint32 size = 0; // announced number of data bytes
    QByteArray data;  // those of them that the payload has; the others are 0
    quint32 value = 0;
    float time = 0; // microseconds

    bool operator==(const Result &) const = default;
};

// clang-format off
inline constexpr auto kResultFields = rowsOf<Result>({
    {"size", u32be(0), into<&Result::size>, {.meaning = "number of data bytes", .unit = "bytes"}},
    {"data", coded(Coding::Data, 4, 0), into<&Result::data>, {.meaning = "the data bytes"}},
    {"value", behindData(u32be(4)), into<&Result::value>,
     {.meaning = "checksum; its low 8, 16 or 32 bits, by the polynomial", .hexadecimal = true}},
    {"time", behindData(f32be(8)), into<&Result::time>, {.meaning = "time of the calculation", .unit = "us"}},
});
// clang-format on
constexpr const auto &layoutOf(const Result *)
{
    return kResultFields;
}

Result decodeResult(const QByteArray &payload);

/// "0x29B1": as many digits as the selected polynomial is wide.
QString valueText(quint32 value, int polynomial);
/// The data bytes as the log lists them, in one run; a line behind them tells how many zeros are left out.
QString dataText(const Result &result);

/// "Calculate Time:1.500000"
QString timeText(float microseconds);

/// The parts of a request that its result does not repeat: the polynomial and the texts of the selections.
struct Condition {
    int polynomial = Crc32Itu;
    QString polynomialName;
    QString instance;
    QString channel;
};
/// Paragraphs of a result in the log.
QStringList describe(const Result &result, const Condition &condition);

/// "crc 3 1 1": the polynomial counted from 1, instance and channel from 0.
QString command(int polynomial, int instance, int channel);

} // namespace protocol::crc
