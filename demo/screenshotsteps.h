// SPDX-License-Identifier: MIT
// How the program is brought into the states that the manual shows, step by step.
#pragma once

enum class Act {
    Turn,       // to the page that holds the widget
    Press,      // a button
    Enter,      // text into a field, a number into a spin box, the item of a selector
    Type,       // text and Return, key by key
    Choose,     // a menu entry
    Call,       // a slot of the window by its name
    AskForPort, // as at a start with two ports
    Await,      // until the widget's text, or its colour in words, or "on" of a group, contains the text
    Picture,    // of the widget, saved under this name
    Resize,     // the window to WIDTHxHEIGHT
    Leave,      // closes the window
};

/// The widget's name, or "dialog": the modal one on the screen.
struct Step {
    Act act{};
    const char *widget = "";
    const char *text = "";
};

constexpr Step steps[] = {
    // Two crossbar faults, the second one on its way.
    {Act::Await, "lineEdit_firewareVision", "Version"},
    {Act::Await, "label_FCCU_status", "NORMAL"},
    {Act::Turn, "tabWidgetPage2"},
    {Act::Await, "groupBox_XBIC4", "on"},
    {Act::Press, "pushButton_xbic_fault1"},
    {Act::Await, "textEdit_xbicFaultRecord", "Fault Number: 1"},
    {Act::Await, "textBrowser_fccurecord", "Fault ID 47"},
    {Act::Picture, "MainWindow", "window"},
    {Act::Press, "pushButton_xbic_fault3"},
    {Act::Await, "label_xbic2_SRAM3", "Red"},
    {Act::Picture, "tabWidget_function", "xbic"},
    {Act::Await, "textBrowser_fccurecord", "Fault ID 50"},
    {Act::Press, "pushButton_xbic_faultstatus_clear"},
    {Act::Await, "label_FCCU_status", "NORMAL"},

    // A clock that is too slow, and what the next status report then says.
    {Act::Turn, "tabWidgetPage1"},
    {Act::Await, "label_acqnclk_fvalue", "Green"},
    {Act::Press, "pushButton_cmu_fault1"},
    {Act::Await, "textBrowser_fccurecord", "Fault ID 28"},
    {Act::Press, "pushButton_cmu_faultrecord_get"},
    {Act::Await, "textEdit_cmuFaultRecord", "Lower than CMU0"},
    {Act::Picture, "tabWidget_function", "cmu"},
    {Act::Press, "pushButton_CMU_update"},
    {Act::Picture, "dialog", "cmu-error"},
    {Act::Leave, "dialog"},
    {Act::Press, "pushButton_cmu_faultstatus_clear"},
    {Act::Await, "label_FCCU_status", "NORMAL"},

    {Act::Turn, "tabWidgetPage3"},
    {Act::Await, "lineEdit_smpu01_Region15", "Valid"},
    {Act::Press, "pushButton_smpu_fault1"},
    {Act::Await, "textEdit_smpuFaultRecord", "Fault Number:1"},
    {Act::Press, "pushButton_smpu_fault3"},
    {Act::Await, "textEdit_smpuFaultRecord", "Fault Number:2"},
    {Act::Picture, "tabWidget_function", "smpu"},

    // Errors in every memory; one of them cannot be corrected.
    {Act::Turn, "tabWidgetPage4"},
    {Act::Enter, "lineEdit_memu_3", "100"},
    {Act::Enter, "lineEdit_memu_5", "12345678"},
    {Act::Press, "pushButton_memu_inject_3"},
    {Act::Await, "textBrowser_fccurecord", "Fault ID 16"},
    {Act::Enter, "lineEdit_memu_2", "40"},
    {Act::Enter, "lineEdit_memu_4", "AA55"},
    {Act::Press, "pushButton_memu_inject_2"},
    {Act::Await, "textBrowser_fccurecord", "Fault ID 19"},
    {Act::Enter, "comboBox_memu_1", "2 Bit"},
    {Act::Enter, "lineEdit_memu_1", "2000"},
    {Act::Press, "pushButton_memu_inject"},
    {Act::Await, "textBrowser_fccurecord", "Fault ID 23"},
    {Act::Press, "pushButton_memu_faultrecord_get"},
    {Act::Await, "textEdit_memuFaultRecord", "Fault 3"},
    {Act::Picture, "tabWidget_function", "memu"},
    {Act::Picture, "groupBox_FCCU", "fccu"},

    {Act::Turn, "tabWidgetPage5"},
    {Act::Enter, "comboBox_CRC_polynomial", "CRC-32 ITU-T V.42"},
    {Act::Press, "pushButton_CRC_set"},
    {Act::Await, "label_CRC_status", "Successful"},
    {Act::Picture, "tabWidget_function", "crc"},

    {Act::Turn, "tabWidgetPage6"},
    {Act::Await, "label_intcm_onoff1", "On"},
    {Act::Enter, "comboBox_intcm_core", "K7b(2)"},
    {Act::Enter, "comboBox_intcm_index", "2"},
    {Act::Enter, "comboBox_intcm_mode", "SW"},
    {Act::Enter, "lineEdit_intcm1", "24000"},
    {Act::Enter, "lineEdit_intcm1_2", "310"},
    {Act::Press, "pushButton_intcm_config"},
    {Act::Await, "label_intcm_irq9", "310"},
    {Act::Press, "pushButton_intcm_inject_k70"},
    {Act::Await, "textEdit_intcmFaultRecord", "Fault Number: 1"},
    {Act::Picture, "tabWidget_function", "intcm"},

    // A detector that is off fails its self-test.
    {Act::Turn, "tabWidgetPage8"},
    {Act::Await, "label_PMC_IOLVD", "Green"},
    {Act::Press, "radioButton_PMC_IOLVD_onoff"},
    {Act::Await, "label_PMC_IOLVD", "Gray"},
    {Act::Press, "pushButton_PMC_allSTest"},
    {Act::Await, "label_PMC_PMCLVD_test_s", "Green"},
    {Act::Press, "pushButton_PMC_FI_HVD"},
    {Act::Await, "textBrowser_fccu", "HVD"},
    {Act::Press, "pushButton_PMC_FI_TempSensor"},
    {Act::Await, "textBrowser_fccu", "temperature"},
    {Act::Press, "pushButton_PMC_GetFault"},
    {Act::Await, "textBrowser_PMC_allFaultRec", "Temperature"},
    {Act::Picture, "tabWidget_function", "pmc"},

    {Act::Turn, "tabWidgetPage7"},
    {Act::Await, "lineEdit_vg5k_Fail", "NORMAL_FS"},
    {Act::Picture, "tabWidget_function", "vg5k"},

    // A watchdog that runs out: the fault, then the reset that it causes.
    {Act::Turn, "tabWidgetPage9"},
    {Act::Await, "lineEdit_swt_0_mode", "Fixed"},
    {Act::Enter, "comboBox_swt_core", "K7a_SWT1"},
    {Act::Enter, "comboBox_swt_mode", "Keyed Service Sequence"},
    {Act::Enter, "spinBox_swt_timeout", "250"},
    {Act::Press, "pushButton_swt_commandset"},
    {Act::Await, "lineEdit_swt_timeout0_7", "250ms"},
    {Act::Press, "pushButton_swt_timeout_2"},
    {Act::Await, "textBrowser_fccu", "SWT_0"},
    {Act::Picture, "tabWidget_function", "swt"},
    {Act::Await, "textBrowser_ResetSource", "SWT_0"},
    {Act::Await, "label_LBIST_8", "Green"},
    {Act::Picture, "widget_sidePanel", "side-panel"},

    // The frame counter starts anew with a reset.
    {Act::Turn, "tabWidgetPage10"},
    {Act::Choose, "actionFunctional_Reset"},
    {Act::Await, "label_FCCU_status", "CONFIG"},
    {Act::Await, "label_FCCU_status", "NORMAL"},
    {Act::Press, "pushButton_spt_oram"},
    {Act::Await, "textEdit_sptFaultRecord", "Fault number: 1"},
    {Act::Press, "pushButton_spt_tram"},
    {Act::Await, "textEdit_sptFaultRecord", "Fault number: 2"},
    {Act::Await, "lineEdit_spt", "80"},
    {Act::Picture, "tabWidget_function", "spt"},

    // Keys first; then a text there and back, an authentication code, random numbers.
    {Act::Turn, "tab_CSE"},
    {Act::Enter, "plainTextEdit_cse_Plaintext_input", "53616665747920576F726B62656E6368"},
    {Act::Press, "pushButton_cse_Encryption1"},
    {Act::Picture, "dialog", "cse-error"},
    {Act::Leave, "dialog"},
    {Act::Press, "pushButton_cse_loadKey"},
    {Act::Await, "label_cse_status_all", "Processing"},
    {Act::Await, "label_cse_status_all", "IDLE"},
    {Act::Press, "pushButton_cse_Encryption1"},
    {Act::Await, "textBrowser_cse_Cyphertext_output", "3E4A053B9EACDEFEE4F2E3D60B3BFA15"},
    {Act::Enter, "plainTextEdit_cse_Cyphertext_input", "3E4A053B9EACDEFEE4F2E3D60B3BFA15"},
    {Act::Press, "pushButton_cse_Decryption1"},
    {Act::Await, "textBrowser_cse_Plaintext_output", "Safety Workbench"},
    {Act::Press, "pushButton_cse_True_random"},
    {Act::Await, "lineEdit_cse_proess", "us"},
    {Act::Enter, "plainTextEdit_cse_Message_input", "6BC1BEE22E409F96E93D7E117393172A"},
    {Act::Press, "pushButton_cse_Generation"},
    {Act::Await, "textBrowser_cse_CMAC_output", "070A16B46B4D4144F79BDD9DD04A287C"},
    {Act::Enter, "plainTextEdit_cse_CMAC_input", "070A16B46B4D4144F79BDD9DD04A287C"},
    {Act::Enter, "plainTextEdit_cse_Entropy_input", "00112233445566778899AABBCCDDEEFF"},
    {Act::Press, "pushButton_cse_Verification"},
    {Act::Await, "label_indicator_cseSatus", "Green"},
    {Act::Picture, "tabWidget_function", "cse"},

    {Act::Turn, "tab_REG_PROT"},
    {Act::Enter, "lineEdit_reg_writedata", "12345678"},
    {Act::Press, "pushButton_reg_writedata"},
    {Act::Await, "lineEdit_reg_module_2", "0x12345678"},
    {Act::Enter, "lineEdit_reg_turnonhard", "CAFE0001"},
    {Act::Press, "pushButton_reg_turnonhard"},
    {Act::Await, "label_regp_hardlock_status", "Green"},
    {Act::Picture, "tabWidget_function", "reg-prot"},

    // The hard lock goes only with a destructive reset; the power chip then starts anew.
    {Act::Turn, "tabWidgetPage7"},
    {Act::Press, "pushButton_reg_hardlockoff"},
    {Act::Await, "lineEdit_vg5k_Fail", "ASSERT_FS0B"},
    {Act::Picture, "groupBox_vg5k_status", "vg5k-fail-safe"},
    {Act::Await, "label_LBIST_8", "Gray"},
    {Act::Await, "label_LBIST_8", "Green"},

    {Act::Choose, "actionconsole"},
    {Act::Resize, "dialog", "980x420"},
    {Act::Type, "textEdit", "status"},
    {Act::Await, "textEdit", "radar frames"},
    {Act::Picture, "dialog", "console"},
    {Act::Leave, "dialog"},
    {Act::Choose, "actionIntroduce"},
    {Act::Picture, "introduce", "introduction"},
    {Act::Leave, "introduce"},
    {Act::Choose, "actionabout"},
    {Act::Picture, "dialog", "about"},
    {Act::Leave, "dialog"},
    {Act::Call, "SP_config"},
    {Act::Picture, "dialog", "settings"},
    {Act::Leave, "dialog"},
    {Act::AskForPort, ""},
    {Act::Picture, "dialog", "port-choice"},
    {Act::Leave, "dialog"},
};
