// SPDX-License-Identifier: MIT
// A report of any module: decoded, named field by field, and put into words. What every program with an interest in the
// board's frames begins with.
#pragma once

#include "protocol/bist.h"
#include "protocol/cmu.h"
#include "protocol/crc.h"
#include "protocol/cse.h"
#include "protocol/fccu.h"
#include "protocol/field.h"
#include "protocol/intcm.h"
#include "protocol/memu.h"
#include "protocol/moduleid.h"
#include "protocol/pmc.h"
#include "protocol/regp.h"
#include "protocol/reset.h"
#include "protocol/smpu.h"
#include "protocol/spt.h"
#include "protocol/swt.h"
#include "protocol/sys.h"
#include "protocol/textmessage.h"
#include "protocol/vg5k.h"
#include "protocol/xbic.h"

#include <QStringList>

#include <optional>
#include <variant>
#include <vector>

namespace protocol {

/// One alternative per kind of report, in the order of modules and report types.
using Report =
    std::variant<TextMessage, sys::OperatingMode, sys::FirmwareVersion, sys::RestartNotice, cmu::Text, cmu::CmuRecord,
                 cmu::FaultRecord, cmu::ClockStatus, xbic::Enables, xbic::FaultRecord, smpu::Region, smpu::FaultRecord,
                 regp::Status, crc::Result, memu::FaultRecord, intcm::Status, intcm::FaultRecord, bist::Results,
                 pmc::Detectors, pmc::FaultRecord, pmc::SelfTest, swt::Status, fccu::UnitState, fccu::FaultEvent,
                 reset::Reasons, reset::Escalation, vg5k::Report, cse::Status, cse::Result, spt::FrameCount,
                 spt::FaultRecord>;

/// A kind of report.
struct ReportInfo {
    ModuleId module = ModuleId::Text;
    quint8 type = 0; // report type, byte 5 of a frame; text messages have any
    QLatin1String name;
    QLatin1String title;
    Report (*decode)(const QByteArray &payload) = nullptr;
    QVector<FieldInfo> (*fields)() = nullptr;
};

/// All kinds, by the variant's index.
const std::vector<ReportInfo> &reportInfos();
const ReportInfo &infoOf(const Report &report);

/// The report in a frame; none where module or type are unknown.
std::optional<Report> decode(quint8 moduleId, quint8 type, const QByteArray &payload);

QVector<Field> fields(const Report &report);

/// Paragraphs for people: those of the module's own wording, or a line per field.
QStringList describe(const Report &report);

/// "cmu", as in commands, and "Clock monitor units"; empty for identifiers that are not in use.
QLatin1String moduleName(quint8 moduleId);
QLatin1String moduleTitle(quint8 moduleId);

} // namespace protocol
