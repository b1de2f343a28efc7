// SPDX-License-Identifier: MIT
// Checksum unit.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace protocol::crc {

enum ReportType : quint8 { ResultReport = 3 };

/// Hard-wired polynomials in the order of the selector.
enum Polynomial { Crc8Vda = 0, Crc16Ccitt = 1, Crc32Itu = 2, Crc8H2f = 3 };

/// A damaged size announces up to four billion bytes: of those that the payload lacks only so many are kept.
inline constexpr int kMaxZeros = 4096;

struct Result {
    quint32 size = 0; // announced number of data bytes
    QByteArray data;  // those in the payload, and up to kMaxZeros of those beyond it, which are 0
    quint32 value = 0;
    float time = 0; // microseconds

    bool operator==(const Result &) const = default;
};

/// Bytes 0-3 size N, then N data bytes, four of the value, four of the time (float); most significant byte first.
Result decodeResult(const QByteArray &payload);

/// "0x29B1": as many digits as the selected polynomial is wide.
QString valueText(quint32 value, int polynomial);
/// The data bytes as the log lists them, in one run; a line behind them tells how many zeros are left out.
QString dataText(const Result &result);

/// "Calculate Time:1.500000"
QString timeText(float microseconds);

/// What was asked for, as far as the result does not say: a selected polynomial and the texts of the selections.
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
