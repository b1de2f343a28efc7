// SPDX-License-Identifier: MIT
// Power management controller: voltage detectors.
#pragma once

#include "protocol/latin1.h"
#include "protocol/layout.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <vector>

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

struct Detectors {
    DetectorBits bits = {};

    bool operator==(const Detectors &) const = default;
};

struct SelfTest {
    quint8 code = 0; // Detector; 0: all of them
    bool passed = false;

    bool operator==(const SelfTest &) const = default;
};

struct FaultCode {
    quint8 code = 0;

    bool operator==(const FaultCode &) const = default;
};

struct FaultRecord {
    quint8 count = 0;
    std::vector<FaultCode> faults; // `count` of them, 0 where the payload had none
    std::optional<quint8> shown;   // code in byte 1, also behind a count of 0; none where both are missing

    bool operator==(const FaultRecord &) const = default;
};

DetectorBits decodeDetectors(const QByteArray &payload);
/// A result that is missing is a failure, an empty payload one of all detectors.
SelfTest decodeSelfTest(const QByteArray &payload);
FaultRecord decodeFaultRecord(const QByteArray &payload);

/// "Temperature Sensor fault", ...; codes beyond the table have no text.
QString faultText(quint8 code);
/// Paragraphs of a fault record.
QStringList describe(const FaultRecord &record);
/// "core LVD"; 0 is "all"
QString detectorName(quint8 code);

// clang-format off
inline constexpr auto kDetectorsFields = rowsOf<Detectors>({
    {"element_0", bit(0, 0), element<&Detectors::bits, 0>, {.meaning = "drives nothing"}},
    {"core_lvd", bit(1, 0), element<&Detectors::bits, 1>, {.meaning = "core LVD is on, and with it the PLL LVD"}},
    {"core_hvd", bit(1, 1), element<&Detectors::bits, 2>, {.meaning = "core HVD is on"}},
    {"adc_lvd", bit(1, 2), element<&Detectors::bits, 3>, {.meaning = "ADC LVD is on"}},
    {"adc_hvd", bit(1, 3), element<&Detectors::bits, 4>, {.meaning = "ADC HVD is on"}},
    {"flash_lvd", bit(1, 4), element<&Detectors::bits, 5>, {.meaning = "flash LVD is on"}},
    {"element_6", bit(1, 5), element<&Detectors::bits, 6>, {.meaning = "drives nothing"}},
    {"io_lvd", bit(1, 6), element<&Detectors::bits, 7>, {.meaning = "I/O LVD is on"}},
    {"pmc_lvd", bit(1, 7), element<&Detectors::bits, 8>, {.meaning = "PMC LVD is on"}},
});
inline constexpr auto kSelfTestFields = rowsOf<SelfTest>({
    {"code", u8(0), into<&SelfTest::code>, {.meaning = "detector; 0: all", .words = detectorName}},
    {"passed", u8(1), into<&SelfTest::passed>, {.meaning = "the self-test has passed: not 0"}},
});
inline constexpr auto kFaultCodeFields = rowsOf<FaultCode>({
    {"code", u8(0), into<&FaultCode::code>, {.meaning = "what is wrong", .words = faultText}},
});
constexpr const auto &layoutOf(const FaultCode *) { return kFaultCodeFields; }
inline constexpr auto kFaultRecordFields = rowsOf<FaultRecord>({
    {"count", u8(0), into<&FaultRecord::count>, {.meaning = "number of faults"}},
    {"faults", counted(1, 1), listOf<&FaultRecord::faults>, {.meaning = "the faults"}},
    {"shown", coded(Coding::Optional, 1), into<&FaultRecord::shown>, {.meaning = "the first fault again, also where there is none", .words = faultText}},
});
// clang-format on
constexpr const auto &layoutOf(const Detectors *)
{
    return kDetectorsFields;
}
constexpr const auto &layoutOf(const SelfTest *)
{
    return kSelfTestFields;
}
constexpr const auto &layoutOf(const FaultRecord *)
{
    return kFaultRecordFields;
}

/// "pmc 2 7", "pmc 3 7" and "pmc 4 7"
QString selfTestCommand(Detector detector);
QString switchCommand(Detector detector, bool on);
inline constexpr QLatin1String kGetStatus = "get 6"_l1;
inline constexpr QLatin1String kAllSelfTests = "pmc 1"_l1;
inline constexpr QLatin1String kDefault = "pmc 5"_l1;
inline constexpr QLatin1String kReadFaults = "pmc 6"_l1;
inline constexpr QLatin1String kClearFaults = "pmc 7"_l1;
/// "inject 4 1"; 1 temperature sensor, 2 HVD, 3 LVD, 4 LVD self-test
QString injectCommand(int fault);

} // namespace protocol::pmc
