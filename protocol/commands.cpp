// SPDX-License-Identifier: MIT
#include "protocol/commands.h"

#include "protocol/cmu.h"
#include "protocol/cse.h"
#include "protocol/intcm.h"
#include "protocol/memu.h"
#include "protocol/pmc.h"
#include "protocol/regp.h"
#include "protocol/reset.h"
#include "protocol/smpu.h"
#include "protocol/spt.h"
#include "protocol/swt.h"
#include "protocol/sys.h"
#include "protocol/vg5k.h"
#include "protocol/xbic.h"

#include <array>

namespace protocol {

namespace {

constexpr QLatin1String operator""_l(const char *text, std::size_t size)
{
    return QLatin1String(text, static_cast<int>(size));
}

// Constants of the modules may end in the blank before their argument.
constexpr QLatin1String wordsOf(QLatin1String command)
{
    const bool blank = command.size() > 0 && command.data()[command.size() - 1] == ' ';
    return QLatin1String(command.data(), command.size() - (blank ? 1 : 0));
}

constexpr CommandInfo plain(ModuleId module, QLatin1String command, QLatin1String help, QLatin1String answer = {})
{
    return {wordsOf(command), {}, module, help, answer};
}

constexpr auto kFault = "fault_state fault"_l;

// clang-format off
constexpr std::array commands = std::to_array<CommandInfo>({
    plain(ModuleId::Sys, sys::kGetGreeting, "greeting; state of the fault collection unit"_l, "text fault_state"_l),
    plain(ModuleId::Sys, sys::kGetMode, "operating mode and firmware version"_l, "firmware operating_mode"_l),
    plain(ModuleId::Sys, sys::kFunctionalReset, "functional reset"_l, "restart reset"_l),
    plain(ModuleId::Sys, sys::kDestructiveReset, "destructive reset; takes the hard lock off"_l, "restart reset"_l),

    plain(ModuleId::Cmu, cmu::kGetClock, "clock generators and measurement of the internal oscillator"_l, "clock_status"_l),
    plain(ModuleId::Cmu, cmu::kGetMonitors, "all clock monitors, a report for each"_l, "cmu"_l),
    {"cmu"_l, "<monitor 0-12> <upper MHz> <lower MHz>"_l, ModuleId::Cmu, "set the limits of a monitor"_l, "cmu"_l},
    {"cmu 13"_l, "<monitor 0-12>"_l, ModuleId::Cmu, "switch a monitor on"_l, "cmu"_l},
    {"cmu 14"_l, "<monitor 0-12>"_l, ModuleId::Cmu, "switch a monitor off"_l, "cmu"_l},
    plain(ModuleId::Cmu, cmu::kDefault, "all monitors to their defaults"_l, "cmu"_l),
    plain(ModuleId::Cmu, cmu::kReadFaults, "clock fault record"_l, "cmu_record"_l),
    plain(ModuleId::Cmu, cmu::kClearFaults, "clear the clock faults"_l),
    plain(ModuleId::Cmu, "inject 5 1"_l, "MC_CLK slower than its lower limit"_l, kFault),
    plain(ModuleId::Cmu, "inject 5 2"_l, "ADC_CLK faster than its upper limit"_l, kFault),
    plain(ModuleId::Cmu, "inject 5 3"_l, "loss of SPI_CLK"_l, kFault),
    plain(ModuleId::Cmu, "inject 5 4"_l, "limits of MC_CLK moved above its frequency"_l, kFault),
    plain(ModuleId::Cmu, "inject 5 5"_l, "limits of MC_CLK moved below its frequency"_l, kFault),

    plain(ModuleId::Xbic, xbic::kGetEnables, "which crossbar checkers are on"_l, "xbic"_l),
    {"xbic 1"_l, "<checker 0-4>"_l, ModuleId::Xbic, "switch a checker on"_l, "xbic"_l},
    {"xbic 2"_l, "<checker 0-4>"_l, ModuleId::Xbic, "switch a checker off"_l, "xbic"_l},
    plain(ModuleId::Xbic, xbic::kDefault, "all checkers to their defaults"_l, "xbic"_l),
    plain(ModuleId::Xbic, xbic::kReadFaults, "crossbar fault record"_l, "xbic_record"_l),
    plain(ModuleId::Xbic, xbic::kClearFaults, "clear the crossbar faults"_l),
    {"inject 7"_l, "<checker + 1, 1-5>"_l, ModuleId::Xbic, "crossbar error on a path of a checker"_l, "fault_state fault xbic_record"_l},

    plain(ModuleId::Smpu, smpu::kGetRegions, "all regions, a report for each"_l, "smpu"_l),
    plain(ModuleId::Smpu, smpu::kAllOn, "all protection on"_l, "smpu"_l),
    plain(ModuleId::Smpu, smpu::kAllOff, "all protection off"_l, "smpu"_l),
    plain(ModuleId::Smpu, smpu::kDefault, "regions to their defaults"_l, "smpu"_l),
    plain(ModuleId::Smpu, smpu::kReadFaults, "protection fault record"_l, "smpu_record"_l),
    plain(ModuleId::Smpu, smpu::kClearFaults, "clear the protection faults"_l),
    plain(ModuleId::Smpu, "inject 6 1"_l, "forbidden write to SRAM"_l, kFault),
    plain(ModuleId::Smpu, "inject 6 2"_l, "forbidden read from flash"_l, kFault),
    plain(ModuleId::Smpu, "inject 6 3"_l, "forbidden write to UTEST flash"_l, kFault),
    plain(ModuleId::Smpu, "inject 6 4"_l, "forbidden write to EEPROM flash"_l, kFault),
    plain(ModuleId::Smpu, "inject 6 5"_l, "forbidden write to main flash"_l, kFault),
    plain(ModuleId::Smpu, "inject 6 6"_l, "write of K7a to K4's RAM"_l, kFault),

    plain(ModuleId::RegProt, regp::kGetStatus, "locks and content of the protected register"_l, "regp"_l),
    plain(ModuleId::RegProt, regp::kSoftLockOff, "soft lock off"_l, "regp"_l),
    {"regP 2"_l, "<data>"_l, ModuleId::RegProt, "soft lock on, by writing to the mirror space"_l, "regp"_l},
    {"regP 3"_l, "<data>"_l, ModuleId::RegProt, "soft lock on by its bit, then write to the module space"_l, "regp"_l},
    {"regP 4"_l, "<data>"_l, ModuleId::RegProt, "hard lock on, then write to the mirror space"_l, "regp"_l},
    {"regP 5"_l, "<data>"_l, ModuleId::RegProt, "write to the register"_l, "regp"_l},

    {"crc"_l, "<polynomial 1-4> <instance 0-1> <channel 0-2>"_l, ModuleId::Crc,
     "checksum of a block; polynomials CRC-8 VDA CAN, CRC-16-CCITT, CRC-32 ITU-T V.42, CRC-8-H2F"_l, "crc"_l},

    {"inject 9 1"_l, "<offset>"_l, ModuleId::Memu, "1-bit error in flash"_l, kFault},
    {"inject 9 2"_l, "<offset>"_l, ModuleId::Memu, "2-bit error in flash"_l, kFault},
    {"inject 9 3"_l, "<offset> <data>"_l, ModuleId::Memu, "1-bit error in peripheral RAM"_l, kFault},
    {"inject 9 4"_l, "<offset> <data>"_l, ModuleId::Memu, "2-bit error in peripheral RAM"_l, kFault},
    {"inject 9 5"_l, "<offset> <data>"_l, ModuleId::Memu, "1-bit error in system RAM"_l, kFault},
    {"inject 9 6"_l, "<offset> <data>"_l, ModuleId::Memu, "2-bit error in system RAM"_l, kFault},
    plain(ModuleId::Memu, memu::kInjectCache, "error in the data cache"_l, kFault),
    plain(ModuleId::Memu, memu::kReadFaults, "memory fault record"_l, "memu_record"_l),
    plain(ModuleId::Memu, memu::kClearFaults, "clear the memory fault record"_l),
    plain(ModuleId::Memu, memu::kClearStatus, "clear the memory fault status"_l),

    plain(ModuleId::Intcm, intcm::kGetStatus, "all channels of the interrupt monitor"_l, "intcm"_l),
    {"intcm"_l, "<IACK|EOI|SW> <core 0-2> <index 0-2> <latency> <interrupt>"_l, ModuleId::Intcm, "configure a channel"_l, {}},
    plain(ModuleId::Intcm, intcm::kDefault, "all channels to their defaults"_l),
    plain(ModuleId::Intcm, intcm::kReadFaults, "interrupt fault record"_l, "intcm_record"_l),
    plain(ModuleId::Intcm, intcm::kClearFaults, "clear the interrupt faults"_l),
    {"intcm 4"_l, "<core 0-2> <index 0-2>"_l, ModuleId::Intcm, "close a channel"_l, {}},
    {"inject 8"_l, "<core + 1, 1-3>"_l, ModuleId::Intcm, "late interrupt on a core"_l, kFault},

    plain(ModuleId::Pmc, pmc::kGetStatus, "which voltage detectors are on"_l, "pmc"_l),
    plain(ModuleId::Pmc, pmc::kAllSelfTests, "self-test of all detectors"_l, "pmc_self_test"_l),
    {"pmc 2"_l, "<detector 1-9>"_l, ModuleId::Pmc, "self-test of a detector"_l, "pmc_self_test"_l},
    {"pmc 3"_l, "<detector 1-9; 10: all>"_l, ModuleId::Pmc, "switch a detector on"_l, "pmc"_l},
    {"pmc 4"_l, "<detector 1-9; 10: all>"_l, ModuleId::Pmc, "switch a detector off"_l, "pmc"_l},
    plain(ModuleId::Pmc, pmc::kDefault, "all detectors to their defaults"_l, "pmc"_l),
    plain(ModuleId::Pmc, pmc::kReadFaults, "voltage fault record"_l, "pmc_record"_l),
    plain(ModuleId::Pmc, pmc::kClearFaults, "clear the voltage faults"_l),
    plain(ModuleId::Pmc, "inject 4 1"_l, "temperature out of range"_l, kFault),
    plain(ModuleId::Pmc, "inject 4 2"_l, "voltage too high"_l, kFault),
    plain(ModuleId::Pmc, "inject 4 3"_l, "voltage too low"_l, kFault),
    plain(ModuleId::Pmc, "inject 4 4"_l, "failing self-test of an LVD"_l, kFault),

    plain(ModuleId::Swt, swt::kGetStatus, "all watchdogs, a report for each"_l, "swt"_l),
    {"swt 1"_l, "<watchdog + 1, 1-3> <time-out>"_l, ModuleId::Swt, "fixed service sequence with this time-out"_l, "swt"_l},
    {"swt 2"_l, "<watchdog + 1, 1-3> <time-out>"_l, ModuleId::Swt, "keyed service sequence with this time-out"_l, "swt"_l},
    {"swt 3"_l, "<watchdog + 1, 1-3; 4: all>"_l, ModuleId::Swt, "switch a watchdog on"_l, "swt"_l},
    {"swt 4"_l, "<watchdog + 1, 1-3; 4: all>"_l, ModuleId::Swt, "switch a watchdog off"_l, "swt"_l},
    plain(ModuleId::Swt, swt::kDefault, "all watchdogs to their defaults"_l, "swt"_l),
    plain(ModuleId::Swt, swt::kInjectTimeout, "time-out of the first watchdog"_l, kFault),
    plain(ModuleId::Swt, swt::kInjectAccess, "invalid access to the first watchdog"_l, kFault),

    plain(ModuleId::Reset, reset::kGetReasons, "reset reasons and escalation thresholds"_l, "reset escalation"_l),
    plain(ModuleId::Reset, "resetEsca 1 1"_l, "functional escalation on or off"_l, "escalation"_l),
    plain(ModuleId::Reset, "resetEsca 1 2"_l, "clear the functional counter"_l, "escalation"_l),
    {"resetEsca 1 3"_l, "<threshold 0-255>"_l, ModuleId::Reset, "threshold of the functional escalation; 0: off"_l, "escalation"_l},
    plain(ModuleId::Reset, "resetEsca 2 1"_l, "destructive escalation on or off"_l, "escalation"_l),
    plain(ModuleId::Reset, "resetEsca 2 2"_l, "clear the destructive counter"_l, "escalation"_l),
    {"resetEsca 2 3"_l, "<threshold 0-255>"_l, ModuleId::Reset, "threshold of the destructive escalation; 0: off"_l, "escalation"_l},

    plain(ModuleId::Vg5k, vg5k::kGetItems, "all items of the power chip, a report for each"_l, "vg5k"_l),

    plain(ModuleId::Cse, cse::kLoadKeys, "load the demonstration keys; once on a new device"_l, "cse_status"_l),
    {wordsOf(cse::kEncryptEcb), "<plaintext, hex>"_l, ModuleId::Cse, "encrypt with AES-128-ECB"_l, "cse_status cse_result"_l},
    {wordsOf(cse::kEncryptCbc), "<plaintext, hex>"_l, ModuleId::Cse, "encrypt with AES-128-CBC"_l, "cse_status cse_result"_l},
    {wordsOf(cse::kDecryptEcb), "<ciphertext, hex>"_l, ModuleId::Cse, "decrypt with AES-128-ECB"_l, "cse_status cse_result"_l},
    {wordsOf(cse::kDecryptCbc), "<ciphertext, hex>"_l, ModuleId::Cse, "decrypt with AES-128-CBC"_l, "cse_status cse_result"_l},
    {wordsOf(cse::kGenerateCmac), "<message, hex>"_l, ModuleId::Cse, "generate an AES-128-CMAC"_l, "cse_status cse_result"_l},
    {wordsOf(cse::kVerifyCmac), "<message, hex> <CMAC, 32 hex digits>"_l, ModuleId::Cse, "verify an AES-128-CMAC"_l, "cse_status cse_result"_l},
    plain(ModuleId::Cse, cse::kPseudoRandom, "pseudo random number"_l, "cse_status cse_result"_l),
    plain(ModuleId::Cse, cse::kTrueRandom, "true random number; initialises the pseudo random generator"_l, "cse_status cse_result"_l),
    {wordsOf(cse::kExtendSeed), "<entropy, 32 hex digits>"_l, ModuleId::Cse, "extend the pseudo random generator's seed"_l, "cse_status"_l},

    plain(ModuleId::Spt, spt::kInjectOram, "parity error in the operand RAM"_l, kFault),
    plain(ModuleId::Spt, spt::kInjectTram, "content error in the twiddle RAM"_l, kFault),
    plain(ModuleId::Spt, spt::kReadFaults, "accelerator fault record"_l, "spt_record"_l),
    plain(ModuleId::Spt, spt::kClearFaults, "clear the accelerator faults"_l),
});
// clang-format on

bool gives(const QString &line, QLatin1String words)
{
    return line.startsWith(words) && (line.size() == words.size() || line.at(words.size()) == QLatin1Char(' '));
}

} // namespace

std::span<const CommandInfo> commandInfos()
{
    return commands;
}

const CommandInfo *commandOf(const QString &line)
{
    const CommandInfo *found = nullptr;
    for (const CommandInfo &command : commands) {
        if (gives(line, command.words) && (!found || command.words.size() > found->words.size()))
            found = &command;
    }
    return found;
}

} // namespace protocol
