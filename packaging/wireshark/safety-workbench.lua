-- SPDX-License-Identifier: MIT
-- Dissector for recordings of the demonstration board's serial line, for Wireshark and tshark from 4.0 on.
--
-- A packet is one read or one write of the line, cut anywhere; the "upper PDU" header of the capture names this dissector
-- and tells the direction. Commands are put together to lines, what the board sends to frames, over packets and in both
-- directions. Filters: safetyworkbench.REPORT.FIELD, for example  safetyworkbench.fault.id == 47

-- The tables of reports and commands, generated: dissector tables
local modules = {
  [0]={name="text", title="Text messages"},
  [1]={name="sys", title="System"},
  [2]={name="cmu", title="Clock monitor units"},
  [3]={name="xbic", title="Crossbar integrity checkers"},
  [4]={name="smpu", title="System memory protection units"},
  [5]={name="regp", title="Register protection"},
  [6]={name="crc", title="CRC unit"},
  [7]={name="memu", title="Memory error management unit"},
  [8]={name="intcm", title="Interrupt monitor"},
  [9]={name="bist", title="Built-in self-tests"},
  [10]={name="pmc", title="Power management controller"},
  [11]={name="swt", title="Software watchdogs"},
  [12]={name="fccu", title="Fault collection and control unit"},
  [13]={name="reset", title="Resets"},
  [14]={name="vg5k", title="External safety power chip"},
  [15]={name="cse", title="Cryptographic services engine"},
  [16]={name="spt", title="Signal processing accelerator"},
}
local reports = {
  {module=0, type=0, name="text", title="text message", fields={
    {name="text", coding="latin1", at=0, size=1, meaning="a line for people"},
  }},
  {module=1, type=1, name="operating_mode", title="operating mode", fields={
    {name="mode", coding="big", at=0, size=1, meaning="operating mode", words={[0]="RESET", [1]="TEST", [2]="SAFE", [3]="DRUN", [4]="RUN0", [5]="RUN1", [6]="RUN2", [7]="RUN3", [8]="HALT0", [9]="reserved", [10]="STOP0", others="ERROR/UNKNOW"}},
  }},
  {module=1, type=4, name="firmware", title="firmware version", fields={
    {name="version", coding="float", at=0, size=4, meaning="version of the firmware"},
    {name="year", coding="big", at=4, size=2, meaning="release date"},
    {name="month", coding="big", at=6, size=1},
    {name="day", coding="big", at=7, size=1},
  }},
  {module=1, type=5, name="restart", title="restart notice", fields={
    {name="restarted", coding="restart", at=0, size=2, flag=true, meaning="the board has restarted"},
  }},
  {module=2, type=0, name="cmu_text", title="text message", fields={
    {name="text", coding="utf8", at=0, size=1, meaning="shown in place of the fault record"},
  }},
  {module=2, type=1, name="cmu", title="state of one monitor", fields={
    {name="id", coding="big", at=0, size=1, low=4, bits=4, meaning="monitor, 0 to 12"},
    {name="spi_lost", coding="big", at=0, size=1, low=2, bits=1, flag=true, meaning="the SPI clock is lost; told by CMU8"},
    {name="xosc_lost", coding="big", at=0, size=1, low=1, bits=1, flag=true, meaning="the crystal's clock is lost; told by CMU0"},
    {name="enabled", coding="big", at=0, size=1, low=0, bits=1, flag=true, meaning="the monitor is on"},
    {name="value", coding="big", at=1, size=1, unit="MHz", meaning="measured frequency"},
    {name="upper", coding="big", at=2, size=1, unit="MHz", meaning="upper limit"},
    {name="lower", coding="big", at=3, size=1, unit="MHz", meaning="lower limit"},
  }},
  {module=2, type=2, name="cmu_record", title="fault record", fields={
    {name="count", coding="big", at=0, size=1, meaning="number of faults"},
    {name="faults", coding="whole", at=1, size=1, meaning="the faults", fields={
      {name="monitor", coding="big", at=0, size=1, low=4, bits=4, meaning="monitor that has found the fault"},
      {name="kind", coding="big", at=0, size=1, low=0, bits=4, meaning="what is wrong", words={[0]="too high", [1]="too low", [2]="clock loss"}},
    }},
  }},
  {module=2, type=4, name="clock_status", title="clock status", fields={
    {name="sdpll", coding="big", at=0, size=1, low=7, bits=1, flag=true, meaning="SDPLL is healthy"},
    {name="pll1", coding="big", at=0, size=1, low=6, bits=1, flag=true, meaning="PLL1 is healthy"},
    {name="pll0", coding="big", at=0, size=1, low=5, bits=1, flag=true, meaning="PLL0 is healthy"},
    {name="xosc", coding="big", at=0, size=1, low=4, bits=1, flag=true, meaning="the crystal oscillator is healthy"},
    {name="irc", coding="big", at=0, size=1, low=3, bits=1, flag=true, meaning="the internal oscillator is healthy"},
    {name="source", coding="big", at=0, size=1, low=0, bits=3, meaning="system clock source", words={[0]="IRC_CLK", [1]="XOSC_CLK", [2]="PLL0_PHI_CLK", [3]="Error", [4]="PLL1_PHI_CLK", [5]="Error", [6]="Error", [7]="Error"}},
    {name="irc_frequency", coding="big", at=1, size=3, unit="MHz", scale=1000000, meaning="measured frequency of the internal oscillator; sent in Hz"},
  }},
  {module=3, type=1, name="xbic", title="checkers that are on", fields={
    {name="mask", coding="big", at=0, size=1, low=0, bits=5, meaning="a bit per checker that is on"},
    {name="enabled", coding="flags_number", at=0, size=1, low=0, bits=5, meaning="the checkers that are on", words={[0]="XBIC0", [1]="XBIC1", [2]="XBIC2", [3]="XBIC3", [4]="XBIC4"}},
  }},
  {module=3, type=2, name="xbic_record", title="fault record", fields={
    {name="count", coding="big", at=0, size=1, meaning="number of faults"},
    {name="faults", coding="counted", at=1, size=8, meaning="the faults", fields={
      {name="index", coding="big", at=0, size=1, meaning="kept, shown nowhere"},
      {name="master", coding="big", at=1, size=1, meaning="master port"},
      {name="slave", coding="big", at=2, size=1, meaning="slave port"},
      {name="syndrome", coding="big", at=3, size=1, meaning="syndrome of the check"},
      {name="address", coding="little", at=4, size=4, hex=true, meaning="address of the access"},
    }},
  }},
  {module=4, type=1, name="smpu", title="one region", fields={
    {name="selector", coding="big", at=0, size=1, low=4, bits=4, meaning="region: 7 of SMPU0; 0, 1, 4 and 15 of SMPU1"},
    {name="unit_on", coding="big", at=0, size=1, low=3, bits=1, flag=true, meaning="the region's unit is on"},
    {name="valid", coding="big", at=0, size=1, low=2, bits=1, flag=true, meaning="the region is valid"},
    {name="core0_rights", coding="big", at=0, size=1, low=0, bits=2, meaning="rights of K4", words={[0]="r:NO  w:NO", [1]="r:NO  w:OK", [2]="r:OK  w:NO", [3]="r:OK  w:OK"}},
    {name="core1_rights", coding="big", at=1, size=1, low=6, bits=2, meaning="rights of K7a", words={[0]="r:NO  w:NO", [1]="r:NO  w:OK", [2]="r:OK  w:NO", [3]="r:OK  w:OK"}},
    {name="core2_rights", coding="big", at=1, size=1, low=4, bits=2, meaning="rights of K7b", words={[0]="r:NO  w:NO", [1]="r:NO  w:OK", [2]="r:OK  w:NO", [3]="r:OK  w:OK"}},
    {name="cache_inhibit", coding="big", at=1, size=1, low=3, bits=1, flag=true, meaning="accesses go past the cache"},
    {name="start", coding="halves", at=2, size=4, hex=true, meaning="first address"},
    {name="end", coding="halves", at=6, size=4, hex=true, meaning="last address"},
  }},
  {module=4, type=2, name="smpu_record", title="fault record", fields={
    {name="faults", coding="whole", at=0, size=5, meaning="the faults", fields={
      {name="master", coding="big", at=0, size=1, low=0, bits=4, meaning="bus master"},
      {name="write", coding="big", at=0, size=1, low=4, bits=1, flag=true, meaning="a write, not a read"},
      {name="address", coding="little", at=1, size=4, hex=true, meaning="address of the access"},
    }},
  }},
  {module=5, type=1, name="regp", title="locks and register", fields={
    {name="hard_locked", coding="one", at=0, size=1, flag=true, meaning="the hard lock is on"},
    {name="soft_locked", coding="little", at=1, size=4, flag=true, meaning="the soft lock is on: the soft lock word is not 0"},
    {name="module_space", coding="little", at=5, size=4, hex=true, meaning="the register as read in module register space"},
    {name="mirror_space", coding="little", at=9, size=4, hex=true, meaning="the register as read in mirror space"},
  }},
  {module=6, type=3, name="crc", title="result", fields={
    {name="size", coding="big", at=0, size=4, unit="bytes", meaning="number of data bytes"},
    {name="data", coding="data", at=4, size=0, meaning="the data bytes"},
    {name="value", coding="big", at=4, size=4, behind=true, hex=true, meaning="checksum; its low 8, 16 or 32 bits, by the polynomial"},
    {name="time", coding="float", at=8, size=4, behind=true, unit="us", meaning="time of the calculation"},
  }},
  {module=7, type=2, name="memu_record", title="fault record", fields={
    {name="count", coding="big", at=0, size=1, meaning="number of faults"},
    {name="faults", coding="counted", at=1, size=5, meaning="the faults", fields={
      {name="type", coding="big", at=0, size=1, meaning="memory and severity", words={[0]="memu flash correctable error", [1]="memu flash uncorrectable error", [2]="memu pram correctable error", [3]="memu pram uncorrectable error", [4]="memu sram correctable error", [5]="memu sram uncorrectable error"}},
      {name="address", coding="big", at=1, size=4, hex=true, meaning="address of the error"},
    }},
  }},
  {module=8, type=1, name="intcm", title="channels", fields={
    {name="count", coding="big", at=0, size=1, meaning="number of channels"},
    {name="channels", coding="counted", at=1, size=11, meaning="the channels: three of K4, of K7a, of K7b", fields={
      {name="core", coding="big", at=0, size=1, meaning="core", words={[0]="K4(0)", [1]="K7a(1)", [2]="K7b(2)"}},
      {name="index", coding="big", at=1, size=1, meaning="monitor of that core, 0 to 2"},
      {name="mode", coding="big", at=2, size=1, meaning="what ends the measurement", words={[0]="NONE", [1]="IACK", [2]="EOI", [3]="SW"}},
      {name="irq", coding="big", at=3, size=2, meaning="interrupt watched"},
      {name="latency", coding="big", at=5, size=3, unit="counts", divisor=120, per="us", meaning="allowed latency; 0: the channel is off"},
      {name="timer", coding="big", at=8, size=3, unit="counts", divisor=120, per="us", meaning="measured time"},
    }},
  }},
  {module=8, type=2, name="intcm_record", title="fault record", fields={
    {name="count", coding="big", at=0, size=1, meaning="number of faults"},
    {name="faults", coding="counted", at=1, size=11, meaning="the channels that have found a fault", fields={
      {name="core", coding="big", at=0, size=1, meaning="core", words={[0]="K4(0)", [1]="K7a(1)", [2]="K7b(2)"}},
      {name="index", coding="big", at=1, size=1, meaning="monitor of that core, 0 to 2"},
      {name="mode", coding="big", at=2, size=1, meaning="what ends the measurement", words={[0]="NONE", [1]="IACK", [2]="EOI", [3]="SW"}},
      {name="irq", coding="big", at=3, size=2, meaning="interrupt watched"},
      {name="latency", coding="big", at=5, size=3, unit="counts", divisor=120, per="us", meaning="allowed latency; 0: the channel is off"},
      {name="timer", coding="big", at=8, size=3, unit="counts", divisor=120, per="us", meaning="measured time"},
    }},
  }},
  {module=9, type=1, name="bist", title="results", fields={
    {name="lbist_set1", coding="flags_first", at=1, size=1, meaning="logic partitions, first set"},
    {name="lbist_set2", coding="flags_first", at=2, size=1, meaning="logic partitions, second set: the one shown"},
    {name="mbist_set1", coding="flags_number", at=3, size=12, meaning="memory cuts, first set"},
    {name="mbist_set2", coding="flags_number", at=15, size=12, meaning="memory cuts, second set: the one shown"},
  }},
  {module=10, type=1, name="pmc", title="detectors that are on", fields={
    {name="element_0", coding="big", at=0, size=1, low=0, bits=1, flag=true, meaning="drives nothing"},
    {name="core_lvd", coding="big", at=1, size=1, low=0, bits=1, flag=true, meaning="core LVD is on, and with it the PLL LVD"},
    {name="core_hvd", coding="big", at=1, size=1, low=1, bits=1, flag=true, meaning="core HVD is on"},
    {name="adc_lvd", coding="big", at=1, size=1, low=2, bits=1, flag=true, meaning="ADC LVD is on"},
    {name="adc_hvd", coding="big", at=1, size=1, low=3, bits=1, flag=true, meaning="ADC HVD is on"},
    {name="flash_lvd", coding="big", at=1, size=1, low=4, bits=1, flag=true, meaning="flash LVD is on"},
    {name="element_6", coding="big", at=1, size=1, low=5, bits=1, flag=true, meaning="drives nothing"},
    {name="io_lvd", coding="big", at=1, size=1, low=6, bits=1, flag=true, meaning="I/O LVD is on"},
    {name="pmc_lvd", coding="big", at=1, size=1, low=7, bits=1, flag=true, meaning="PMC LVD is on"},
  }},
  {module=10, type=2, name="pmc_record", title="fault record", fields={
    {name="count", coding="big", at=0, size=1, meaning="number of faults"},
    {name="faults", coding="counted", at=1, size=1, meaning="the faults", fields={
      {name="code", coding="big", at=0, size=1, meaning="what is wrong", words={[0]="Temperature Sensor fault", [1]="HVD fault", [2]="LVD fault", [3]="Self Test fault"}},
    }},
    {name="shown", coding="optional", at=1, size=1, meaning="the first fault again, also where there is none", words={[0]="Temperature Sensor fault", [1]="HVD fault", [2]="LVD fault", [3]="Self Test fault"}},
  }},
  {module=10, type=4, name="pmc_self_test", title="result of a self-test", fields={
    {name="code", coding="big", at=0, size=1, meaning="detector; 0: all", words={[0]="all", [1]="core LVD", [2]="core HVD", [4]="PMC LVD", [5]="flash LVD", [6]="ADC LVD", [7]="PLL LVD", [8]="I/O LVD", [9]="ADC HVD"}},
    {name="passed", coding="big", at=1, size=1, flag=true, meaning="the self-test has passed: not 0"},
  }},
  {module=11, type=1, name="swt", title="one watchdog", fields={
    {name="selector", coding="big", at=0, size=1, low=6, bits=2, meaning="watchdog, 0 to 2; 3: the first, without a mode"},
    {name="mode", coding="big", at=0, size=1, low=4, bits=2, meaning="how it is to be served", words={[0]="Fixed Service Sequence", [1]="Keyed Service Sequence", [2]="Fixed Address Execution", [3]="Incremental Address Execution"}},
    {name="on", coding="big", at=0, size=1, low=3, bits=1, flag=true, meaning="the watchdog is on"},
    {name="window", coding="big", at=1, size=4, unit="counts", divisor=16000, per="ms", meaning="start of the window"},
    {name="timeout", coding="big", at=5, size=4, unit="counts", divisor=16000, per="ms", meaning="time-out"},
  }},
  {module=12, type=1, name="fault_state", title="state of the unit", fields={
    {name="state", coding="big", at=0, size=1, meaning="state of the unit", words={[0]="CONFIG", [1]="NORMAL", [2]="ALARM", [3]="FAULT"}},
  }},
  {module=12, type=2, name="fault", title="fault", fields={
    {name="id", coding="big", at=0, size=1, meaning="fault source, 0 to 127; 254: several"},
    {name="time", coding="float", at=1, size=4, unit="us", meaning="from injection to detection by the hardware"},
    {name="source", coding="words", at=0, size=1, meaning="module that the fault comes from", words={[0]="TSENS_0/1    ", [1]="PMC", [2]="PMC", [3]="PMC", [4]="DCF          ", [5]="SSCM         ", [6]="STCU         ", [7]="STCU         ", [8]="STCU         ", [9]="JTAG_NEX_MON ", [10]="RCCU_0       ", [11]="RCCU_1       ", [12]="RCCU_2       ", [13]="SWT_0        ", [14]="SWT_1        ", [15]="SWT_2  ", [16]="MEMU         ", [17]="MEMU         ", [18]="MEMU         ", [19]="MEMU         ", [20]="MEMU         ", [21]="MEMU         ", [22]="MEMU         ", [23]="MEMU         ", [24]="MEMU         ", [25]="PLL0     ", [26]="PLL1     ", [27]="CMU0 olr_evt ", [28]="CMU_0        ", [29]="CMU_1        ", [30]="CMU_2        ", [31]="CMU_3        ", [32]="CMU_4", [33]="CMU_5        ", [34]="CMU_6        ", [35]="CMU_7        ", [36]="CMU_8        ", [37]="CMU_9        ", [38]="CMU_10       ", [39]="CMU_11       ", [40]="SIUL2", [41]="Flash memory controller", [42]="Flash memory controller", [43]="Flash memory controller", [44]="Flash memory controller", [45]="Flash memory controller", [46]="XBAR_1", [47]="XBAR_0         ", [48]="DMA/Sipi Splitter XBAR ", [49]="RESERVED", [50]="PRAM XBAR         ", [51]="PRAMCtrl 0", [52]="PRAMCtrl 1", [53]="PRAMCtrl 2   ", [54]="PRAMCtrl 3", [55]="PRAMCtrl 4", [56]="PRAMCtrl 5", [57]="PRAMCtrl 6", [58]="PRAMCtrl 7", [59]="Test Control Signal1", [60]="Test Control Signal2", [61]="Test Control Signal3", [62]="Test Control Signal4", [63]="Core- k4a  ", [64]="Lockstep     ", [65]="RGM          ", [66]="ADC_CF_0     ", [67]="ADC_CF_1     ", [68]="RESERVED", [69]="RESERVED", [70]="ADC_NCF_0     ", [71]="ADC_NCF_1     ", [72]="RESERVED", [73]="RESERVED", [74]="MC_ME        ", [75]="INTC MON 0", [76]="INTC MON 1", [77]="INTC MON 2", [78]="INTC MON 3", [79]="INTC MON 4", [80]="INTC MON 5", [81]="INTC MON 6", [82]="INTC MON 7", [83]="INTC MON 8", [84]="RESERVED", [85]="core- k7a", [86]="core- k7b", [87]="CMU_12", [88]="CMU_8 – olr_evt", [89]="SDPLL – Loss of Lock", [90]="SDPLL – Loss of Reference", [91]="fgf_flash_rst_err", [92]="fgf_read_voltage_error", [93]="fgf_ref_curr_error", [94]="fgf_lp_err_10", [95]="K4a IC Alarm", [96]="K4a DC Alarm", [97]="K4a DTCM Alarm", [98]="RESERVED", [99]="RESERVED", [100]="K7a DTCM Alarm", [101]="RESERVED", [102]="RESERVED", [103]="K7b DTCM Alarm", [104]="SMPU_0", [105]="SMPU_1", [106]="DMA Ram Alarm", [107]="TCM Splitter Axbs Alarm", [108]="PRAM0/1/2 mon_err", [109]="M4/M6 Bridge_mon_err", [110]="Gskt_d2i/i2d_mon_err", [111]="aips0/1_gskt_mon_err", [112]="swt0_raw_int", [113]="swt1_raw_int", [114]="swt2_raw_int", [115]="mbist_multi_SPTB  ", [116]="mbist_multi_SRAM  ", [117]="mbist_multi_ICACHE", [118]="mbist_multi_DCACHE", [119]="mbist_multi_DTCM  ", [120]="mbist_multi_PERIPH ", [121]="mbist_single_SPTB  ", [122]="mbist_single_SRAM  ", [123]="mbist_single_ICACHE", [124]="mbist_single_DCACHE", [125]="mbist_single_DTCM  ", [126]="mbist_single_PERIPH", [127]="Ethernet/Flexray bridge gasket_mon_err", [128]="RESET", [254]="Multi source", others="Invalid Source ID"}},
    {name="description", coding="words", at=0, size=1, meaning="what the fault means", words={[0]="On board temperature sensor out of range", [1]="LVD triggered", [2]="HVD triggered", [3]="Self Test Event Fault from PMC", [4]="Parity configuration error during reset while loading the Safe DCF Clients (DCF client with SPRD ADDR enabled, Triple Voting enabled)", [5]="Configuration error during reset while loading initial device configuration", [6]="Critical fault indication from STCU", [7]="Non-critical Fault indication from STCU", [8]="Critical fault indication from STCU in case LBIST or MBIST control signals go to wrong condition during user application", [9]="Indication that Debug Modules have become active during functional mode", [10]="Out of lockstep fault indication for instruction and data cache memories", [11]="Out of lockstep fault indication from dtcm memories", [12]="Triggered when a DMA mismatch occurs", [13]="SWT_0 Reset request - Software Watchdog Timer 0 has timed out or an invalid access is made", [14]="SWT_1 Reset request - Software Watchdog Timer 1 has timed out or an invalid access is made", [15]="SWT_2 Reset request - Software Watchdog Timer 2 has timed out or an invalid access is made", [16]="System RAM correctable ECC error", [17]="System RAM uncorrectable ECC error", [18]="System RAM error overflow (all or'ed)", [19]="Peripheral RAM correctable ECC error", [20]="Peripheral RAM uncorrectable ECC error", [21]="Peripheral RAM error overflow (all or'ed)", [22]="Flash (c55fmc) correctable ECC error", [23]="Flash (c55fmc) uncorrectable ECC error", [24]="Flash (c55fmc) Error Overflow (all or'ed)", [25]="Loss of lock", [26]="Loss of lock", [27]="CLKMN0_RMT Supervisor - Oscillator frequency less than fCLKMT0_RMN ÷ 2RCDIVevent status", [28]="MC_CLK out of range", [29]="CHK_CORE_CLK out of range", [30]="CAN_CLK out of range", [31]="ADC_CLK out of range", [32]="SYS_CLK out of range", [33]="LFAST_CLK out of range", [34]="CLK_OUT0 out of range", [35]="SPT_CLK out of range", [36]="LIN_CLK, DSPI_CLK out of range", [37]="CORE1_CLK out of range", [38]="CORE2_CLK out of range", [39]="PBRIDGE_0_CLK, PBRIDGE_1_CLK out of range", [40]="External error interrupt vector to indicate if any other MCU is going into Error state, because of the lack of a dedicated pin for such indication.", [41]="alarm indicating the flash array detected an error in the ECC correction (single bit inversions are detected and repaired but not reported),alarm indicating that flash detected error while decoding the address", [42]="alarm indicating the flash array detected an error in the ECC correction logic through an EDC.", [43]="Alarm indicating that the flash controller detected an error in the address ECC manupulation logic through EDC", [44]="Alarm indicating that flash controller detected a transaction monitor mismatch when compared to flash safety feedback output", [45]="Alarm indicating that flash controller detected a transaction monitor mismatch in the pseudo-replicated calibration evaluation hardware", [46]="Instruction crossbar error indication to FCCU if syndrome calculated using EDC on the data is not zero", [47]="Data Crossbar error indication to FCCU if syndrome calculated using EDC on the data is not zero", [48]="Dma/Sipi error indication to FCCU if syndrome calculated using EDC on the data is not zero", [49]="", [50]="PRAM  error indication to FCCU if syndrome calculated using EDC on the data is not zero", [51]="Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram", [52]="Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram", [53]="Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram", [54]="Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram", [55]="Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram", [56]="Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram", [57]="Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram", [58]="Ram controller feedback alarm to FCCU if there is a mismatch on the feedback signals from sram", [59]="Unexpected Test Mode Activation take control of the POR path", [60]="Unexpected Test Mode Activation due to events that can take control of various features of clock sources (IRC, XOSC, PLL),Temperature Sensor, Aurora, LFAST, SAR-ADC or NMI glitch filter", [61]="Unexpected Test Mode Activation due to events that can take control of Resets (controls RGM Gate phases, Disablement of Resets), Peripheral’s clocks, resets,Memories (including flash) data path, ADCs DAC, Aurora, or LFAST.", [62]="Unexpected Test Mode Activation due to events that can take control of IOs, gate clocks of Cores, offline Selftest (Assertion of LBIST/MBIST mode), or Reset (Reduce reset functionality, External Reset indication)", [63]="Core 0 Exception indication (p_mcp_out) - Machine check condition,This active-high p_mcp_out output signal is asserted by the processor when a machine check condition has caused an asyn mach or error reports type syndrome bit to be set in machine check syndrome register", [64]="Indication of disablement of Checker Core/DMA and RCCUs", [65]="Safe Mode Requested", [66]="Internal Selftest critical fault, although ADC calls them Critical Fault, we have connected these signals to NCF inputs of FCCU. It is an architectural decision", [67]="Internal Selftest critical fault, although ADC calls them Critical Fault, we have connected these signals to NCF inputs of FCCU. It is an architectural decision", [68]="", [69]="", [70]="ADC has a feature of Internal Selftest, this is the indication of non-critical fault from ADC", [71]="ADC has a feature of Internal Selftest, this is the indication of non-critical fault from ADC", [72]="", [73]="", [74]="Software device reset", [75]="Core0 Interrupt Controller Monitor0 Timeout", [76]="Core0 Interrupt Controller Monitor1 Timeout", [77]="Core0 Interrupt Controller Monitor2 Timeout", [78]="Core1 Interrupt Controller Monitor0 Timeout", [79]="Core1 Interrupt Controller Monitor1 Timeout", [80]="Core1 Interrupt Controller Monitor2 Timeout", [81]="Core2 Interrupt Controller Monitor0 Timeout", [82]="Core2 Interrupt Controller Monitor1 Timeout", [83]="Core2 Interrupt Controller Monitor2 Timeout", [84]="", [85]="Core1 Exception indication (p_mcp_out) - Machine check condition", [86]="Core2 Exception indication (p_mcp_out) - Machine check condition", [87]="SPT_ACQN_CLK out of range", [88]="CLKMN8_RMT Supervisor - Oscillator frequency less than fCLKMT0_RMN ÷ 2RCDIVevent status", [89]="Loss of lock", [90]="Loss of reference", [91]="Sideband siganl from flash to indicate that flash encountered errors during its reset reads. This is caused by ECC double bit detection as well as the coherency checks done on the test row reads", [92]="A fault signal indication from flash, it tells that previous reads were affected by a read voltage loss of regulation", [93]="A fault signal indication from flash, it tells that previous reads were affected by a read current loss of regulation", [94]="A signal to indicate that a request for Flash entry into Low Power mode was rejected. This occurs if a LP request is sent if a High Voltage or Utest operations are ongoing.", [95]="Fault indication on comparison of data sent and received back from the Instruction Cache memories of K4a core", [96]="Fault indication on comparison of data sent and received back from the Data Cache memories of K4a core", [97]="Fault indication on comparison of data sent and received back from the DTCM memories of K4a core", [98]="", [99]="", [100]="Monitor error of k7a tcm gasket", [101]="", [102]="", [103]="Monitor error of k7b tcm gasket", [104]="MPU abort indication for data", [105]="MPU abort indication for Instruction", [106]="Alarm indicating a mismatch in DMA TCD safety feedback outputs", [107]="TCM Splitter crossbar error indication to FCCU if syndrome calculated using EDC on the data is not zero.", [108]="IAHB gasket monitor for PRAM port 0/1/2 error", [109]="IAHB gasket monitor for master port 4/6 error", [110]="IAHB gasket monitor  for  cross AXBX error", [111]="IAHB gasket monitor  for  AIPS error", [112]="System wakeup signals from watchdog timer when system is in STOP/HALT mode,SWT_0 Interrupt/Wakeup request", [113]="System wakeup signals from watchdog timer when system is in STOP/HALT mode,SWT_1 Interrupt/Wakeup request", [114]="System wakeup signals from watchdog timer when system is in STOP/HALT mode,SWT_2 Interrupt/Wakeup request", [115]="Multi-bit failure indication from SPTB memories", [116]="Multi-bit failure indication from SRAM", [117]="Multi-bit failure indication from Instruction Cache Memories", [118]="Multi-bit failure indication from Data Cache Memories", [119]="Multi-bit failure indication from DTCM memories", [120]="Multi-bit failure indication from other peripheral memories like can, cse, flexray, ethernet", [121]="Single-bit failure indication from SPTB memories", [122]="Single-bit failure indication from SRAM", [123]="Single-bit failure indication from Instruction Cache Memories", [124]="Single-bit failure indication from Data Cache Memories", [125]="Single-bit failure indication from DTCM memories", [126]="Single-bit failure indication from other peripheral memories like can, cse, flexray, ethernet", [127]="IAHB gasket monitor  for  FEC/FLEX bridge gasket error", [128]="TSENS_0/1    ", [254]="Multiple error reset", others="Invalid"}},
  }},
  {module=13, type=1, name="reset", title="reset reasons", fields={
    {name="reasons", coding="flags_first", at=1, size=3, meaning="why the board was reset", words={[0]="temperature sensor ‘functional’ reset", [1]="software ‘functional’ reset event", [2]="JTAG ’functional’ reset event", [3]="FCCU short ’functional’ reset", [4]="FCCU long ’functional’ reset", [5]="external reset", [6]="temperature sensor 'destructive' reset", [7]="STCU offline selftest and STCU Critical Fault 'destructive' reset", [8]="SSCM Secure reset", [9]="software ‘destructive’ reset", [10]="power-on reset", [11]="PMC LVD voltage 'destructive' reset", [12]="PLL LVD voltage 'destructive' reset", [13]="MIPI LVD voltage 'destructive' reset", [14]="I/O LVD voltage 'destructive' reset", [15]="Flash LVD voltage 'destructive' reset", [16]="core LVD voltage 'destructive' reset", [17]="ADC LVD voltage 'destructive' reset", [18]="core HVD voltage 'destructive' reset", [19]="ADC HVD voltage 'destructive' reset", [20]="FCCU failure to react  'destructive' reset", [21]="‘functional’ reset escalation  'destructive' reset", [22]="AFE LVD voltage 'destructive' reset", [23]="ERROR/UNKNOW"}},
    {name="sources", coding="flags_number", at=4, size=16, meaning="fault sources behind a reset by the fault collection unit", words={[0]="TSENS_0/1    ", [1]="PMC", [2]="PMC", [3]="PMC", [4]="DCF          ", [5]="SSCM         ", [6]="STCU         ", [7]="STCU         ", [8]="STCU         ", [9]="JTAG_NEX_MON ", [10]="RCCU_0       ", [11]="RCCU_1       ", [12]="RCCU_2       ", [13]="SWT_0        ", [14]="SWT_1        ", [15]="SWT_2  ", [16]="MEMU         ", [17]="MEMU         ", [18]="MEMU         ", [19]="MEMU         ", [20]="MEMU         ", [21]="MEMU         ", [22]="MEMU         ", [23]="MEMU         ", [24]="MEMU         ", [25]="PLL0     ", [26]="PLL1     ", [27]="CMU0 olr_evt ", [28]="CMU_0        ", [29]="CMU_1        ", [30]="CMU_2        ", [31]="CMU_3        ", [32]="CMU_4", [33]="CMU_5        ", [34]="CMU_6        ", [35]="CMU_7        ", [36]="CMU_8        ", [37]="CMU_9        ", [38]="CMU_10       ", [39]="CMU_11       ", [40]="SIUL2", [41]="Flash memory controller", [42]="Flash memory controller", [43]="Flash memory controller", [44]="Flash memory controller", [45]="Flash memory controller", [46]="XBAR_1", [47]="XBAR_0         ", [48]="DMA/Sipi Splitter XBAR ", [49]="RESERVED", [50]="PRAM XBAR         ", [51]="PRAMCtrl 0", [52]="PRAMCtrl 1", [53]="PRAMCtrl 2   ", [54]="PRAMCtrl 3", [55]="PRAMCtrl 4", [56]="PRAMCtrl 5", [57]="PRAMCtrl 6", [58]="PRAMCtrl 7", [59]="Test Control Signal1", [60]="Test Control Signal2", [61]="Test Control Signal3", [62]="Test Control Signal4", [63]="Core- k4a  ", [64]="Lockstep     ", [65]="RGM          ", [66]="ADC_CF_0     ", [67]="ADC_CF_1     ", [68]="RESERVED", [69]="RESERVED", [70]="ADC_NCF_0     ", [71]="ADC_NCF_1     ", [72]="RESERVED", [73]="RESERVED", [74]="MC_ME        ", [75]="INTC MON 0", [76]="INTC MON 1", [77]="INTC MON 2", [78]="INTC MON 3", [79]="INTC MON 4", [80]="INTC MON 5", [81]="INTC MON 6", [82]="INTC MON 7", [83]="INTC MON 8", [84]="RESERVED", [85]="core- k7a", [86]="core- k7b", [87]="CMU_12", [88]="CMU_8 – olr_evt", [89]="SDPLL – Loss of Lock", [90]="SDPLL – Loss of Reference", [91]="fgf_flash_rst_err", [92]="fgf_read_voltage_error", [93]="fgf_ref_curr_error", [94]="fgf_lp_err_10", [95]="K4a IC Alarm", [96]="K4a DC Alarm", [97]="K4a DTCM Alarm", [98]="RESERVED", [99]="RESERVED", [100]="K7a DTCM Alarm", [101]="RESERVED", [102]="RESERVED", [103]="K7b DTCM Alarm", [104]="SMPU_0", [105]="SMPU_1", [106]="DMA Ram Alarm", [107]="TCM Splitter Axbs Alarm", [108]="PRAM0/1/2 mon_err", [109]="M4/M6 Bridge_mon_err", [110]="Gskt_d2i/i2d_mon_err", [111]="aips0/1_gskt_mon_err", [112]="swt0_raw_int", [113]="swt1_raw_int", [114]="swt2_raw_int", [115]="mbist_multi_SPTB  ", [116]="mbist_multi_SRAM  ", [117]="mbist_multi_ICACHE", [118]="mbist_multi_DCACHE", [119]="mbist_multi_DTCM  ", [120]="mbist_multi_PERIPH ", [121]="mbist_single_SPTB  ", [122]="mbist_single_SRAM  ", [123]="mbist_single_ICACHE", [124]="mbist_single_DCACHE", [125]="mbist_single_DTCM  ", [126]="mbist_single_PERIPH", [127]="Ethernet/Flexray bridge gasket_mon_err"}},
    {name="destructive", coding="computed", at=0, size=1, flag=true, meaning="one of the reasons 6 to 23"},
  }},
  {module=13, type=4, name="escalation", title="thresholds of the escalation", fields={
    {name="functional", coding="big", at=0, size=1, unit="resets", meaning="functional resets that make a destructive one; 0: off"},
    {name="destructive", coding="big", at=1, size=1, unit="resets", meaning="destructive resets that keep the chip in reset; 0: off"},
  }},
  {module=14, type=1, name="vg5k", title="one item", fields={
    {name="item", coding="signed", at=0, size=1, meaning="what the value is of", words={[0]="regulators", [1]="fail-safe state", [2]="debug mode", [3]="fault counter"}},
    {name="has_value", coding="present", at=1, size=1, flag=true, meaning="there is a value"},
    {name="value", coding="big", at=1, size=1, meaning="the value"},
    {name="not_good", coding="flags_number", at=1, size=1, when=0, meaning="supplies that are not good", words={[0]="VLDO1", [1]="VLDO2", [2]="VBuck3", [3]="VBuck2", [4]="VBuck1", [5]="VBoost", [6]="VPRE", [7]="SPI/I2C"}},
    {name="fail_safe_state", coding="big", at=1, size=1, when=1, meaning="state of the fail-safe machine", words={[0]="INIT_FS", [1]="WAIT_ABIST2", [2]="ABIST2", [3]="ASSERT_FS0B", [4]="NORMAL_FS", others="Unknown"}},
    {name="debug", coding="big", at=1, size=1, low=0, bits=1, flag=true, when=2, meaning="the chip is in debug mode"},
    {name="fault_counter", coding="big", at=1, size=1, when=3, meaning="faults counted by the chip"},
  }},
  {module=15, type=1, name="cse_status", title="status of the engine", fields={
    {name="error", coding="big", at=0, size=1, meaning="error of the engine; 0: it works on a command", words={[0]="No error", [1]="Invalid fault code", [2]="Command sequence error", [3]="Key not available", [4]="Invalid key", [5]="Empty key", [6]="No secure boot", [7]="Key write protected", [8]="Key update error", [9]="Random number seed not initialized", [10]="Internal debug not allowed", [11]="Command issued while busy", [12]="System memory error", [13]="Invalid fault code", [14]="Invalid fault code", [15]="Invalid fault code", [16]="Internal memory error", [17]="Invalid command", [18]="TRNG error", [19]="CSE flash block error", [20]="Internal command processor error", [21]="Length error"}},
  }},
  {module=15, type=4, name="cse_result", title="result of an operation", fields={
    {name="operation", coding="big", at=0, size=1, meaning="what was done", words={[0]="encrypt AES-128-ECB", [1]="encrypt AES-128-CBC", [2]="decrypt AES-128-ECB", [3]="decrypt AES-128-CBC", [4]="generate AES-128-CMAC", [5]="verify AES-128-CMAC", [6]="pseudo random number", [7]="true random number"}},
    {name="time", coding="float", at=1, size=4, unit="us", meaning="time of the operation"},
    {name="length", coding="big", at=5, size=2, unit="bytes", meaning="number of result bytes"},
    {name="passed", coding="big", at=7, size=1, flag=true, when=5, meaning="verdict of a verification: not 0"},
    {name="bytes", coding="tail", at=5, size=0, meaning="the result"},
  }},
  {module=16, type=1, name="spt", title="frame counter", fields={
    {name="count", coding="big", at=0, size=4, unit="frames", meaning="radar frames processed"},
  }},
  {module=16, type=2, name="spt_record", title="fault record", fields={
    {name="count", coding="big", at=0, size=1, meaning="number of faults"},
    {name="faults", coding="whole", at=1, size=4, meaning="the faults", fields={
      {name="code", coding="big", at=0, size=4, meaning="fault code of the accelerator"},
    }},
  }},
}
local commands = {
  {words="get 0", module=1, help="greeting; state of the fault collection unit"},
  {words="get 1", module=1, help="operating mode and firmware version"},
  {words="inject 1", module=1, help="functional reset"},
  {words="inject 2", module=1, help="destructive reset; takes the hard lock off"},
  {words="get 3", module=2, help="clock generators and measurement of the internal oscillator"},
  {words="get 4", module=2, help="all clock monitors, a report for each"},
  {words="cmu", module=2, help="set the limits of a monitor"},
  {words="cmu 13", module=2, help="switch a monitor on"},
  {words="cmu 14", module=2, help="switch a monitor off"},
  {words="cmu 15", module=2, help="all monitors to their defaults"},
  {words="cmu 16", module=2, help="clock fault record"},
  {words="cmu 17", module=2, help="clear the clock faults"},
  {words="inject 5 1", module=2, help="MC_CLK slower than its lower limit"},
  {words="inject 5 2", module=2, help="ADC_CLK faster than its upper limit"},
  {words="inject 5 3", module=2, help="loss of SPI_CLK"},
  {words="inject 5 4", module=2, help="limits of MC_CLK moved above its frequency"},
  {words="inject 5 5", module=2, help="limits of MC_CLK moved below its frequency"},
  {words="get 11", module=3, help="which crossbar checkers are on"},
  {words="xbic 1", module=3, help="switch a checker on"},
  {words="xbic 2", module=3, help="switch a checker off"},
  {words="xbic 3", module=3, help="all checkers to their defaults"},
  {words="xbic 4", module=3, help="crossbar fault record"},
  {words="xbic 5", module=3, help="clear the crossbar faults"},
  {words="inject 7", module=3, help="crossbar error on a path of a checker"},
  {words="get 5", module=4, help="all regions, a report for each"},
  {words="smpu 1", module=4, help="all protection on"},
  {words="smpu 2", module=4, help="all protection off"},
  {words="smpu 3", module=4, help="regions to their defaults"},
  {words="smpu 4", module=4, help="protection fault record"},
  {words="smpu 5", module=4, help="clear the protection faults"},
  {words="inject 6 1", module=4, help="forbidden write to SRAM"},
  {words="inject 6 2", module=4, help="forbidden read from flash"},
  {words="inject 6 3", module=4, help="forbidden write to UTEST flash"},
  {words="inject 6 4", module=4, help="forbidden write to EEPROM flash"},
  {words="inject 6 5", module=4, help="forbidden write to main flash"},
  {words="inject 6 6", module=4, help="write of K7a to K4's RAM"},
  {words="get 8", module=5, help="locks and content of the protected register"},
  {words="regP 1", module=5, help="soft lock off"},
  {words="regP 2", module=5, help="soft lock on, by writing to the mirror space"},
  {words="regP 3", module=5, help="soft lock on by its bit, then write to the module space"},
  {words="regP 4", module=5, help="hard lock on, then write to the mirror space"},
  {words="regP 5", module=5, help="write to the register"},
  {words="crc", module=6, help="checksum of a block; polynomials CRC-8 VDA CAN, CRC-16-CCITT, CRC-32 ITU-T V.42, CRC-8-H2F"},
  {words="inject 9 1", module=7, help="1-bit error in flash"},
  {words="inject 9 2", module=7, help="2-bit error in flash"},
  {words="inject 9 3", module=7, help="1-bit error in peripheral RAM"},
  {words="inject 9 4", module=7, help="2-bit error in peripheral RAM"},
  {words="inject 9 5", module=7, help="1-bit error in system RAM"},
  {words="inject 9 6", module=7, help="2-bit error in system RAM"},
  {words="inject 9 7", module=7, help="error in the data cache"},
  {words="memu 1", module=7, help="memory fault record"},
  {words="memu 2", module=7, help="clear the memory fault record"},
  {words="memu 3", module=7, help="clear the memory fault status"},
  {words="get 7", module=8, help="all channels of the interrupt monitor"},
  {words="intcm", module=8, help="configure a channel"},
  {words="intcm 1", module=8, help="all channels to their defaults"},
  {words="intcm 2", module=8, help="interrupt fault record"},
  {words="intcm 3", module=8, help="clear the interrupt faults"},
  {words="intcm 4", module=8, help="close a channel"},
  {words="inject 8", module=8, help="late interrupt on a core"},
  {words="get 6", module=10, help="which voltage detectors are on"},
  {words="pmc 1", module=10, help="self-test of all detectors"},
  {words="pmc 2", module=10, help="self-test of a detector"},
  {words="pmc 3", module=10, help="switch a detector on"},
  {words="pmc 4", module=10, help="switch a detector off"},
  {words="pmc 5", module=10, help="all detectors to their defaults"},
  {words="pmc 6", module=10, help="voltage fault record"},
  {words="pmc 7", module=10, help="clear the voltage faults"},
  {words="inject 4 1", module=10, help="temperature out of range"},
  {words="inject 4 2", module=10, help="voltage too high"},
  {words="inject 4 3", module=10, help="voltage too low"},
  {words="inject 4 4", module=10, help="failing self-test of an LVD"},
  {words="get 2", module=11, help="all watchdogs, a report for each"},
  {words="swt 1", module=11, help="fixed service sequence with this time-out"},
  {words="swt 2", module=11, help="keyed service sequence with this time-out"},
  {words="swt 3", module=11, help="switch a watchdog on"},
  {words="swt 4", module=11, help="switch a watchdog off"},
  {words="swt 5", module=11, help="all watchdogs to their defaults"},
  {words="inject 3 1", module=11, help="time-out of the first watchdog"},
  {words="inject 3 2", module=11, help="invalid access to the first watchdog"},
  {words="get 9", module=13, help="reset reasons and escalation thresholds"},
  {words="resetEsca 1 1", module=13, help="functional escalation on or off"},
  {words="resetEsca 1 2", module=13, help="clear the functional counter"},
  {words="resetEsca 1 3", module=13, help="threshold of the functional escalation; 0: off"},
  {words="resetEsca 2 1", module=13, help="destructive escalation on or off"},
  {words="resetEsca 2 2", module=13, help="clear the destructive counter"},
  {words="resetEsca 2 3", module=13, help="threshold of the destructive escalation; 0: off"},
  {words="get 10", module=14, help="all items of the power chip, a report for each"},
  {words="cse 1", module=15, help="load the demonstration keys; once on a new device"},
  {words="cse 2 1", module=15, help="encrypt with AES-128-ECB"},
  {words="cse 2 2", module=15, help="encrypt with AES-128-CBC"},
  {words="cse 3 1", module=15, help="decrypt with AES-128-ECB"},
  {words="cse 3 2", module=15, help="decrypt with AES-128-CBC"},
  {words="cse 4", module=15, help="generate an AES-128-CMAC"},
  {words="cse 5", module=15, help="verify an AES-128-CMAC"},
  {words="cse 6 1", module=15, help="pseudo random number"},
  {words="cse 6 2", module=15, help="true random number; initialises the pseudo random generator"},
  {words="cse 7", module=15, help="extend the pseudo random generator's seed"},
  {words="inject 10 1", module=16, help="parity error in the operand RAM"},
  {words="inject 10 2", module=16, help="content error in the twiddle RAM"},
  {words="spt 1", module=16, help="accelerator fault record"},
  {words="spt 2", module=16, help="clear the accelerator faults"},
}
-- end of dissector tables

