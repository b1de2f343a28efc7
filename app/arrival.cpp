// SPDX-License-Identifier: MIT
#include "app/mainwindow.h"
#include "app/display.h"
#include "app/textview.h"
#include "link/serialline.h"
#include "protocol/extraction.h"
#include "ui_mainwindow.h"

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
    } else {
        showReport(frame);
    }
}
