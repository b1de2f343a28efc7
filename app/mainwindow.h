// SPDX-License-Identifier: MIT
// The program's one window. Its slots follow the form: on_, the widget's name, an underscore, the signal.
// Lifecycle and plumbing come first, then one section per page, in the order of the folder; each section's first line names
// the source file that holds its bodies. The pages themselves are objects of their own, see modules/pages.h.
// Slots of a family share lines.
#pragma once

#include "link/receivestate.h"
#include "protocol/frame.h"

#include <QBitArray>
#include <QMainWindow>
#include <QPointer>
#include <QSerialPort>
#include <QStringList>

#include <cstdint>
#include <memory>

class QLabel;
class LineRecorder;
class LineStatus;
class Zoom;
class consoleForm;
class introduce;
class serialportconfig;
struct Pages;
namespace Ui {
class MainWindow;
}

class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    /// True when the user answered No to going on without a port: the program is to end without showing the window.
    bool startRefused() const { return m_startRefused; }
    /// Received frames, and the bytes of an incomplete one.
    const ReceiveState &receiveState() const { return m_receive; }

signals:
    void receiveData(uint8_t, QList<frameData>);

public slots:
    // clang-format off
    // app/mainwindow.cpp: start-up, menu, tabs
    void init();
    void on_tabWidget_safety_currentChanged(int index);

    // app/connection.cpp: the port's choice, opening and closing
    void Serialport_open();
    void Serialport_close();
    void reOpenSerialPort();
    void SP_config();
    void NoSP_config();

    // app/arrival.cpp: bytes in, frames to the decoders
    void receiveData();
    bool Receivedata_Unpacking(QByteArray data, QList<frameData> &frames, QByteArray &remainder);

    // app/commands.cpp: the command channel as slots
    void Command_write(QString command);
    void noblockdelay(int milliseconds);
    void blockdelay(int milliseconds);

    // app/animations.cpp: painting runs of labels, blinking
    void labelBitSet(qint8 num, QString labelName, QString labelcolor, QBitArray array, qint8 delay);
    void labeltwinkle(QWidget *widget, int halfPeriod, QString finalStyle, QString blinkStyle, int blinks);
    void tolabeltwinkle(QWidget *first, QWidget *second, int halfPeriod, QString finalStyle, QString blinkStyle,
                        int blinks);

    // console/consolemode.cpp: the console terminal
    void console_mode();

    // help/help.cpp: manual, video, introduction, About, licence
    void Open_Manuel();
    void Open_Video();
    void GUI_Introduce();
    void GUI_About();
    void GUI_License();

    // modules/bist.cpp: self-tests
    void LBIST_sequence(); void MBIST_sequence();
    void BISTReset();
    void BISTDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    void STCUDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // modules/cmu.cpp: clock monitors
    void on_pushButton_CMU_update_clicked();
    void on_pushButton_cmustatus_get_clicked();
    void on_radioButton_cmu0_enable_clicked(bool checked); void on_radioButton_cmu1_enable_clicked(bool checked);
    void on_radioButton_cmu2_enable_clicked(bool checked); void on_radioButton_cmu3_enable_clicked(bool checked);
    void on_radioButton_cmu4_enable_clicked(bool checked); void on_radioButton_cmu5_enable_clicked(bool checked);
    void on_radioButton_cmu6_enable_clicked(bool checked); void on_radioButton_cmu7_enable_clicked(bool checked);
    void on_radioButton_cmu8_enable_clicked(bool checked); void on_radioButton_cmu9_enable_clicked(bool checked);
    void on_radioButton_cmu10_enable_clicked(bool checked); void on_radioButton_cmu11_enable_clicked(bool checked);
    void on_radioButton_cmu12_enable_clicked(bool checked);
    void on_pushButton_freqlim_set_clicked();
    void on_pushButton_cmuDefault_clicked();
    void on_pushButton_cmu_faultrecord_get_clicked(); void on_pushButton_cmu_faultstatus_clear_clicked();
    void on_pushButton_cmu_fault1_clicked(); void on_pushButton_cmu_fault2_clicked();
    void on_pushButton_cmu_fault3_clicked(); void on_pushButton_cmu_fault4_clicked();
    void on_pushButton_cmu_fault5_clicked();
    void modifycmuFreq(int index);
    void CMUDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // modules/crc.cpp: checksum unit
    void on_pushButton_CRC_set_clicked();
    void CRCDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // modules/cse.cpp: cryptographic services engine
    void on_pushButton_cse_loadKey_clicked();
    void on_pushButton_cse_Encryption1_clicked(); void on_pushButton_cse_Encryption2_clicked();
    void on_pushButton_cse_Decryption1_clicked(); void on_pushButton_cse_Decryption2_clicked();
    void on_pushButton_cse_Generation_clicked();
    void on_pushButton_cse_Verification_clicked();
    void on_pushButton_cse_Pseudo_clicked();
    void on_pushButton_cse_True_random_clicked();
    void on_pushButton_cse_Extend_clicked();
    void cseIdle();
    void CSEDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // modules/escalation.cpp: reset escalation
    void on_pushButton_F_ResetEsca_clicked(); void on_pushButton_F_resetEsc_clear_clicked();
    void on_pushButton_F_resetEsc_set_clicked(); void on_pushButton_D_ResetEsca_clicked();
    void on_pushButton_D_resetEsc_clear_clicked(); void on_pushButton_D_resetEsc_set_clicked();
    // modules/fccu.cpp: fault collection and control unit
    void on_comboBox_FaultID_currentIndexChanged(int index);
    void fccuRenew();
    void FCCUDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // modules/intcm.cpp: interrupt monitor
    void on_pushButton_intcm_update_clicked();
    void on_pushButton_intcm_edfault_clicked();
    void on_pushButton_intcm_inject_k4_clicked(); void on_pushButton_intcm_inject_k70_clicked();
    void on_pushButton_intcm_inject_k71_clicked();
    void on_pushButton_intcm_faultrecord_get_clicked(); void on_pushButton_intcm_faultstatus_clear_clicked();
    void on_pushButton_INTCM_close_clicked();
    void on_pushButton_intcm_config_clicked();
    void INTCMDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // modules/memu.cpp: memory errors
    void on_pushButton_memu_inject_clicked(); void on_pushButton_memu_inject_2_clicked();
    void on_pushButton_memu_inject_3_clicked(); void on_pushButton_memu_inject_5_clicked();
    void on_pushButton_memu_faultrecord_get_clicked(); void on_pushButton_memu_faultstatus_clear_clicked();
    void MEMUDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // modules/pmc.cpp: voltage detectors
    void on_pushButton_PMC_getstatus_clicked();
    void on_pushButton_PMC_dafault_clicked();
    void on_pushButton_PMC_allSTest_clicked();
    void on_pushButton_PMC_FI_TempSensor_clicked(); void on_pushButton_PMC_FI_HVD_clicked();
    void on_pushButton_PMC_FI_LVD_clicked(); void on_pushButton_PMC_FI_LVDSelfTest_clicked();
    void on_pushButton_PMC_GetFault_clicked(); void on_pushButton_PMC_ClearFault_clicked();
    void on_pushButton_PMC_PLLLVD_selftest_clicked(); void on_pushButton_PMC_CORELVD_stest_clicked();
    void on_pushButton_PMC_CORELVD_stest_2_clicked(); void on_pushButton_PMC_ADCELVD_stest_clicked();
    void on_pushButton_PMC_ADCHVD_stest_clicked(); void on_pushButton_PMC_PMCLVD_stest_clicked();
    void on_pushButton_PMC_FlashLVD_stest_clicked(); void on_pushButton_PMC_IOLVD_stest_clicked();
    void on_radioButton_PMC_PLLLVD_onoff_clicked(bool checked);
    void on_radioButton_PMC_CORELVD_onoff_clicked(bool checked);
    void on_radioButton_PMC_COREHVD_onoff_clicked(bool checked);
    void on_radioButton_PMC_ADCELVD_onoff_clicked(bool checked);
    void on_radioButton_PMC_ADCHVD_onoff_clicked(bool checked);
    void on_radioButton_PMC_ADCHVD_onoff_2_clicked(bool checked);
    void on_radioButton_PMC_FlashLVD_onoff_clicked(bool checked);
    void on_radioButton_PMC_IOLVD_onoff_clicked(bool checked);
    void on_pushButton_pmc_allon_clicked(); void on_pushButton_pmc_alloff_clicked();
    void on_comboBox_PMC_FaultRec_currentIndexChanged(int index);
    void PMC_Status_Reset();
    void PMCDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // modules/regp.cpp: register protection
    void on_pushButton_regUpdate_clicked();
    void on_pushButton_reg_softlockoff_clicked(); void on_pushButton_reg_hardlockoff_clicked();
    void on_pushButton_reg_writedata_clicked();
    void on_pushButton_reg_turnonsoft1_clicked(); void on_pushButton_reg_turnonsoft2_clicked();
    void on_pushButton_reg_turnonhard_clicked();
    void REG_PDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // modules/reset.cpp: reset reasons
    void resetUpdate();
    void RESETDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // modules/smpu.cpp: memory protection
    void on_pushButton_smpuUpdate_clicked(); void on_pushButton_smpuDefault_clicked();
    void on_pushButton_smpuALLon_clicked(); void on_pushButton_smpuALLoff_clicked();
    void on_pushButton_smpu_fault1_clicked(); void on_pushButton_smpu_fault2_clicked();
    void on_pushButton_smpu_fault3_clicked(); void on_pushButton_smpu_fault4_clicked();
    void on_pushButton_smpu_fault5_clicked(); void on_pushButton_smpu_fault6_clicked();
    void on_pushButton_smpu_faultrecord_get_clicked(); void on_pushButton_smpu_faultstatus_clear_clicked();
    void SMPUDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // modules/spt.cpp: signal processing
    void on_pushButton_spt_oram_clicked(); void on_pushButton_spt_tram_clicked();
    void on_pushButton_spt_faultrecord_get_clicked(); void on_pushButton_spt_faultstatus_clear_clicked();
    void SPTDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // modules/swt.cpp: watchdogs
    void on_groupBox_swt0_clicked(bool checked); void on_groupBox_swt0_2_clicked(bool checked);
    void on_groupBox_swt0_3_clicked(bool checked);
    void on_pushButton_swt_Default_clicked(); void on_pushButton_swt_Update_clicked();
    void on_pushButton_swt_allOn_clicked(); void on_pushButton_swt_allOff_clicked();
    void on_pushButton_swt_timeout_2_clicked();
    void on_pushButton_swt_Invalidacess_2_clicked();
    void on_pushButton_swt_commandset_clicked();
    void SWTDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // modules/sys.cpp: mode, version, the three reset and status commands
    void D_Reset(); void F_Reset();
    void Get_Status();
    void SYSDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // modules/vg5k.cpp: power chip
    void VG5kDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // modules/xbic.cpp: crossbar checkers
    void on_pushButton_xbicUpdate_clicked(); void on_pushButton_xbicDefault_clicked();
    void on_pushButton_xbic_faultrecord_get_clicked(); void on_pushButton_xbic_faultstatus_clear_clicked();
    void on_groupBox_XBIC0_clicked(bool checked); void on_groupBox_XBIC1_clicked(bool checked);
    void on_groupBox_XBIC2_clicked(bool checked); void on_groupBox_XBIC3_clicked(bool checked);
    void on_groupBox_XBIC4_clicked(bool checked);
    void on_pushButton_xbic_fault1_clicked(); void on_pushButton_xbic_fault2_clicked();
    void on_pushButton_xbic_fault3_clicked(); void on_pushButton_xbic_fault4_clicked();
    void on_pushButton_xbic_fault5_clicked();
    void XBICDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);
    // clang-format on