local protocol = Proto("safetyworkbench", "Safety Workbench line")

local SENT, RECEIVED = 0, 1
local SYNC, HEADER, OVERHEAD, MIN_PARSED, MAX_PAYLOAD = "\xA5\xC3", 8, 12, 13, 65535

-- ---- fields ------------------------------------------------------------------------------------------------------

local prefix = "safetyworkbench."
local fixed = {
  bytes = ProtoField.bytes(prefix .. "bytes", "Bytes of the line"),
  direction = ProtoField.uint8(prefix .. "direction", "Direction", base.DEC, {[SENT] = "to the board", [RECEIVED] = "from the board"}),
  command = ProtoField.string(prefix .. "command", "Command"),
  command_help = ProtoField.string(prefix .. "command.help", "Effect"),
  frame = ProtoField.bytes(prefix .. "frame", "Frame"),
  tag = ProtoField.uint16(prefix .. "frame.tag", "Tag", base.HEX),
  module = ProtoField.uint8(prefix .. "frame.module", "Module", base.DEC),
  module_name = ProtoField.string(prefix .. "frame.module_name", "Module name"),
  type = ProtoField.uint8(prefix .. "frame.type", "Report type", base.DEC),
  length = ProtoField.uint16(prefix .. "frame.length", "Payload length", base.DEC),
  payload = ProtoField.bytes(prefix .. "frame.payload", "Payload"),
  report = ProtoField.string(prefix .. "report", "Report"),
  stray = ProtoField.bytes(prefix .. "stray", "Bytes of no frame"),
  pending = ProtoField.uint32(prefix .. "pending", "Bytes carried over to the next packet", base.DEC),
}
local all_fields = {}
for _, field in pairs(fixed) do table.insert(all_fields, field) end

