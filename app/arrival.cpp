// SPDX-License-Identifier: MIT
#include "app/mainwindow.h"
#include "app/display.h"
#include "app/textview.h"
#include "protocol/extraction.h"
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

// A decoder may wait or show a box, and the next read comes meanwhile: its frames queue up behind, and whoever runs takes
// the first one. So each frame is decoded once and in order, and nothing stands still while a box is open.
void MainWindow::receiveData()
{
    m_receive.take(readLine(*gSerialPort));
    const display::Batch batch;
    while (!m_receive.rxFrames.isEmpty())
        dispatch(m_receive.rxFrames.takeFirst());
}

bool MainWindow::Receivedata_Unpacking(QByteArray data, QList<frameData> &frames, QByteArray &remainder)
{
    return protocol::extractFrames(data, frames, remainder, m_receive.rxPartialCount);
}

void MainWindow::dispatch(const frameData &frame)
{
    if (frame.moduleId == static_cast<uint8_t>(protocol::ModuleId::Text)) {
        textview::append(*ui->textBrowser_temp, {QString::fromLatin1(frame.data.constData())});
    } else if (frame.moduleId < decoders.size()) {
        (this->*decoders[frame.moduleId])(frame.dataType, frame.dataLength, frame.data);
    }
}
