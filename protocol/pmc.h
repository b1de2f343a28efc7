// SPDX-License-Identifier: MIT
// Power management controller: voltage detectors.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace protocol::pmc {

enum ReportType : quint8 { DetectorReport = 1, FaultRecordReport = 2, SelfTestReport = 4 };

/// Detector codes of the commands; 3 is not used.
enum Detector : quint8 {
    CoreLvd = 1,
    CoreHvd = 2,
    PmcLvd = 4,
    FlashLvd = 5,
    AdcLvd = 6,
    PllLvd = 7,
    IoLvd = 8,
    AdcHvd = 9,
    AllDetectors = 10,
};

/// Elements of the detector report: 0 is bit 0 of byte 0, k is bit k-1 of byte 1.
using DetectorBits = std::array<bool, 9>;

struct SelfTest {
    quint8 code = 0; // Detector; 0: all of them
    bool passed = false;

    bool operator==(const SelfTest &) const = default;
};

struct FaultRecord {
    quint8 count = 0;
    QByteArray codes;            // `count` of them, 0 where the payload had none
    std::optional<quint8> shown; // code in byte 1, also behind a count of 0; none where both are missing

    bool operator==(const FaultRecord &) const = default;
};

DetectorBits decodeDetectors(const QByteArray &payload);
/// Byte 0 detector, 1 result; a result that is missing is a failure, an empty payload one of all detectors.
SelfTest decodeSelfTest(const QByteArray &payload);
/// Byte 0 count, then a fault code a byte.
FaultRecord decodeFaultRecord(const QByteArray &payload);

/// "Temperature Sensor fault", ...; codes beyond the table have no text.
QString faultText(quint8 code);
/// Paragraphs of a fault record.
QStringList describe(const FaultRecord &record);

/// "pmc 2 7", "pmc 3 7" and "pmc 4 7"
QString selfTestCommand(Detector detector);
QString switchCommand(Detector detector, bool on);
inline constexpr QLatin1String kGetStatus("get 6");
inline constexpr QLatin1String kAllSelfTests("pmc 1");
inline constexpr QLatin1String kDefault("pmc 5");
inline constexpr QLatin1String kReadFaults("pmc 6");
inline constexpr QLatin1String kClearFaults("pmc 7");
/// "inject 4 1"; 1 temperature sensor, 2 HVD, 3 LVD, 4 LVD self-test
QString injectCommand(int fault);

} // namespace protocol::pmc