local function value_strings(field)
  if not field.words then return nil end
  local strings = {}
  for code, text in pairs(field.words) do
    if code ~= "others" then strings[code] = text end
  end
  if field.words.others then
    for code = 0, 255 do strings[code] = strings[code] or field.words.others end
  end
  return strings
end

local function proto_field(path, field)
  local title = field.meaning and (field.name .. ": " .. field.meaning) or field.name
  local coding = field.coding
  if coding == "counted" or coding == "whole" then return ProtoField.none(path, title) end
  if coding == "latin1" or coding == "utf8" or coding == "words" then return ProtoField.string(path, title) end
  if coding == "data" or coding == "tail" then return ProtoField.bytes(path, title) end
  if coding == "float" or field.scale then return ProtoField.float(path, title) end
  if field.flag then return ProtoField.bool(path, title) end
  if coding == "signed" then return ProtoField.int8(path, title, base.DEC, value_strings(field)) end
  return ProtoField.uint32(path, title, field.hex and base.HEX or base.DEC, value_strings(field))
end

local function make_fields(path, fields)
  for _, field in ipairs(fields) do
    field.proto = proto_field(path .. "." .. field.name, field)
    table.insert(all_fields, field.proto)
    if field.fields then make_fields(path .. "." .. field.name, field.fields) end
  end
