// SPDX-License-Identifier: MIT
#include "protocol/report.h"

#include <array>

// Outside the namespace, so that only a module's own wording is found, not that of any report.
namespace {

template <class S> QStringList wordsFor(const S &report)
{
    if constexpr (requires { describe(report); }) {
        return describe(report);
    } else {
        QStringList lines;
        for (const protocol::Field &field : protocol::fieldsOf(report))
            lines.append(field.name + QStringLiteral(": ") + protocol::valueText(field));
        return lines;
    }
}

} // namespace

namespace protocol {

namespace {

struct ModuleNames {
    const char *name;
    const char *title;
};

// clang-format off
constexpr std::array<ModuleNames, kModuleCount> modules = {{
    {"text", "Text messages"},
    {"sys", "System"},
    {"cmu", "Clock monitor units"},
    {"xbic", "Crossbar integrity checkers"},
    {"smpu", "System memory protection units"},
    {"regp", "Register protection"},
    {"crc", "CRC unit"},
    {"memu", "Memory error management unit"},
    {"intcm", "Interrupt monitor"},
    {"bist", "Built-in self-tests"},
    {"pmc", "Power management controller"},
    {"swt", "Software watchdogs"},
    {"fccu", "Fault collection and control unit"},
    {"reset", "Resets"},
    {"vg5k", "External safety power chip"},
    {"cse", "Cryptographic services engine"},
    {"spt", "Signal processing accelerator"},
}};
// clang-format on

template <class S> ReportInfo row(ModuleId module, quint8 type, const char *name, const char *title)
{
    return {module,
            type,
            QLatin1String(name),
            QLatin1String(title),
            [](const QByteArray &payload) { return Report(decode<S>(payload)); },
            [] { return infoOf<S>(); }};
}

using InfosByType = std::array<const ReportInfo *, 256>;

// Text messages have any type.
std::array<InfosByType, kModuleCount> infosByFrame()
{
    std::array<InfosByType, kModuleCount> table = {};
    for (const ReportInfo &info : reportInfos()) {
        InfosByType &types = table.at(static_cast<std::size_t>(info.module));
        if (info.module == ModuleId::Text)
            types.fill(&info);
        else
            types.at(info.type) = &info;
    }
    return table;
}

const ReportInfo *infoOf(quint8 moduleId, quint8 type)
{
    static const std::array<InfosByType, kModuleCount> table = infosByFrame();
    return moduleId < table.size() ? table.at(moduleId).at(type) : nullptr;
}

} // namespace

const std::vector<ReportInfo> &reportInfos()
{
    // clang-format off
    static const std::vector<ReportInfo> infos = {
        row<TextMessage>(ModuleId::Text, 0, "text", "text message"),
        row<sys::OperatingMode>(ModuleId::Sys, sys::OperatingModeReport, "operating_mode", "operating mode"),
        row<sys::FirmwareVersion>(ModuleId::Sys, sys::FirmwareVersionReport, "firmware", "firmware version"),
        row<sys::RestartNotice>(ModuleId::Sys, sys::RestartNoticeReport, "restart", "restart notice"),
        row<cmu::Text>(ModuleId::Cmu, cmu::TextReport, "cmu_text", "text message"),
        row<cmu::CmuRecord>(ModuleId::Cmu, cmu::MonitorReport, "cmu", "state of one monitor"),
        row<cmu::FaultRecord>(ModuleId::Cmu, cmu::FaultRecordReport, "cmu_record", "fault record"),
        row<cmu::ClockStatus>(ModuleId::Cmu, cmu::ClockReport, "clock_status", "clock status"),
        row<xbic::Enables>(ModuleId::Xbic, xbic::EnableReport, "xbic", "checkers that are on"),
        row<xbic::FaultRecord>(ModuleId::Xbic, xbic::FaultRecordReport, "xbic_record", "fault record"),
        row<smpu::Region>(ModuleId::Smpu, smpu::RegionReport, "smpu", "one region"),
        row<smpu::FaultRecord>(ModuleId::Smpu, smpu::FaultRecordReport, "smpu_record", "fault record"),
        row<regp::Status>(ModuleId::RegProt, regp::StatusReport, "regp", "locks and register"),
        row<crc::Result>(ModuleId::Crc, crc::ResultReport, "crc", "result"),
        row<memu::FaultRecord>(ModuleId::Memu, memu::FaultRecordReport, "memu_record", "fault record"),
        row<intcm::Status>(ModuleId::Intcm, intcm::StatusReport, "intcm", "channels"),
        row<intcm::FaultRecord>(ModuleId::Intcm, intcm::FaultRecordReport, "intcm_record", "fault record"),
        row<bist::Results>(ModuleId::Bist, bist::ResultReport, "bist", "results"),
        row<pmc::Detectors>(ModuleId::Pmc, pmc::DetectorReport, "pmc", "detectors that are on"),
        row<pmc::FaultRecord>(ModuleId::Pmc, pmc::FaultRecordReport, "pmc_record", "fault record"),
        row<pmc::SelfTest>(ModuleId::Pmc, pmc::SelfTestReport, "pmc_self_test", "result of a self-test"),
        row<swt::Status>(ModuleId::Swt, swt::StatusReport, "swt", "one watchdog"),
        row<fccu::UnitState>(ModuleId::Fccu, fccu::StateReport, "fault_state", "state of the unit"),
        row<fccu::FaultEvent>(ModuleId::Fccu, fccu::FaultReport, "fault", "fault"),
        row<reset::Reasons>(ModuleId::Reset, reset::ReasonReport, "reset", "reset reasons"),
        row<reset::Escalation>(ModuleId::Reset, reset::EscalationReport, "escalation", "thresholds of the escalation"),
        row<vg5k::Report>(ModuleId::Vg5k, vg5k::ItemReport, "vg5k", "one item"),
        row<cse::Status>(ModuleId::Cse, cse::StatusReport, "cse_status", "status of the engine"),
        row<cse::Result>(ModuleId::Cse, cse::ResultReport, "cse_result", "result of an operation"),
        row<spt::FrameCount>(ModuleId::Spt, spt::FrameCountReport, "spt", "frame counter"),
        row<spt::FaultRecord>(ModuleId::Spt, spt::FaultRecordReport, "spt_record", "fault record"),
    };
    // clang-format on
    return infos;
}

const ReportInfo &infoOf(const Report &report)
{
    return reportInfos()[report.index()];
}

std::optional<Report> decode(quint8 moduleId, quint8 type, const QByteArray &payload)
{
    const ReportInfo *const info = infoOf(moduleId, type);
    return info ? std::optional(info->decode(payload)) : std::nullopt;
}

QVector<Field> fields(const Report &report)
{
    return std::visit([](const auto &kind) { return fieldsOf(kind); }, report);
}

QStringList describe(const Report &report)
{
    return std::visit([](const auto &kind) { return wordsFor(kind); }, report);
}

QLatin1String moduleName(quint8 moduleId)
{
    return QLatin1String(moduleId < modules.size() ? modules[moduleId].name : "");
}

QLatin1String moduleTitle(quint8 moduleId)
{
    return QLatin1String(moduleId < modules.size() ? modules[moduleId].title : "");
}

} // namespace protocol
