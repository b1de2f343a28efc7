// SPDX-License-Identifier: MIT
#include "modules/spt.h"

#include "app/display.h"
#include "app/faultlayer.h"
#include "app/mainwindow.h"
#include "app/textview.h"
#include "link/commandchannel.h"
#include "modules/pages.h"
#include "ui_mainwindow.h"

namespace spt = protocol::spt;

namespace {

// Both transforms read the twiddle factors.
void connectTwiddles(FaultLayer::Marks &marks, const FaultLayer &layer, const Ui::MainWindow &form, bool isFault)
{
    const QRectF memory = layer.place(*form.label_spt_8);
    for (const QLabel *transform : {form.label_spt_4, form.label_spt_5}) {
        const QRectF box = layer.place(*transform);
        const double x = box.center().x();
        const double side = x < memory.left() ? memory.left() : memory.center().x();
        const QPolygonF way = x < memory.left()
            ? QPolygonF(QVector<QPointF>{{side, memory.center().y()}, {x, memory.center().y()}, {x, box.bottom()}})
            : QPolygonF(QVector<QPointF>{{side, memory.top()}, {side, box.bottom()}});
        marks.push_back({{}, way, {}, isFault});
    }
}

} // namespace

SptPage::SptPage(const Ui::MainWindow &form) : m_form(form), m_layer(new FaultLayer(*form.frame_spt_flow))
{
    m_layer->show([this] {
        FaultLayer::Marks marks;
        const bool twiddles = m_faulty && m_twiddles;
        connectTwiddles(marks, *m_layer, m_form, twiddles);
        if (twiddles)
            marks.push_back({m_layer->place(*m_form.label_spt_8), {}, QStringLiteral("Fault")});
        if (m_faulty && m_operands) {
            const QRectF stages = m_layer->place(*m_form.label_spt_4).united(m_layer->place(*m_form.label_spt_7));
            marks.push_back({stages.adjusted(-4, -4, 4, 4), {}, QStringLiteral("Fault: operand memory")});
        }
        return marks;
    });
}

void SptPage::injectOperands()
{
    m_operands = true;
    sendCommand(spt::kInjectOram);
}

void SptPage::injectTwiddles()
{
    m_twiddles = true;
    sendCommand(spt::kInjectTram);
}

void SptPage::clearFaults()
{
    m_operands = m_twiddles = m_faulty = false;
    m_layer->update();
    sendCommand(spt::kClearFaults);
}

void SptPage::show(const spt::FrameCount &frames)
{
    display::text(m_form.lineEdit_spt, QString::number(frames.count));
}

void SptPage::show(const spt::FaultRecord &record)
{
    textview::show(m_form.textEdit_sptFaultRecord, spt::describe(record));
    m_faulty = !record.faults.empty();
    m_layer->update();
}

// clang-format off
void MainWindow::on_pushButton_spt_oram_clicked() { m_pages->spt.injectOperands(); }
void MainWindow::on_pushButton_spt_tram_clicked() { m_pages->spt.injectTwiddles(); }
void MainWindow::on_pushButton_spt_faultrecord_get_clicked() { sendCommand(spt::kReadFaults); }
void MainWindow::on_pushButton_spt_faultstatus_clear_clicked() { m_pages->spt.clearFaults(); }
// clang-format on

void MainWindow::SPTDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::Spt, type, payload);
}
