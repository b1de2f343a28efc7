// SPDX-License-Identifier: MIT
// What the tutorial shows: five faults and two protections, each a chapter of steps with the words that go with them. A caption stays until
// the next one; %1 in it is the time that the fault took to be detected.
#pragma once

#include "presenter/script.h"

#include <span>

namespace tutorial {

using script::Act;
using script::Step;

struct Chapter {
    const char *title;
    const char *catcher;
    std::span<const Step> steps;
};

inline constexpr char kState[] = "label_FCCU_status";     // "NORMAL" when all is well
inline constexpr char kTime[] = "lineEdit_FCCUdetectime"; // of the last fault, microseconds

inline constexpr Step window[] = {
    {Act::Open, "Safety module", "",
     "The window starts with the security functions. The safety mechanisms are on the first page."},
    {Act::Look, "groupBox_FCCU", "",
     "On top stands fault collection, the FCCU: its state, the last fault, how fast it was detected, "
     "and a log of all of them."},
    {Act::Look, "tabWidget_safety", "",
     "Below it each safety mechanism has a page. A virtual board answers here; a real one does the same."},
    {Act::Look, "groupBox_resetSource", "",
     "On the right: operating mode, reset escalation, reset reasons and self-tests."},
};

inline constexpr Step clockLost[] = {
    {Act::Open, "CMU", "",
     "Thirteen clock monitors compare each clock with a lower and an upper limit, in MHz. All values are "
     "green: every clock is where it belongs."},
    {Act::Inject, "pushButton_cmu_fault3", "", "Fault 3 takes SPI_CLK away. CMU8 watches that clock."},
    {Act::Look, "groupBox_FCCU", "",
     "CMU8 detected it %1 µs after the injection. A fault is active: the state is ALARM."},
    {Act::Press, "pushButton_cmu_faultrecord_get", "", "Get Fault reads the monitor's own record."},
    {Act::Look, "textEdit_cmuFaultRecord", "",
     "It says which monitor, and what was wrong: clock loss. Unnoticed, all that uses "
     "this clock would stand still."},
    {Act::Press, "pushButton_cmu_faultstatus_clear", "", "Clear Fault takes the cause away and empties the record."},
    {Act::Press, "pushButton_CMU_update"},
    {Act::Await, kState, "NORMAL"},
    {Act::Look, kState, "", "The state is NORMAL again."},
};

inline constexpr Step crossbarError[] = {
    {Act::Open, "XBIC", "",
     "Cores, DMA and memories meet at crossbars. A checker at each adds a code to every transfer and tests "
     "it at the far end."},
    {Act::Inject, "pushButton_xbic_fault1", "",
     "Fault 1 spoils a transfer from the core K4 to the peripheral bridge 1. Watch the "
     "path turn red."},
    {Act::Look, "groupBox_FaultStatus", "", "Detected after %1 µs: the syndrome, zero for good data, was not zero."},
    {Act::Look, "textEdit_xbicFaultRecord", "",
     "Both ports, the syndrome and the address: enough to find the path that failed."},
    {Act::Press, "pushButton_xbic_faultstatus_clear"},
    {Act::Await, kState, "NORMAL"},
};

inline constexpr Step memoryError[] = {
    {Act::Open, "MEMU", "",
     "Memories carry an error-correcting code: one wrong bit in a word is put right, two are found but stay "
     "wrong."},
    {Act::Type, "lineEdit_memu_3", "100", "First a single bit, in the system RAM at offset 0x100."},
    {Act::Type, "lineEdit_memu_5", "5A5A5A5A"},
    {Act::Inject, "pushButton_memu_inject_3"},
    {Act::Look, "groupBox_FCCU", "",
     "Corrected, and reported after %1 µs. The software goes on with the right word; ALARM is a "
     "warning."},
    {Act::Next, "comboBox_memu_3", "", "Now two bits of that word."},
    {Act::Inject, "pushButton_memu_inject_3"},
    {Act::Look, "groupBox_FCCU", "", "Uncorrectable, detected after %1 µs: FAULT. Nothing may use this word any more."},
    {Act::Press, "pushButton_memu_faultrecord_get"},
    {Act::Look, "textEdit_memuFaultRecord", "", "The memory error unit has kept both errors, with kind and address."},
    {Act::Press, "pushButton_memu_faultstatus_clear"},
    {Act::Await, kState, "NORMAL"},
};

inline constexpr Step lateInterrupt[] = {
    {Act::Open, "INTCM", "",
     "Nine monitors measure how long an interrupt takes: to its acknowledgement, to its end, or to a mark "
     "in the software."},
    {Act::Inject, "pushButton_intcm_inject_k70", "",
     "Inject K7a holds back an interrupt of the core K7a until its limit has passed."},
    {Act::Look, "groupBox_FaultStatus", "", "The monitor of that core raised its fault, detected after %1 µs."},
    {Act::Look, "textEdit_intcmFaultRecord", "",
     "The record has the latency allowed and the time it took. In a radar, right but "
     "late is wrong."},
    {Act::Press, "pushButton_intcm_faultstatus_clear"},
    {Act::Await, kState, "NORMAL"},
};

inline constexpr Step watchdogTimeout[] = {
    {Act::Open, "SWT", "",
     "Each core must serve its watchdog again and again, neither too early nor too late. Software that hangs "
     "does not."},
    {Act::Inject, "pushButton_swt_timeout_2", "",
     "Timeout stops the service of SWT0, watchdog of the safety core K4. Watch the "
     "state and the reset reason."},
    {Act::Look, "groupBox_resetSource", "",
     "FAULT, detected after %1 µs. A second later the chip resets itself, with nobody's help, "
     "and keeps the reason."},
    {Act::Await, kState, "NORMAL"},
    {Act::Look, "groupBox_STCU", "",
     "It runs again, its self-tests passed, and the window has asked it for everything anew."},
};

inline constexpr Step secrets[] = {
    {Act::Open, "Security module", "", "The other half of the window: secrets, and registers that must not change."},
    {Act::Open, "CSE", "", "The security engine keeps its keys to itself: software uses them and never sees them."},
    {Act::Press, "pushButton_cse_loadKey", "", "Load Keys gives a new engine the demonstration's keys."},
    {Act::Enter, "plainTextEdit_cse_Plaintext_input", "00112233445566778899AABBCCDDEEFF"},
    {Act::Press, "pushButton_cse_Encryption1", "", "Sixteen bytes are encrypted with AES-128."},
    {Act::Look, "textBrowser_cse_Cyphertext_output", "", "Without the key this tells nobody anything."},
    {Act::Enter, "plainTextEdit_cse_Message_input", "C0FFEE"},
    {Act::Press, "pushButton_cse_Generation", "", "A CMAC is the seal on a message."},
    {Act::Look, "textBrowser_cse_CMAC_output", "", "Who changes a single bit of the message breaks it."},
    {Act::Enter, "plainTextEdit_cse_CMAC_input", "00112233445566778899AABBCCDDEEFF"},
    {Act::Press, "pushButton_cse_Verification", "", "Now somebody forges the seal."},
    {Act::Await, "label_indicator_cseSatus", "Fail"},
    {Act::Look, "label_indicator_cseSatus", "", "The engine refuses it."},
};

inline constexpr Step locks[] = {
    {Act::Open, "REG_PROT", "", "A register that safety depends on can be locked against runaway software."},
    {Act::Type, "lineEdit_reg_turnonsoft1", "1234"},
    {Act::Press, "pushButton_reg_turnonsoft1", "", "A value is written, and its soft lock closes behind it."},
    {Act::Type, "lineEdit_reg_writedata", "5678"},
    {Act::Press, "pushButton_reg_writedata", "", "Now something else is written to it."},
    {Act::Press, "pushButton_regUpdate"},
    {Act::Look, "groupBox_reg_content", "", "The register has kept its value."},
    {Act::Press, "pushButton_reg_softlockoff", "", "A soft lock can be opened again; a hard lock only by a reset."},
};

inline constexpr Chapter prologue = {"The window", "", window};
inline constexpr Chapter chapters[] = {
    {"A clock is lost", "clock monitor CMU8", clockLost},
    {"A transfer is spoilt", "crossbar checker XBIC0", crossbarError},
    {"Memory forgets", "memory error unit MEMU", memoryError},
    {"An interrupt is late", "interrupt monitor of K7a", lateInterrupt},
    {"A core hangs", "watchdog SWT0", watchdogTimeout},
};

// Where nothing is caught.
inline constexpr Chapter securityChapters[] = {
    {"A secret is kept", "", secrets},
    {"A register is locked", "", locks},
};

} // namespace tutorial
