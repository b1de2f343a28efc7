// SPDX-License-Identifier: MIT
#include "app/mainwindow.h"
#include "app/display.h"
#include "app/textview.h"
#include "link/serialline.h"
#include "ui_mainwindow.h"

#include <array>

namespace {

using Decoder = void (MainWindow::*)(uint8_t, uint32_t, QByteArray);

// By module identifier. Text frames have no decoder.
constexpr std::array<Decoder, protocol::kModuleCount> decoders = {
    nullptr,
    &MainWindow::SYSDataFrameUnpack,
    &MainWindow::CMUDataFrameUnpack,
    &MainWindow::XBICDataFrameUnpack,
    &MainWindow::SMPUDataFrameUnpack,
    &MainWindow::REG_PDataFrameUnpack,
    &MainWindow::CRCDataFrameUnpack,
    &MainWindow::MEMUDataFrameUnpack,
    &MainWindow::INTCMDataFrameUnpack,
    &MainWindow::BISTDataFrameUnpack,
    &MainWindow::PMCDataFrameUnpack,
    &MainWindow::SWTDataFrameUnpack,
    &MainWindow::FCCUDataFrameUnpack,
    &MainWindow::RESETDataFrameUnpack,
    &MainWindow::VG5kDataFrameUnpack,
    &MainWindow::CSEDataFrameUnpack,
    &MainWindow::SPTDataFrameUnpack,
};

} // namespace

void MainWindow::receiveData()
{
    const QByteArray chunk = readLine(*gSerialPort);
    m_receive.rxPending = Receivedata_Unpacking(m_receive.join(chunk), m_receive.rxFrames, m_receive.rxRemainder);
    const display::Batch batch;
    // A decoder may wait and so let a further arrival replace the list: size and element are read anew at each step.
    for (int i = 0; i < m_receive.rxFrames.size(); ++i)
        dispatch(frameData(m_receive.rxFrames.at(i)));
}

bool MainWindow::Receivedata_Unpacking(QByteArray data, QList<frameData> &frames, QByteArray &remainder)
{
    m_receive.rxText = QString::fromUtf8(data.constData());
    return protocol::extractFrames(data, frames, remainder, m_receive.rxPartialCount);
}

void MainWindow::dispatch(const frameData &frame)
{
    ++m_receive.rxFrameCount;
    if (frame.moduleId == static_cast<uint8_t>(protocol::ModuleId::Text)) {
        textview::append(*ui->textBrowser_temp, {QString::fromLatin1(frame.data.constData())});
    } else if (frame.moduleId < decoders.size()) {
        (this->*decoders[frame.moduleId])(frame.dataType, frame.dataLength, frame.data);
    }
}