end

local report_of = {} -- by module, then by type
for _, report in ipairs(reports) do
  report.proto = ProtoField.none(prefix .. report.name, report.title)
  table.insert(all_fields, report.proto)
  make_fields(prefix .. report.name, report.fields)
  report_of[report.module] = report_of[report.module] or {}
  report_of[report.module][report.type] = report
end
protocol.fields = all_fields

local experts = {
  fault = ProtoExpert.new(prefix .. "expert.fault", "Fault", expert.group.RESPONSE_CODE, expert.severity.WARN),
  record = ProtoExpert.new(prefix .. "expert.record", "Fault record", expert.group.RESPONSE_CODE, expert.severity.NOTE),
  damaged = ProtoExpert.new(prefix .. "expert.damaged", "Bytes of no frame", expert.group.MALFORMED, expert.severity.ERROR),
  unknown = ProtoExpert.new(prefix .. "expert.unknown", "Unknown report", expert.group.UNDECODED, expert.severity.NOTE),
  reset = ProtoExpert.new(prefix .. "expert.reset", "Reset", expert.group.SEQUENCE, expert.severity.NOTE),
  engine = ProtoExpert.new(prefix .. "expert.engine", "Error of the engine", expert.group.RESPONSE_CODE, expert.severity.WARN),
}
protocol.experts = {experts.fault, experts.record, experts.damaged, experts.unknown, experts.reset, experts.engine}

