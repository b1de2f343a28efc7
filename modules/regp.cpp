// SPDX-License-Identifier: MIT
#include "modules/regp.h"

#include "app/display.h"
#include "app/indicators.h"
#include "app/mainwindow.h"
#include "link/commandchannel.h"
#include "modules/lockpath.h"
#include "modules/pages.h"
#include "protocol/hextext.h"
#include "ui_mainwindow.h"

#include <QPainter>
#include <QVBoxLayout>

namespace regp = protocol::regp;

namespace {

// The same padlock with its shackle pulled up and free on one side.
QPixmap opened(const QPixmap &closed)
{
    const int width = closed.width();
    const int height = closed.height();
    const int body = height * 45 / 100;
    const int lift = height * 9 / 100;
    QPixmap open(closed.size());
    open.fill(Qt::transparent);
    QPainter painter(&open);
    painter.drawPixmap(0, body, closed, 0, body, width, height - body);
    painter.drawPixmap(0, 0, closed, 0, lift, width / 2, body - lift);
    painter.drawPixmap(0, body - lift, closed, 0, body - lift, width / 2, lift);
    painter.drawPixmap(width / 2, 0, closed, width / 2, lift, width / 2, height / 4);
    return open;
}

// Between the locks with the register and what acts on them.
LockPath *addPath(QVBoxLayout &page)
{
    auto *path = new LockPath;
    page.insertWidget(1, path, 4);
    return path;
}

} // namespace

RegpPage::RegpPage(const Ui::MainWindow &form)
    : m_form(form),
      m_soft(lockOf(form.label_regp_softlock_status, form.checkBox_softlock_2, form.label_regp_soft_picture)),
      m_hard(lockOf(form.label_regp_hardlock_status, form.checkBox_hardlock_2, form.label_regp_hard_picture)),
      m_path(addPath(*form.verticalLayout_tab_REG_PROT_1))
{
}

RegpPage::Lock RegpPage::lockOf(QLabel *status, QCheckBox *box, QLabel *picture)
{
    const QPixmap closed = picture->pixmap(Qt::ReturnByValue);
    const QPixmap open = opened(closed);
    picture->setPixmap(open);
    return {status, box, picture, closed, open};
}

void RegpPage::show(const Lock &lock, bool locked)
{
    display::checked(lock.box, locked);
    indicator::state(lock.status, locked ? QStringLiteral("Lock") : QStringLiteral("Unlock"),
                     indicator::background(locked ? indicator::kGreen : indicator::kGrey));
    const QPixmap picture = locked ? lock.closed : lock.open;
    display::later(lock.picture, display::Aspect::Content, [label = lock.picture, picture] {
        if (label->pixmap(Qt::ReturnByValue).cacheKey() != picture.cacheKey())
            label->setPixmap(picture);
    });
}

void RegpPage::write(regp::Write how)
{
    const QLineEdit *field = nullptr;
    switch (how) {
    case regp::Write::Data:
        field = m_form.lineEdit_reg_writedata;
        break;
    case regp::Write::SoftLockByMirror:
        field = m_form.lineEdit_reg_turnonsoft1;
        break;
    case regp::Write::SoftLockByBit:
        field = m_form.lineEdit_reg_turnonsoft2;
        break;
    case regp::Write::HardLock:
        field = m_form.lineEdit_reg_turnonhard;
        break;
    }
    sendCommand(regp::writeCommand(how, field->text()));
}

void RegpPage::show(const regp::Status &status)
{
    show(m_hard, status.hardLocked);
    show(m_soft, status.softLocked);
    display::later(m_path, display::Aspect::Content,
                   [path = m_path, status] { path->show(status.softLocked, status.hardLocked); });
    display::text(m_form.lineEdit_reg_module_2, protocol::hexText(status.moduleSpace, 8));
    display::text(m_form.lineEdit_reg_mirror_2, protocol::hexText(status.mirrorSpace, 8));
}

// Only a destructive reset takes the hard lock off.
// clang-format off
void MainWindow::on_pushButton_regUpdate_clicked() { sendCommand(regp::kGetStatus); }
void MainWindow::on_pushButton_reg_softlockoff_clicked() { sendCommand(regp::kSoftLockOff); }
void MainWindow::on_pushButton_reg_hardlockoff_clicked() { D_Reset(); }
void MainWindow::on_pushButton_reg_writedata_clicked() { m_pages->regp.write(regp::Write::Data); }
void MainWindow::on_pushButton_reg_turnonsoft1_clicked() { m_pages->regp.write(regp::Write::SoftLockByMirror); }
void MainWindow::on_pushButton_reg_turnonsoft2_clicked() { m_pages->regp.write(regp::Write::SoftLockByBit); }
void MainWindow::on_pushButton_reg_turnonhard_clicked() { m_pages->regp.write(regp::Write::HardLock); }
// clang-format on

void MainWindow::REG_PDataFrameUnpack(uint8_t type, uint32_t, QByteArray payload)
{
    m_pages->show(protocol::ModuleId::RegProt, type, payload);
}
