// SPDX-License-Identifier: MIT
// Crossbar integrity checkers.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace protocol::xbic {

enum ReportType : quint8 { EnableReport = 1, FaultRecordReport = 2 };

inline constexpr int kCheckerCount = 5;
inline constexpr quint8 kCheckerMask = 0x1F;

struct Fault {
    quint8 index = 0; // not shown
    quint8 master = 0;
    quint8 slave = 0;
    quint8 syndrome = 0;
    quint32 address = 0;

    bool operator==(const Fault &) const = default;
};

/// Byte 0: bit n is checker n's enable.
quint8 decodeEnables(const QByteArray &payload);
/// Byte 0 count, then eight bytes a fault: index, master, slave, syndrome, address with its least significant byte first.
std::vector<Fault> decodeFaults(const QByteArray &payload);

/// Paragraphs of a fault record.
QStringList describe(const std::vector<Fault> &faults);

/// "xbic 1 3" and "xbic 2 3"
QString enableCommand(int checker, bool on);
/// "inject 7 4" for checker 3
QString injectCommand(int checker);
inline constexpr QLatin1String kGetEnables("get 11");
inline constexpr QLatin1String kDefault("xbic 3");
inline constexpr QLatin1String kReadFaults("xbic 4");
inline constexpr QLatin1String kClearFaults("xbic 5");

} // namespace protocol::xbic
