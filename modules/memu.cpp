// SPDX-License-Identifier: MIT
#include "modules/memu.h"

#include "app/faultlayer.h"
#include "app/mainwindow.h"
#include "app/textview.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

#include <QTransform>

#include <utility>

namespace memu = protocol::memu;

namespace {

void inject(memu::Memory memory, const QComboBox *bits, const QString &arguments)
{
    const int selected = bits->currentIndex();
    if (selected == 0 || selected == 1)
        sendCommand(memu::injectCommand(memory, selected == 1, arguments));
}

QString offsetAndData(const QLineEdit *offset, const QLineEdit *data)
{
    return offset->text() + QLatin1Char(' ') + data->text();
}

// The picture, in its own units.
constexpr QSizeF kPicture(1000, 300);
constexpr QRectF kMemories[] = {{20, 8, 230, 62}, {20, 82, 230, 62}, {20, 156, 230, 62}}; // flash, PRAM, SRAM
constexpr QRectF kCollector(420, 48, 200, 104);
constexpr QRectF kRecord(720, 42, 260, 90);
constexpr QRectF kFccu(720, 190, 260, 100);

// From the memory to where its errors are collected, and on: into the record, or as a fault to the collection unit.
void markFault(FaultLayer::Marks &marks, quint8 type)
{
    if (type > memu::SramUncorrectable)
        return;
    const QRectF &memory = kMemories[type / 2];
    const bool twoBits = type % 2 == 1;
    const double y = memory.center().y();
    const double in = kCollector.center().y() + 13;
    marks.push_back({memory, {}, twoBits ? QStringLiteral("2 bit") : QStringLiteral("1 bit")});
    marks.push_back(
        {{}, QPolygonF(QVector<QPointF>{{memory.right(), y}, {330, y}, {330, in}, {kCollector.left(), in}}), {}});
    if (twoBits)
        marks.push_back(
            {kFccu, QPolygonF(QVector<QPointF>{{520, kCollector.bottom()}, {520, 222}, {kFccu.left(), 222}}), {}});
    else
        marks.push_back({kRecord, QPolygonF(QVector<QPointF>{{kCollector.right(), 87}, {kRecord.left(), 87}}), {}});
}

// From the picture's units to where it is drawn.
FaultLayer::Marks placed(FaultLayer::Marks marks, const QRectF &picture)
{
    const QTransform transform = QTransform::fromTranslate(picture.left(), picture.top())
                                     .scale(picture.width() / kPicture.width(), picture.height() / kPicture.height());
    for (FaultMark &mark : marks) {
        mark.outline = mark.outline.isEmpty() ? QRectF() : transform.mapRect(mark.outline);
        mark.way = transform.map(mark.way);
    }
    return marks;
}

} // namespace

MemuPage::MemuPage(const Ui::MainWindow &form) : m_form(form), m_layer(new FaultLayer(*form.label_memu_picture)) {}

void MemuPage::injectFlash()
{
    inject(memu::Memory::Flash, m_form.comboBox_memu_1, m_form.lineEdit_memu_1->text());
}

void MemuPage::injectPram()
{
    inject(memu::Memory::Pram, m_form.comboBox_memu_2, offsetAndData(m_form.lineEdit_memu_2, m_form.lineEdit_memu_4));
}

void MemuPage::injectSram()
{
    inject(memu::Memory::Sram, m_form.comboBox_memu_3, offsetAndData(m_form.lineEdit_memu_3, m_form.lineEdit_memu_5));
}

void MemuPage::clearFaults()
{
    sendCommand(memu::kClearFaults);
    delayMs(100);
    sendCommand(memu::kClearStatus);
}

void MemuPage::show(const memu::FaultRecord &record)
{
    m_faults = record;
    textview::show(m_form.textEdit_memuFaultRecord, memu::describe(m_faults));
    if (m_faults.faults.empty())
        return m_layer->show(nullptr);
    m_layer->show([this] {
        FaultLayer::Marks marks;
        for (const memu::Fault &fault : m_faults.faults)
            markFault(marks, fault.type);
        return placed(std::move(marks), m_form.label_memu_picture->place());
    });
}

// clang-format off
void MainWindow::on_pushButton_memu_inject_clicked() { m_pages->memu.injectFlash(); }
void MainWindow::on_pushButton_memu_inject_2_clicked() { m_pages->memu.injectPram(); }
void MainWindow::on_pushButton_memu_inject_3_clicked() { m_pages->memu.injectSram(); }
void MainWindow::on_pushButton_memu_inject_5_clicked() { sendCommand(memu::kInjectCache); }
void MainWindow::on_pushButton_memu_faultrecord_get_clicked() { sendCommand(memu::kReadFaults); }
void MainWindow::on_pushButton_memu_faultstatus_clear_clicked() { m_pages->memu.clearFaults(); }
// clang-format on

void MainWindow::MEMUDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Memu, type, payload);
}
