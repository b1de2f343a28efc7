// The program's one window. Its slots follow the form: on_, the widget's name, an underscore, the signal.
// Lifecycle and plumbing come first, then one section a module, in the order of the folder; each section's first line
// names the unit that holds its bodies.
#pragma once

#include "link/receivestate.h"
#include "protocol/frame.h"

#include <QBitArray>
#include <QMainWindow>
#include <QSerialPort>
#include <QStringList>

#include <cstdint>
#include <memory>

class QLabel;
class serialportconfig;
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

signals:
    void receiveData(uint8_t, QList<frameData>);

public slots:
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

    // app/statusindicators.cpp: painting runs of labels, blinking
    void labelBitSet(qint8 num, QString labelName, QString labelcolor, QBitArray array, qint8 delay);
    void labeltwinkle(QWidget *widget, int halfPeriod, QString finalStyle, QString blinkStyle, int blinks);
    void tolabeltwinkle(QWidget *first, QWidget *second, int halfPeriod, QString finalStyle, QString blinkStyle,
                        int blinks);

    // console/consoleform.cpp: the console terminal

    // help/help.cpp: manual, video, introduction, About, licence

    // modules/bist.cpp: self-tests

    // modules/cmu.cpp: clock monitors

    // modules/crc.cpp: checksum unit

    // modules/cse.cpp: cryptographic services engine

    // modules/escalation.cpp: reset escalation

    // modules/fccu.cpp: fault collection and control unit

    // modules/intcm.cpp: interrupt monitor

    // modules/memu.cpp: memory errors

    // modules/pmc.cpp: voltage detectors

    // modules/regp.cpp: register protection

    // modules/reset.cpp: reset reasons

    // modules/smpu.cpp: memory protection

    // modules/spt.cpp: signal processing

    // modules/swt.cpp: watchdogs

    // modules/sys.cpp: mode, version, the three reset and status commands
    void D_Reset();
    void F_Reset();
    void Get_Status();
    void SYSDataFrameUnpack(uint8_t type, uint32_t length, QByteArray payload);

    // modules/vg5k.cpp: power chip

    // modules/xbic.cpp: crossbar checkers

private:
    void connectActions();
    void prepareForm();
    void prepareFields();
    void choosePort();
    bool askForPort();
    void openChosenPort();
    void onPortError(QSerialPort::SerialPortError error);
    void showPortState(const QString &trouble = QString());
    void dispatch(const frameData &frame);

    std::unique_ptr<Ui::MainWindow> ui;
    std::unique_ptr<serialportconfig> m_portDialog;
    QLabel *m_portState = nullptr;
    QStringList portNameList;
    ReceiveState m_receive;
    bool m_startRefused = false;

    // State of the modules, one member each, in the order of the folder.
};