private:
    void connectActions();
    void prepareForm();
    void prepareFields();
    void prepareInputs();
    bool choosePort();
    bool askForPort();
    void openChosenPort();
    void listenToPort();
    void reopenPort(const QString &name);
    void usePort(const QString &name);
    void askAsAtStart();
    void onPortError(QSerialPort::SerialPortError error);
    void showPortState(const QString &trouble = QString());
    void dispatch(const frameData &frame);
    bool hasConsole() const;
    void makePages();
    void showReport(const frameData &frame);
    void makeTimeLine();  // timeline/dock.cpp
    void makePresenter(); // presenter/mode.cpp

    // In modules/pages.cpp, where the pages are known.
    struct DeletePages {
        void operator()(Pages *pages) const;
    };

    std::unique_ptr<Ui::MainWindow> ui;
    std::unique_ptr<Pages, DeletePages> m_pages;
    std::unique_ptr<serialportconfig> m_portDialog;
    Zoom *m_zoom = nullptr;
    LineRecorder *m_recorder = nullptr;
    QLabel *m_portState = nullptr;
    LineStatus *m_line = nullptr;
    QStringList portNameList;
    ReceiveState m_receive;
    bool m_startRefused = false;
    QPointer<consoleForm> m_console;
    QPointer<introduce> m_introduction; // the latest one
};