-- ---- payloads ----------------------------------------------------------------------------------------------------

-- A payload as bytes; those behind its end are 0.
local function u8(payload, at) return payload:byte(at + 1) or 0 end
local function big(payload, at, size)
  local number = 0
  for i = 0, size - 1 do number = number * 256 + u8(payload, at + i) end
  return number
end

local function announced_data(payload) return math.min(big(payload, 0, 4), MAX_PAYLOAD) end

local function float_of(bits)
  local sign = bits >= 2 ^ 31 and -1 or 1
  local exponent = math.floor(bits / 2 ^ 23) % 256
  local fraction = bits % 2 ^ 23
  if exponent == 255 then return fraction == 0 and sign / 0 or 0 / 0 end
  if exponent == 0 then return sign * fraction * 2 ^ -149 end
  return sign * (1 + fraction / 2 ^ 23) * 2 ^ (exponent - 127)
end

local readers = {
  little = function(p, at) return u8(p, at) + u8(p, at + 1) * 256 + u8(p, at + 2) * 65536 + u8(p, at + 3) * 16777216 end,
  halves = function(p, at) return big(p, at + 2, 2) * 65536 + big(p, at, 2) end,
  signed = function(p, at)
    if #p <= at then return -1 end
    local byte = u8(p, at)
    return byte < 128 and byte or byte - 256
  end,
  float = function(p, at) return float_of(big(p, at, 4)) end,
  one = function(p, at) return u8(p, at) == 1 end,
  restart = function(p, at) return u8(p, at) == 0x7F or u8(p, at + 1) == 0xFE end,
  present = function(p, at) return #p > at end,
  latin1 = function(p, at) return (p:sub(at + 1):match("^[^%z]*")) end,
  data = function(p, at) return p:sub(at + 1, at + announced_data(p)) end,
  tail = function(p, at)
    local size = math.min(big(p, at, 2), #p)
    return size == 0 and "" or p:sub(-size)
  end,
  optional = function(p, at) return u8(p, at) end,
}
readers.utf8 = readers.latin1

local function number_of(field, payload, at)
  local number = big(payload, at, field.size)
  if field.bits then number = math.floor(number / 2 ^ field.low) % 2 ^ field.bits end
  return number
end

local function value_of(field, payload, start)
  local at = start + field.at + (field.behind and announced_data(payload) or 0)
  local value
  if readers[field.coding] then value = readers[field.coding](payload, at) else value = number_of(field, payload, at) end
  if field.flag and type(value) == "number" then value = value ~= 0 end
  if field.scale then value = value / field.scale end
  return value, at
end

local function elements_of(field, payload, start)
  local elements = {}
  for i = 0, (field.bits or field.size * 8) - 1 do
    local first = field.coding == "flags_first"
    local byte = first and math.floor(i / 8) or field.size - 1 - math.floor(i / 8)
    local bit = first and 7 - i % 8 or i % 8
    if math.floor(u8(payload, start + field.at + byte) / 2 ^ bit) % 2 == 1 then table.insert(elements, i) end
  end
  return elements
end

-- Text of the line is Latin-1, what Wireshark shows is UTF-8.
local function shown(text)
  return (text:gsub("[\x80-\xFF]", function(c) return string.char(0xC0 + math.floor(c:byte() / 64), 0x80 + c:byte() % 64) end))
end

-- ---- trees -------------------------------------------------------------------------------------------------------

-- The part of the payload that a field stands on; what lies behind its end stands on nothing.
local function range_of(tvb, at, size)
  local length = tvb:len()
  if at >= length then return nil end
  return tvb(at, math.min(size, length - at))
end

local function add(tree, proto, range, value)
  local item
  if range then item = tree:add(proto, range, value) else item = tree:add(proto, value) end
  return item
end

local function add_text(tree, field, range, value, is_utf8)
  if value == "" then return add(tree, field.proto, nil, "") end
  local encoding = is_utf8 and ENC_UTF_8 or ENC_ISO_8859_1
  return tree:add_packet_field(field.proto, range(0, #value), encoding + ENC_NA)
end

local add_fields

local function add_records(tree, field, tvb, payload)
  local count = field.coding == "counted" and u8(payload, 0) or math.max(0, math.floor((#payload - field.at) / field.size))
  local first
  for i = 0, count - 1 do
    local at = field.at + i * field.size
    local range = range_of(tvb, at, field.size)
    local item = range and tree:add(field.proto, range) or tree:add(field.proto)
    item:set_text(string.format("%s %d", field.name, i + 1))
    local words = add_fields(item, field.fields, tvb, payload, at)
    first = first or words
  end
  return count, first
end

-- Words for a value, where it has some.
local function words_of(field, value)
  if field.words and type(value) == "number" then return field.words[value] or field.words.others end
  return nil
end

local function is_absent(field, payload, first)
  if field.when and first ~= field.when then return true end
  return field.coding == "optional" and u8(payload, 0) == 0 and #payload <= field.at
end

local function add_flags(tree, field, tvb, payload, start)
  for _, element in ipairs(elements_of(field, payload, start)) do
    add(tree, field.proto, range_of(tvb, start + field.at, field.size), element)
  end
end

local function add_value(tree, field, tvb, payload, start)
  local value, at = value_of(field, payload, start)
  local size = (field.coding == "latin1" or field.coding == "utf8") and math.max(1, #payload) or field.size
  if field.coding == "data" then size = math.max(1, #value) end
  if field.coding == "tail" then at, size = #payload - #value, math.max(1, #value) end
  local range = range_of(tvb, at, size)
  local item
  if field.coding == "latin1" or field.coding == "utf8" then
    item = add_text(tree, field, range, value, field.coding == "utf8")
  elseif field.coding == "data" or field.coding == "tail" then
    if #value > 0 then item = tree:add(field.proto, range) else item = tree:add(field.proto, ByteArray.new():tvb("none")()) end
  else
    item = add(tree, field.proto, range, value)
  end
  if field.divisor then
    item:append_text(string.format(" %s (%d %s)", field.unit, math.floor(value / field.divisor), field.per))
  elseif field.unit then
    item:append_text(" " .. field.unit)
  end
  return value
end

-- Adds the fields of a report or record. Returns words for the packet list.
function add_fields(tree, fields, tvb, payload, start)
  local said, first = {}, nil
  local values = {}
  for position, field in ipairs(fields) do
    if not is_absent(field, payload, first) then
      if field.fields then
        local _, words = add_records(tree, field, tvb, payload)
        if words then table.insert(said, words) end
      elseif field.coding == "flags_first" or field.coding == "flags_number" then
        add_flags(tree, field, tvb, payload, start)
        for _, element in ipairs(elements_of(field, payload, start)) do
          table.insert(values, element)
          table.insert(said, words_of(field, element))
        end
      elseif field.coding == "words" then
        local text = words_of(field, first) or ""
        add(tree, field.proto, nil, text):set_generated()
        table.insert(said, (text:gsub("%s+$", "")))
      elseif field.coding == "computed" then
        local destructive = false
        for _, element in ipairs(values) do destructive = destructive or (element >= 6 and element < 24) end
        add(tree, field.proto, nil, destructive):set_generated()
      else
        local value = add_value(tree, field, tvb, payload, start)
        if position == 1 then first = value end
        table.insert(said, words_of(field, value))
      end
    end
  end
  return table.concat(said, ", ")
end

local function add_experts(item, report, payload)
  local first = u8(payload, 0)
  if report.name == "fault" then
    item:add_proto_expert_info(experts.fault, "Fault ID " .. first)
  elseif report.name:find("_record$") and (first > 0 and #payload > 1) then
    item:add_proto_expert_info(experts.record)
  elseif report.name == "reset" or report.name == "restart" then
    item:add_proto_expert_info(experts.reset, report.title)
  elseif report.name == "cse_status" and first ~= 0 then
    item:add_proto_expert_info(experts.engine)
  end
end

-- ---- frames ------------------------------------------------------------------------------------------------------

local function ends_well(data, stop) return data:byte(stop - 1) == 0xD4 and data:byte(stop) == 0xB2 end

-- Cuts frames out of `data`. Returns the spans of frames, the first byte that is carried over, which is one behind the
-- last where there is none, and the spans that belong to no frame.
local function extract(data)
  local frames, strays, size = {}, {}, #data
  if size < MIN_PARSED then return frames, 1, strays end
  local at, done, first = 1, 1, nil
  local function pass(from, to)
    if from > done then table.insert(strays, {from = done, to = from - 1}) end
    done = to + 1
  end
  while true do
    local start = data:find(SYNC, at, true)
    if not start then break end
    local rest = size - start + 1
    if rest <= OVERHEAD then
      first = first or start
      break
    end
    local stop = start + OVERHEAD + data:byte(start + 6) * 256 + data:byte(start + 7) - 1
    if stop > size then
      first = first or start
      at = start + #SYNC
    elseif ends_well(data, stop) then
      pass(start, stop)
      table.insert(frames, {from = start, to = stop})
      first, at = nil, stop + 1
    elseif first then
      at = start + #SYNC
    else
      at = data:byte(stop - 1) == 0xD4 and stop + 1 or stop
    end
  end
  local carried = first or (data:byte(size) == SYNC:byte(1) and at <= size and size or size + 1)
  if carried > done then table.insert(strays, {from = done, to = carried - 1}) end
  return frames, carried, strays
end

-- What packets hold, worked out once in their order and kept for every later look at them.
local contents -- by packet number
local carried_bytes, carried_line -- by port

function protocol.init() contents, carried_bytes, carried_line = {}, {}, {} end

local function take_received(port, bytes)
  local carried = carried_bytes[port] or ""
  local dropped = ""
  if carried ~= "" and carried:byte(1) ~= SYNC:byte(1) then carried, dropped = "", carried end
  local data = carried .. bytes
  local frames, keep, strays = extract(data)
  carried_bytes[port] = data:sub(keep)
  local content = {frames = {}, strays = {}, pending = #data - keep + 1}
  if dropped ~= "" then table.insert(content.strays, dropped) end
  for _, span in ipairs(strays) do table.insert(content.strays, data:sub(span.from, span.to)) end
  for _, span in ipairs(frames) do
    -- Offset in this packet, where all of the frame is in it.
    local offset = span.from - #carried - 1
    table.insert(content.frames, {bytes = data:sub(span.from, span.to), offset = offset >= 0 and offset or nil})
  end
  return content
end

local function take_sent(port, bytes)
  local data = (carried_line[port] or "") .. bytes
  local content = {lines = {}}
  local at = 1
  while true do
    local stop = data:find("\n", at, true)
    if not stop then break end
    table.insert(content.lines, shown((data:sub(at, stop - 1):gsub("\r$", ""))))
    at = stop + 1
  end
  carried_line[port] = data:sub(at)
  content.pending = #data - at + 1
  return content
end

local function module_name(module) return modules[module] and modules[module].name or tostring(module) end

local function report_for(module, kind)
  local kinds = report_of[module]
  return kinds and (kinds[kind] or (module == 0 and kinds[0])) or nil
end

local function show_report(tree, tvb, payload, report)
  local item = tvb:len() > 0 and tree:add(report.proto, tvb()) or tree:add(report.proto)
  item:set_text(modules[report.module].title .. ", " .. report.title)
  add(tree, fixed.report, nil, report.name):set_generated()
  local words = add_fields(item, report.fields, tvb, payload, 0)
  if report.name == "text" then words = shown(readers.latin1(payload, 0)) end
  if words ~= "" then item:append_text(": " .. words) end
  add_experts(item, report, payload)
  return words == "" and report.name or report.name .. ": " .. words
end

local function show_frame(tree, tvb, frame)
  local module, kind = frame.bytes:byte(5), frame.bytes:byte(6)
  local payload = frame.bytes:sub(HEADER + 1, -5)
  local item = tree:add(fixed.frame, tvb())
  item:set_text("Frame, " .. #frame.bytes .. " bytes" .. (frame.offset and "" or ", begun in an earlier packet"))
  item:add(fixed.tag, tvb(2, 2))
  item:add(fixed.module, tvb(4, 1)):append_text(" (" .. module_name(module) .. ")")
  item:add(fixed.module_name, tvb(4, 1), module_name(module)):set_generated()
  item:add(fixed.type, tvb(5, 1))
  item:add(fixed.length, tvb(6, 2))
  if #payload > 0 then item:add(fixed.payload, tvb(HEADER, #payload)) end
  local report = report_for(module, kind)
  if not report then
    item:add_proto_expert_info(experts.unknown)
    return string.format("unknown report %d of module %s", kind, module_name(module))
  end
  local part = #payload > 0 and tvb(HEADER, #payload):tvb() or ByteArray.new():tvb("empty payload")
  return show_report(item, part, payload, report)
end

local function show_received(tree, tvb, content)
  local words = {}
  for _, stray in ipairs(content.strays) do
    local item = tree:add(fixed.stray, ByteArray.new(stray, true):tvb("Bytes of no frame")())
    item:add_proto_expert_info(experts.damaged)
    table.insert(words, #stray .. " bytes of no frame")
  end
  for _, frame in ipairs(content.frames) do
    local range = frame.offset and tvb(frame.offset, #frame.bytes):tvb()
      or ByteArray.new(frame.bytes, true):tvb("Frame put together")
    table.insert(words, show_frame(tree, range, frame))
  end
  return words
end

-- The command with the most words that the line begins with.
local function command_of(line)
  local found
  for _, command in ipairs(commands) do
    if (line .. " "):sub(1, #command.words + 1) == command.words .. " " and (not found or #command.words > #found.words) then
      found = command
    end
  end
  return found
end

local function show_sent(tree, content)
  for _, line in ipairs(content.lines) do
    local item = tree:add(fixed.command, line)
    local command = command_of(line)
    if command then
      item:append_text(" (" .. command.help .. ")")
      item:add(fixed.command_help, command.help):set_generated()
    end
    if line == "inject 1" or line == "inject 2" then item:add_proto_expert_info(experts.reset, command.help) end
  end
  return content.lines
end

local interface = Field.new("frame.interface_id")

local function content_of(pinfo, tvb, direction)
  local known = contents[pinfo.number]
  if known then return known end
  local port = interface() and interface().value or 0
  local take = direction == SENT and take_sent or take_received
  contents[pinfo.number] = take(port, tvb:raw())
  return contents[pinfo.number]
end

function protocol.dissector(tvb, pinfo, tree)
  pinfo.cols.protocol = "SWB"
  local direction = pinfo.p2p_dir
  if direction ~= SENT and direction ~= RECEIVED then
    pinfo.cols.info = "note"
    return
  end
  local top = tree:add(protocol, tvb())
  top:add(fixed.direction, direction):set_generated()
  if tvb:len() > 0 then top:add(fixed.bytes, tvb()) end
  local content = content_of(pinfo, tvb, direction)
  local words = direction == SENT and show_sent(top, content) or show_received(top, tvb, content)
  if content.pending > 0 then top:add(fixed.pending, content.pending):set_generated() end
  pinfo.cols.info = (direction == SENT and "-> " or "<- ") .. table.concat(words, " | ")
end
