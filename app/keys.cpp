// SPDX-License-Identifier: MIT
#include "app/keys.h"

#include "app/focusring.h"
#include "app/keysheet.h"
#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QShortcut>
#include <QTabBar>

#include <functional>

namespace {

void add(QWidget *owner, const char *keys, const QString &what, const std::function<void()> &work)
{
    auto *shortcut = new QShortcut(QKeySequence(QString::fromLatin1(keys)), owner);
    shortcut->setWhatsThis(what);
    shortcut->setAutoRepeat(false);
    QObject::connect(shortcut, &QShortcut::activated, owner, work);
}

// Enters the row of tabs, so that Tab goes on to the page.
void turnTo(QTabWidget *outer, QTabWidget *inner, int page)
{
    for (int i = 0; i < outer->count(); ++i) {
        if (outer->widget(i)->isAncestorOf(inner))
            outer->setCurrentIndex(i);
    }
    inner->tabBar()->setFocus(Qt::ShortcutFocusReason);
    inner->setCurrentIndex(page);
}

void addPages(QWidget &window, QTabWidget *outer, QTabWidget *inner, const char *modifiers)
{
    for (int page = 0; page < inner->count(); ++page) {
        const QByteArray keys = modifiers + QByteArray::number((page + 1) % 10);
        add(&window, keys, QStringLiteral("Page ") + inner->tabText(page),
            [outer, inner, page] { turnTo(outer, inner, page); });
    }
}

// As System > Get Status, and the page in front is asked for before.
void refresh(MainWindow &window, const Ui::MainWindow &form)
{
    if (form.tabWidget_safety->isVisible())
        window.on_tabWidget_safety_currentChanged(form.tabWidget_safety->currentIndex());
    else if (form.tab_REG_PROT->isVisible())
        window.on_pushButton_regUpdate_clicked();
    window.Get_Status();
}

QString captionOf(const QWidget *widget)
{
    const auto *button = qobject_cast<const QAbstractButton *>(widget);
    return button && button->accessibleName().isEmpty() ? button->text().simplified() : widget->accessibleName();
}

// A button is pressed, a field is entered.
void use(QWidget *widget)
{
    widget->setFocus(Qt::ShortcutFocusReason);
    if (auto *field = qobject_cast<QLineEdit *>(widget))
        field->selectAll();
    if (auto *button = qobject_cast<QAbstractButton *>(widget))
        button->click();
}

// Alt and this: the same letter does the same on each page, and digits inject its faults.
struct PageKey {
    QWidget *widget;
    char key;
};

void addPageKeys(const Ui::MainWindow &form)
{
    // clang-format off
    const PageKey rows[] = {
        {form.comboBox_FaultID, 'H'},
        {form.pushButton_cmu_fault1, '1'}, {form.pushButton_cmu_fault2, '2'}, {form.pushButton_cmu_fault3, '3'},
        {form.pushButton_cmu_fault4, '4'}, {form.pushButton_cmu_fault5, '5'},
        {form.pushButton_cmu_faultrecord_get, 'G'}, {form.pushButton_cmu_faultstatus_clear, 'C'},
        {form.pushButton_CMU_update, 'U'}, {form.pushButton_cmuDefault, 'D'}, {form.pushButton_cmustatus_get, 'K'},
        {form.comboBox_cmu_choice, 'M'}, {form.pushButton_freqlim_set, 'S'},

        {form.pushButton_xbic_fault1, '1'}, {form.pushButton_xbic_fault2, '2'}, {form.pushButton_xbic_fault3, '3'},
        {form.pushButton_xbic_fault4, '4'}, {form.pushButton_xbic_fault5, '5'},
        {form.pushButton_xbic_faultrecord_get, 'G'}, {form.pushButton_xbic_faultstatus_clear, 'C'},
        {form.pushButton_xbicUpdate, 'U'}, {form.pushButton_xbicDefault, 'D'},

        {form.pushButton_smpu_fault1, '1'}, {form.pushButton_smpu_fault2, '2'}, {form.pushButton_smpu_fault3, '3'},
        {form.pushButton_smpu_fault4, '4'}, {form.pushButton_smpu_fault5, '5'}, {form.pushButton_smpu_fault6, '6'},
        {form.pushButton_smpu_faultrecord_get, 'G'}, {form.pushButton_smpu_faultstatus_clear, 'C'},
        {form.pushButton_smpuUpdate, 'U'}, {form.pushButton_smpuDefault, 'D'},
        {form.pushButton_smpuALLon, 'N'}, {form.pushButton_smpuALLoff, 'F'},

        {form.pushButton_memu_inject, '1'}, {form.pushButton_memu_inject_2, '2'}, {form.pushButton_memu_inject_3, '3'},
        {form.pushButton_memu_inject_5, '4'}, {form.lineEdit_memu_1, 'L'}, {form.lineEdit_memu_2, 'P'},
        {form.lineEdit_memu_3, 'R'},
        {form.pushButton_memu_faultrecord_get, 'G'}, {form.pushButton_memu_faultstatus_clear, 'C'},

        {form.comboBox_CRC_polynomial, 'M'}, {form.pushButton_CRC_set, 'S'},

        {form.pushButton_intcm_inject_k4, '1'}, {form.pushButton_intcm_inject_k70, '2'},
        {form.pushButton_intcm_inject_k71, '3'},
        {form.pushButton_intcm_faultrecord_get, 'G'}, {form.pushButton_intcm_faultstatus_clear, 'C'},
        {form.pushButton_intcm_update, 'U'}, {form.pushButton_intcm_edfault, 'D'},
        {form.comboBox_intcm_core, 'M'}, {form.pushButton_intcm_config, 'S'},

        {form.pushButton_PMC_FI_TempSensor, '1'}, {form.pushButton_PMC_FI_HVD, '2'},
        {form.pushButton_PMC_FI_LVDSelfTest, '3'}, {form.pushButton_PMC_FI_LVD, '4'},
        {form.pushButton_PMC_GetFault, 'G'}, {form.pushButton_PMC_ClearFault, 'C'},
        {form.pushButton_PMC_getstatus, 'U'}, {form.pushButton_PMC_dafault, 'D'},
        {form.pushButton_pmc_allon, 'N'}, {form.pushButton_pmc_alloff, 'F'}, {form.pushButton_PMC_allSTest, 'T'},

        {form.pushButton_swt_timeout_2, '1'}, {form.pushButton_swt_Invalidacess_2, '2'},
        {form.pushButton_swt_Update, 'U'}, {form.pushButton_swt_Default, 'D'},
        {form.pushButton_swt_allOn, 'N'}, {form.pushButton_swt_allOff, 'F'},
        {form.comboBox_swt_core, 'M'}, {form.pushButton_swt_commandset, 'S'},

        {form.pushButton_spt_oram, '1'}, {form.pushButton_spt_tram, '2'},
        {form.pushButton_spt_faultrecord_get, 'G'}, {form.pushButton_spt_faultstatus_clear, 'C'},

        {form.pushButton_cse_Encryption1, '1'}, {form.pushButton_cse_Encryption2, '2'},
        {form.pushButton_cse_Decryption1, '3'}, {form.pushButton_cse_Decryption2, '4'},
        {form.pushButton_cse_Generation, '5'}, {form.pushButton_cse_Verification, '6'},
        {form.pushButton_cse_Pseudo, '7'}, {form.pushButton_cse_True_random, '8'}, {form.pushButton_cse_Extend, '9'},
        {form.pushButton_cse_loadKey, 'K'}, {form.plainTextEdit_cse_Plaintext_input, 'P'},
        {form.plainTextEdit_cse_Cyphertext_input, 'Y'}, {form.plainTextEdit_cse_Message_input, 'M'},
        {form.plainTextEdit_cse_CMAC_input, 'A'}, {form.plainTextEdit_cse_Entropy_input, 'E'},

        {form.lineEdit_reg_writedata, 'W'}, {form.pushButton_reg_writedata, '1'},
        {form.pushButton_reg_turnonsoft1, '2'}, {form.pushButton_reg_turnonsoft2, '3'},
        {form.pushButton_reg_turnonhard, '4'}, {form.pushButton_reg_softlockoff, '5'},
        {form.pushButton_reg_hardlockoff, '6'}, {form.pushButton_regUpdate, 'U'},
    };
    // clang-format on
    for (const PageKey &row : rows) {
        const QByteArray keys = QByteArrayLiteral("Alt+") + row.key;
        add(row.widget, keys, captionOf(row.widget), [widget = row.widget] { use(widget); });
    }
}

} // namespace

void installKeys(MainWindow &window, const Ui::MainWindow &form)
{
    addPages(window, form.tabWidget_function, form.tabWidget_safety, "Ctrl+");
    addPages(window, form.tabWidget_function, form.tabWidget_security, "Ctrl+Shift+");
    add(&window, "F5", QStringLiteral("Get Status, with the page in front"),
        [&window, &form] { refresh(window, form); });
    form.actionmanual->setShortcut(QKeySequence(Qt::Key_F1));
    add(&window, "?", QStringLiteral("This sheet"), [&window] { KeySheet::toggle(window); });
    addPageKeys(form);
    new FocusRing(&window);
}
