// SPDX-License-Identifier: MIT
#include "protocol/faulttable.h"

#include "protocol/sys.h"

#include <array>
#include <string_view>

namespace protocol::fccu {

namespace {

struct Row {
    std::u16string_view source;
    std::u16string_view description;
};

// By fault source identifier. Trailing blanks are part of a text.
// clang-format off
constexpr std::array rows = std::to_array<Row>({
    {u"TSENS_0/1    ", u"On board temperature sensor out of range"}, // 0
    {u"PMC", u"LVD triggered"}, // 1
    {u"PMC", u"HVD triggered"}, // 2
    {u"PMC", u"Self Test Event Fault from PMC"}, // 3
    {u"DCF          ", u"Parity configuration error during reset while loading the Safe DCF Clients (DCF client with SPRD ADDR enabled, Triple Voting enabled)"}, // 4
    {u"SSCM         ", u"Configuration error during reset while loading initial device configuration"}, // 5
    {u"STCU         ", u"Critical fault indication from STCU"}, // 6
    {u"STCU         ", u"Non-critical Fault indication from STCU"}, // 7
    {u"STCU         ", u"Critical fault indication from STCU in case LBIST or MBIST control signals go to wrong condition during user application"}, // 8
    {u"JTAG_NEX_MON ", u"Indication that Debug Modules have become active during functional mode"}, // 9
    {u"RCCU_0       ", u"Out of lockstep fault indication for instruction and data cache memories"}, // 10
    {u"RCCU_1       ", u"Out of lockstep fault indication from dtcm memories"}, // 11
    {u"RCCU_2       ", u"Triggered when a DMA mismatch occurs"}, // 12
    {u"SWT_0        ", u"SWT_0 Reset request - Software Watchdog Timer 0 has timed out or an invalid access is made"}, // 13
    {u"SWT_1        ", u"SWT_1 Reset request - Software Watchdog Timer 1 has timed out or an invalid access is made"}, // 14
    {u"SWT_2  ", u"SWT_2 Reset request - Software Watchdog Timer 2 has timed out or an invalid access is made"}, // 15
    {u"MEMU         ", u"System RAM correctable ECC error"}, // 16
    {u"MEMU         ", u"System RAM uncorrectable ECC error"}, // 17
    {u"MEMU         ", u"System RAM error overflow (all or'ed)"}, // 18
    {u"MEMU         ", u"Peripheral RAM correctable ECC error"}, // 19
    {u"MEMU         ", u"Peripheral RAM uncorrectable ECC error"}, // 20
    {u"MEMU         ", u"Peripheral RAM error overflow (all or'ed)"}, // 21
    {u"MEMU         ", u"Flash (c55fmc) correctable ECC error"}, // 22
    {u"MEMU         ", u"Flash (c55fmc) uncorrectable ECC error"}, // 23
    {u"MEMU         ", u"Flash (c55fmc) Error Overflow (all or'ed)"}, // 24
    {u"PLL0     ", u"Loss of lock"}, // 25
    {u"PLL1     ", u"Loss of lock"}, // 26
    {u"CMU0 olr_evt ", u"CLKMN0_RMT Supervisor - Oscillator frequency less than fCLKMT0_RMN ÷ 2RCDIVevent status"}, // 27
    {u"CMU_0        ", u"MC_CLK out of range"}, // 28
    {u"CMU_1        ", u"CHK_CORE_CLK out of range"}, // 29
    {u"CMU_2        ", u"CAN_CLK out of range"}, // 30
    {u"CMU_3        ", u"ADC_CLK out of range"}, // 31
    {u"CMU_4", u"SYS_CLK out of range"}, // 32
    {u"CMU_5        ", u"LFAST_CLK out of range"}, // 33
    {u"CMU_6        ", u"CLK_OUT0 out of range"}, // 34
    {u"CMU_7        ", u"SPT_CLK out of range"}, // 35
    {u"CMU_8        ", u"LIN_CLK, DSPI_CLK out of range"}, // 36
    {u"CMU_9        ", u"CORE1_CLK out of range"}, // 37
    {u"CMU_10       ", u"CORE2_CLK out of range"}, // 38
    {u"CMU_11       ", u"PBRIDGE_0_CLK, PBRIDGE_1_CLK out of range"}, // 39
    {u"SIUL2", u"External error interrupt vector to indicate if any other MCU is going into Error state, because of the lack of a dedicated pin for such indication."}, // 40
    {u"Flash memory controller", u"alarm indicating the flash array detected an error in the ECC correction (single bit inversions are detected and repaired but not reported),alarm indicating that flash detected error while decoding the address"}, // 41
    {u"Flash memory controller", u"alarm indicating the flash array detected an error in the ECC correction logic through an EDC."}, // 42
    {u"Flash memory controller", u"Alarm indicating that the flash controller detected an error in the address ECC manupulation logic through EDC"}, // 43
    {u"Flash memory controller", u"Alarm indicating that flash controller detected a transaction monitor mismatch when compared to flash safety feedback output"}, // 44
    {u"Flash memory controller", u"Alarm indicating that flash controller detected a transaction monitor mismatch in the pseudo-replicated calibration evaluation hardware"}, // 45
    {u"XBAR_1", u"Instruction crossbar error indication to FCCU if syndrome calculated using EDC on the data is not zero"}, // 46
    {u"XBAR_0         ", u"Data Crossbar error indication to FCCU if syndrome calculated using EDC on the data is not zero"}, // 47
    {u"DMA/Sipi Splitter XBAR ", u"Dma/Sipi error indication to FCCU if syndrome calculated using EDC on the data is not zero"}, // 48
    {u"RESERVED", u""}, // 49
    {u"PRAM XBAR         ", u"PRAM  error indication to FCCU if syndrome calculated using EDC on the data is not zero"}, // 50
    {u"PRAMCtrl 0", u"Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram"}, // 51
    {u"PRAMCtrl 1", u"Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram"}, // 52
    {u"PRAMCtrl 2   ", u"Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram"}, // 53
    {u"PRAMCtrl 3", u"Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram"}, // 54
    {u"PRAMCtrl 4", u"Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram"}, // 55
    {u"PRAMCtrl 5", u"Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram"}, // 56
    {u"PRAMCtrl 6", u"Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram"}, // 57
    {u"PRAMCtrl 7", u"Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram"}, // 58
    {u"Test Control Signal1", u"Unexpected Test Mode Activation take control of the POR path"}, // 59
    {u"Test Control Signal2", u"Unexpected Test Mode Activation due to events that can take control of various features of clock sources (IRC, XOSC, PLL),Temperature Sensor, Aurora, LFAST, SAR-ADC or NMI glitch filter"}, // 60
    {u"Test Control Signal3", u"Unexpected Test Mode Activation due to events that can take control of Resets (controls RGM Gate phases, Disablement of Resets), Peripheral’s clocks, resets,Memories (including flash) data path, ADCs DAC, Aurora, or LFAST."}, // 61
    {u"Test Control Signal4", u"Unexpected Test Mode Activation due to events that can take control of IOs, gate clocks of Cores, offline Selftest (Assertion of LBIST/MBIST mode), or Reset (Reduce reset functionality, External Reset indication)"}, // 62
    {u"Core- k4a  ", u"Core 0 Exception indication (p_mcp_out) - Machine check condition,This active-high p_mcp_out output signal is asserted by the processor when a machine check condition has caused an asyn mach or error reports type syndrome bit to be set in machine check syndrome register"}, // 63
    {u"Lockstep     ", u"Indication of disablement of Checker Core/DMA and RCCUs"}, // 64
    {u"RGM          ", u"Safe Mode Requested"}, // 65
    {u"ADC_CF_0     ", u"Internal Selftest critical fault, although ADC calls them Critical Fault, we have connected these signals to NCF inputs of FCCU. It is an architectural decision"}, // 66
    {u"ADC_CF_1     ", u"Internal Selftest critical fault, although ADC calls them Critical Fault, we have connected these signals to NCF inputs of FCCU. It is an architectural decision"}, // 67
    {u"RESERVED", u""}, // 68
    {u"RESERVED", u""}, // 69
    {u"ADC_NCF_0     ", u"ADC has a feature of Internal Selftest, this is the indication of non-critical fault from ADC"}, // 70
    {u"ADC_NCF_1     ", u"ADC has a feature of Internal Selftest, this is the indication of non-critical fault from ADC"}, // 71
    {u"RESERVED", u""}, // 72
    {u"RESERVED", u""}, // 73
    {u"MC_ME        ", u"Software device reset"}, // 74
    {u"INTC MON 0", u"Core0 Interrupt Controller Monitor0 Timeout"}, // 75
    {u"INTC MON 1", u"Core0 Interrupt Controller Monitor1 Timeout"}, // 76
    {u"INTC MON 2", u"Core0 Interrupt Controller Monitor2 Timeout"}, // 77
    {u"INTC MON 3", u"Core1 Interrupt Controller Monitor0 Timeout"}, // 78
    {u"INTC MON 4", u"Core1 Interrupt Controller Monitor1 Timeout"}, // 79
    {u"INTC MON 5", u"Core1 Interrupt Controller Monitor2 Timeout"}, // 80
    {u"INTC MON 6", u"Core2 Interrupt Controller Monitor0 Timeout"}, // 81
    {u"INTC MON 7", u"Core2 Interrupt Controller Monitor1 Timeout"}, // 82
    {u"INTC MON 8", u"Core2 Interrupt Controller Monitor2 Timeout"}, // 83
    {u"RESERVED", u""}, // 84
    {u"core- k7a", u"Core1 Exception indication (p_mcp_out) - Machine check condition"}, // 85
    {u"core- k7b", u"Core2 Exception indication (p_mcp_out) - Machine check condition"}, // 86
    {u"CMU_12", u"SPT_ACQN_CLK out of range"}, // 87
    {u"CMU_8 – olr_evt", u"CLKMN8_RMT Supervisor - Oscillator frequency less than fCLKMT0_RMN ÷ 2RCDIVevent status"}, // 88
    {u"SDPLL – Loss of Lock", u"Loss of lock"}, // 89
    {u"SDPLL – Loss of Reference", u"Loss of reference"}, // 90
    {u"fgf_flash_rst_err", u"Sideband siganl from flash to indicate that flash encountered errors during its reset reads. This is caused by ECC double bit detection as well as the coherency checks done on the test row reads"}, // 91
    {u"fgf_read_voltage_error", u"A fault signal indication from flash, it tells that previous reads were affected by a read voltage loss of regulation"}, // 92
    {u"fgf_ref_curr_error", u"A fault signal indication from flash, it tells that previous reads were affected by a read current loss of regulation"}, // 93
    {u"fgf_lp_err_10", u"A signal to indicate that a request for Flash entry into Low Power mode was rejected. This occurs if a LP request is sent if a High Voltage or Utest operations are ongoing."}, // 94
    {u"K4a IC Alarm", u"Fault indication on comparison of data sent and received back from the Instruction Cache memories of K4a core"}, // 95
    {u"K4a DC Alarm", u"Fault indication on comparison of data sent and received back from the Data Cache memories of K4a core"}, // 96
    {u"K4a DTCM Alarm", u"Fault indication on comparison of data sent and received back from the DTCM memories of K4a core"}, // 97
    {u"RESERVED", u""}, // 98
    {u"RESERVED", u""}, // 99
    {u"K7a DTCM Alarm", u"Monitor error of k7a tcm gasket"}, // 100
    {u"RESERVED", u""}, // 101
    {u"RESERVED", u""}, // 102
    {u"K7b DTCM Alarm", u"Monitor error of k7b tcm gasket"}, // 103
    {u"SMPU_0", u"MPU abort indication for data"}, // 104
    {u"SMPU_1", u"MPU abort indication for Instruction"}, // 105
    {u"DMA Ram Alarm", u"Alarm indicating a mismatch in DMA TCD safety feedback outputs"}, // 106
    {u"TCM Splitter Axbs Alarm", u"TCM Splitter crossbar error indication to FCCU if syndrome calculated using EDC on the data is not zero."}, // 107
    {u"PRAM0/1/2 mon_err", u"IAHB gasket monitor for PRAM port 0/1/2 error"}, // 108
    {u"M4/M6 Bridge_mon_err", u"IAHB gasket monitor for master port 4/6 error"}, // 109
    {u"Gskt_d2i/i2d_mon_err", u"IAHB gasket monitor  for  cross AXBX error"}, // 110
    {u"aips0/1_gskt_mon_err", u"IAHB gasket monitor  for  AIPS error"}, // 111
    {u"swt0_raw_int", u"System wakeup signals from watchdog timer when system is in STOP/HALT mode,SWT_0 Interrupt/Wakeup request"}, // 112
    {u"swt1_raw_int", u"System wakeup signals from watchdog timer when system is in STOP/HALT mode,SWT_1 Interrupt/Wakeup request"}, // 113
    {u"swt2_raw_int", u"System wakeup signals from watchdog timer when system is in STOP/HALT mode,SWT_2 Interrupt/Wakeup request"}, // 114
    {u"mbist_multi_SPTB  ", u"Multi-bit failure indication from SPTB memories"}, // 115
    {u"mbist_multi_SRAM  ", u"Multi-bit failure indication from SRAM"}, // 116
    {u"mbist_multi_ICACHE", u"Multi-bit failure indication from Instruction Cache Memories"}, // 117
    {u"mbist_multi_DCACHE", u"Multi-bit failure indication from Data Cache Memories"}, // 118
    {u"mbist_multi_DTCM  ", u"Multi-bit failure indication from DTCM memories"}, // 119
    {u"mbist_multi_PERIPH ", u"Multi-bit failure indication from other peripheral memories like can, cse, flexray, ethernet"}, // 120
    {u"mbist_single_SPTB  ", u"Single-bit failure indication from SPTB memories"}, // 121
    {u"mbist_single_SRAM  ", u"Single-bit failure indication from SRAM"}, // 122
    {u"mbist_single_ICACHE", u"Single-bit failure indication from Instruction Cache Memories"}, // 123
    {u"mbist_single_DCACHE", u"Single-bit failure indication from Data Cache Memories"}, // 124
    {u"mbist_single_DTCM  ", u"Single-bit failure indication from DTCM memories"}, // 125
    {u"mbist_single_PERIPH", u"Single-bit failure indication from other peripheral memories like can, cse, flexray, ethernet"}, // 126
    {u"Ethernet/Flexray bridge gasket_mon_err", u"IAHB gasket monitor  for  FEC/FLEX bridge gasket error"}, // 127
});
// clang-format on
static_assert(rows.size() == kSourceCount);

QString toText(std::u16string_view text)
{
    return QString::fromUtf16(text.data(), static_cast<int>(text.size()));
}

} // namespace

QString fccuFaultSource(int id)
{
    return toText(rows.at(static_cast<std::size_t>(id)).source);
}

QString fccuFaultDescription(int id)
{
    return toText(rows.at(static_cast<std::size_t>(id)).description);
}

// The range check of the reports admits one identifier too many. The texts lie in memory as all descriptions, then all
// sources, then the operating modes: one beyond the descriptions is the first source, one beyond the sources the first
// mode. That is what identifier 128 shows.
FaultText faultText(quint8 id)
{
    if (id < kSourceCount)
        return {fccuFaultSource(id), fccuFaultDescription(id)};
    return {sys::modeName(0), fccuFaultSource(0)};
}

} // namespace protocol::fccu
