// SPDX-License-Identifier: MIT
#include "protocol/commands.h"

#include "protocol/cmu.h"
#include "protocol/cse.h"
#include "protocol/intcm.h"
#include "protocol/latin1.h"
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

#include <algorithm>
#include <array>

namespace protocol {

namespace {

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

constexpr auto kFault = "fault_state fault"_l1;

// clang-format off
constexpr std::array commands = std::to_array<CommandInfo>({
    plain(ModuleId::Sys, sys::kGetGreeting, "greeting; state of the fault collection unit"_l1, "text fault_state"_l1),
    plain(ModuleId::Sys, sys::kGetMode, "operating mode and firmware version"_l1, "firmware operating_mode"_l1),
    plain(ModuleId::Sys, sys::kFunctionalReset, "functional reset"_l1, "restart reset"_l1),
    plain(ModuleId::Sys, sys::kDestructiveReset, "destructive reset; takes the hard lock off"_l1, "restart reset"_l1),

    plain(ModuleId::Cmu, cmu::kGetClock, "clock generators and measurement of the internal oscillator"_l1, "clock_status"_l1),
    plain(ModuleId::Cmu, cmu::kGetMonitors, "all clock monitors, a report for each"_l1, "cmu"_l1),
    {"cmu"_l1, "<monitor 0-12> <upper MHz> <lower MHz>"_l1, ModuleId::Cmu, "set the limits of a monitor"_l1, "cmu"_l1},
    {"cmu 13"_l1, "<monitor 0-12>"_l1, ModuleId::Cmu, "switch a monitor on"_l1, "cmu"_l1},
    {"cmu 14"_l1, "<monitor 0-12>"_l1, ModuleId::Cmu, "switch a monitor off"_l1, "cmu"_l1},
    plain(ModuleId::Cmu, cmu::kDefault, "all monitors to their defaults"_l1, "cmu"_l1),
    plain(ModuleId::Cmu, cmu::kReadFaults, "clock fault record"_l1, "cmu_record"_l1),
    plain(ModuleId::Cmu, cmu::kClearFaults, "clear the clock faults"_l1),
    plain(ModuleId::Cmu, "inject 5 1"_l1, "MC_CLK slower than its lower limit"_l1, kFault),
    plain(ModuleId::Cmu, "inject 5 2"_l1, "ADC_CLK faster than its upper limit"_l1, kFault),
    plain(ModuleId::Cmu, "inject 5 3"_l1, "loss of SPI_CLK"_l1, kFault),
    plain(ModuleId::Cmu, "inject 5 4"_l1, "limits of MC_CLK moved above its frequency"_l1, kFault),
    plain(ModuleId::Cmu, "inject 5 5"_l1, "limits of MC_CLK moved below its frequency"_l1, kFault),

    plain(ModuleId::Xbic, xbic::kGetEnables, "which crossbar checkers are on"_l1, "xbic"_l1),
    {"xbic 1"_l1, "<checker 0-4>"_l1, ModuleId::Xbic, "switch a checker on"_l1, "xbic"_l1},
    {"xbic 2"_l1, "<checker 0-4>"_l1, ModuleId::Xbic, "switch a checker off"_l1, "xbic"_l1},
    plain(ModuleId::Xbic, xbic::kDefault, "all checkers to their defaults"_l1, "xbic"_l1),
    plain(ModuleId::Xbic, xbic::kReadFaults, "crossbar fault record"_l1, "xbic_record"_l1),
    plain(ModuleId::Xbic, xbic::kClearFaults, "clear the crossbar faults"_l1),
    {"inject 7"_l1, "<checker + 1, 1-5>"_l1, ModuleId::Xbic, "crossbar error on a path of a checker"_l1, "fault_state fault xbic_record"_l1},

    plain(ModuleId::Smpu, smpu::kGetRegions, "all regions, a report for each"_l1, "smpu"_l1),
    plain(ModuleId::Smpu, smpu::kAllOn, "all protection on"_l1, "smpu"_l1),
    plain(ModuleId::Smpu, smpu::kAllOff, "all protection off"_l1, "smpu"_l1),
    plain(ModuleId::Smpu, smpu::kDefault, "regions to their defaults"_l1, "smpu"_l1),
    plain(ModuleId::Smpu, smpu::kReadFaults, "protection fault record"_l1, "smpu_record"_l1),
    plain(ModuleId::Smpu, smpu::kClearFaults, "clear the protection faults"_l1),
    plain(ModuleId::Smpu, "inject 6 1"_l1, "forbidden write to SRAM"_l1, kFault),
    plain(ModuleId::Smpu, "inject 6 2"_l1, "forbidden read from flash"_l1, kFault),
    plain(ModuleId::Smpu, "inject 6 3"_l1, "forbidden write to UTEST flash"_l1, kFault),
    plain(ModuleId::Smpu, "inject 6 4"_l1, "forbidden write to EEPROM flash"_l1, kFault),
    plain(ModuleId::Smpu, "inject 6 5"_l1, "forbidden write to main flash"_l1, kFault),
    plain(ModuleId::Smpu, "inject 6 6"_l1, "write of K7a to K4's RAM"_l1, kFault),

    plain(ModuleId::RegProt, regp::kGetStatus, "locks and content of the protected register"_l1, "regp"_l1),
    plain(ModuleId::RegProt, regp::kSoftLockOff, "soft lock off"_l1, "regp"_l1),
    {"regP 2"_l1, "<data>"_l1, ModuleId::RegProt, "soft lock on, by writing to the mirror space"_l1, "regp"_l1},
    {"regP 3"_l1, "<data>"_l1, ModuleId::RegProt, "soft lock on by its bit, then write to the module space"_l1, "regp"_l1},
    {"regP 4"_l1, "<data>"_l1, ModuleId::RegProt, "hard lock on, then write to the mirror space"_l1, "regp"_l1},
    {"regP 5"_l1, "<data>"_l1, ModuleId::RegProt, "write to the register"_l1, "regp"_l1},

    {"crc"_l1, "<polynomial 1-4> <instance 0-1> <channel 0-2>"_l1, ModuleId::Crc,
     "checksum of a block; polynomials CRC-8 VDA CAN, CRC-16-CCITT, CRC-32 ITU-T V.42, CRC-8-H2F"_l1, "crc"_l1},

    {"inject 9 1"_l1, "<offset>"_l1, ModuleId::Memu, "1-bit error in flash"_l1, kFault},
    {"inject 9 2"_l1, "<offset>"_l1, ModuleId::Memu, "2-bit error in flash"_l1, kFault},
    {"inject 9 3"_l1, "<offset> <data>"_l1, ModuleId::Memu, "1-bit error in peripheral RAM"_l1, kFault},
    {"inject 9 4"_l1, "<offset> <data>"_l1, ModuleId::Memu, "2-bit error in peripheral RAM"_l1, kFault},
    {"inject 9 5"_l1, "<offset> <data>"_l1, ModuleId::Memu, "1-bit error in system RAM"_l1, kFault},
    {"inject 9 6"_l1, "<offset> <data>"_l1, ModuleId::Memu, "2-bit error in system RAM"_l1, kFault},
    plain(ModuleId::Memu, memu::kInjectCache, "error in the data cache"_l1, kFault),
    plain(ModuleId::Memu, memu::kReadFaults, "memory fault record"_l1, "memu_record"_l1),
    plain(ModuleId::Memu, memu::kClearFaults, "clear the memory fault record"_l1),
    plain(ModuleId::Memu, memu::kClearStatus, "clear the memory fault status"_l1),

    plain(ModuleId::Intcm, intcm::kGetStatus, "all channels of the interrupt monitor"_l1, "intcm"_l1),
    {"intcm"_l1, "<IACK|EOI|SW> <core 0-2> <index 0-2> <latency> <interrupt>"_l1, ModuleId::Intcm, "configure a channel"_l1, {}},
    plain(ModuleId::Intcm, intcm::kDefault, "all channels to their defaults"_l1),
    plain(ModuleId::Intcm, intcm::kReadFaults, "interrupt fault record"_l1, "intcm_record"_l1),
    plain(ModuleId::Intcm, intcm::kClearFaults, "clear the interrupt faults"_l1),
    {"intcm 4"_l1, "<core 0-2> <index 0-2>"_l1, ModuleId::Intcm, "close a channel"_l1, {}},
    {"inject 8"_l1, "<core + 1, 1-3>"_l1, ModuleId::Intcm, "late interrupt on a core"_l1, kFault},

    plain(ModuleId::Pmc, pmc::kGetStatus, "which voltage detectors are on"_l1, "pmc"_l1),
    plain(ModuleId::Pmc, pmc::kAllSelfTests, "self-test of all detectors"_l1, "pmc_self_test"_l1),
    {"pmc 2"_l1, "<detector 1-9>"_l1, ModuleId::Pmc, "self-test of a detector"_l1, "pmc_self_test"_l1},
    {"pmc 3"_l1, "<detector 1-9; 10: all>"_l1, ModuleId::Pmc, "switch a detector on"_l1, "pmc"_l1},
    {"pmc 4"_l1, "<detector 1-9; 10: all>"_l1, ModuleId::Pmc, "switch a detector off"_l1, "pmc"_l1},
    plain(ModuleId::Pmc, pmc::kDefault, "all detectors to their defaults"_l1, "pmc"_l1),
    plain(ModuleId::Pmc, pmc::kReadFaults, "voltage fault record"_l1, "pmc_record"_l1),
    plain(ModuleId::Pmc, pmc::kClearFaults, "clear the voltage faults"_l1),
    plain(ModuleId::Pmc, "inject 4 1"_l1, "temperature out of range"_l1, kFault),
    plain(ModuleId::Pmc, "inject 4 2"_l1, "voltage too high"_l1, kFault),
    plain(ModuleId::Pmc, "inject 4 3"_l1, "voltage too low"_l1, kFault),
    plain(ModuleId::Pmc, "inject 4 4"_l1, "failing self-test of an LVD"_l1, kFault),

    plain(ModuleId::Swt, swt::kGetStatus, "all watchdogs, a report for each"_l1, "swt"_l1),
    {"swt 1"_l1, "<watchdog + 1, 1-3> <time-out>"_l1, ModuleId::Swt, "fixed service sequence with this time-out"_l1, "swt"_l1},
    {"swt 2"_l1, "<watchdog + 1, 1-3> <time-out>"_l1, ModuleId::Swt, "keyed service sequence with this time-out"_l1, "swt"_l1},
    {"swt 3"_l1, "<watchdog + 1, 1-3; 4: all>"_l1, ModuleId::Swt, "switch a watchdog on"_l1, "swt"_l1},
    {"swt 4"_l1, "<watchdog + 1, 1-3; 4: all>"_l1, ModuleId::Swt, "switch a watchdog off"_l1, "swt"_l1},
    plain(ModuleId::Swt, swt::kDefault, "all watchdogs to their defaults"_l1, "swt"_l1),
    plain(ModuleId::Swt, swt::kInjectTimeout, "time-out of the first watchdog"_l1, kFault),
    plain(ModuleId::Swt, swt::kInjectAccess, "invalid access to the first watchdog"_l1, kFault),

    plain(ModuleId::Reset, reset::kGetReasons, "reset reasons and escalation thresholds"_l1, "reset escalation"_l1),
    plain(ModuleId::Reset, "resetEsca 1 1"_l1, "functional escalation on or off"_l1, "escalation"_l1),
    plain(ModuleId::Reset, "resetEsca 1 2"_l1, "clear the functional counter"_l1, "escalation"_l1),
    {"resetEsca 1 3"_l1, "<threshold 0-255>"_l1, ModuleId::Reset, "threshold of the functional escalation; 0: off"_l1, "escalation"_l1},
    plain(ModuleId::Reset, "resetEsca 2 1"_l1, "destructive escalation on or off"_l1, "escalation"_l1),
    plain(ModuleId::Reset, "resetEsca 2 2"_l1, "clear the destructive counter"_l1, "escalation"_l1),
    {"resetEsca 2 3"_l1, "<threshold 0-255>"_l1, ModuleId::Reset, "threshold of the destructive escalation; 0: off"_l1, "escalation"_l1},

    plain(ModuleId::Vg5k, vg5k::kGetItems, "all items of the power chip, a report for each"_l1, "vg5k"_l1),

    plain(ModuleId::Cse, cse::kLoadKeys, "load the demonstration keys; once on a new device"_l1, "cse_status"_l1),
    {wordsOf(cse::kEncryptEcb), "<plaintext, hex>"_l1, ModuleId::Cse, "encrypt with AES-128-ECB"_l1, "cse_status cse_result"_l1},
    {wordsOf(cse::kEncryptCbc), "<plaintext, hex>"_l1, ModuleId::Cse, "encrypt with AES-128-CBC"_l1, "cse_status cse_result"_l1},
    {wordsOf(cse::kDecryptEcb), "<ciphertext, hex>"_l1, ModuleId::Cse, "decrypt with AES-128-ECB"_l1, "cse_status cse_result"_l1},
    {wordsOf(cse::kDecryptCbc), "<ciphertext, hex>"_l1, ModuleId::Cse, "decrypt with AES-128-CBC"_l1, "cse_status cse_result"_l1},
    {wordsOf(cse::kGenerateCmac), "<message, hex>"_l1, ModuleId::Cse, "generate an AES-128-CMAC"_l1, "cse_status cse_result"_l1},
    {wordsOf(cse::kVerifyCmac), "<message, hex> <CMAC, 32 hex digits>"_l1, ModuleId::Cse, "verify an AES-128-CMAC"_l1, "cse_status cse_result"_l1},
    plain(ModuleId::Cse, cse::kPseudoRandom, "pseudo random number"_l1, "cse_status cse_result"_l1),
    plain(ModuleId::Cse, cse::kTrueRandom, "true random number; initialises the pseudo random generator"_l1, "cse_status cse_result"_l1),
    {wordsOf(cse::kExtendSeed), "<entropy, 32 hex digits>"_l1, ModuleId::Cse, "extend the pseudo random generator's seed"_l1, "cse_status"_l1},

    plain(ModuleId::Spt, spt::kInjectOram, "parity error in the operand RAM"_l1, kFault),
    plain(ModuleId::Spt, spt::kInjectTram, "content error in the twiddle RAM"_l1, kFault),
    plain(ModuleId::Spt, spt::kReadFaults, "accelerator fault record"_l1, "spt_record"_l1),
    plain(ModuleId::Spt, spt::kClearFaults, "clear the accelerator faults"_l1),
});
// clang-format on

bool gives(const QString &line, QLatin1String words)
{
    return line.startsWith(words) && (line.size() == words.size() || line.at(words.size()) == QLatin1Char(' '));
}

} // namespace

Deed deedOf(const CommandInfo &command)
{
    constexpr std::array clears = {cmu::kClearFaults,  xbic::kClearFaults,  smpu::kClearFaults, memu::kClearFaults,
                                   memu::kClearStatus, intcm::kClearFaults, pmc::kClearFaults,  spt::kClearFaults};
    if (command.words.startsWith("inject"_l1))
        return command.module == ModuleId::Sys ? Deed::Reset : Deed::Inject;
    return std::find(clears.begin(), clears.end(), command.words) == clears.end() ? Deed::None : Deed::Clear;
}

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
