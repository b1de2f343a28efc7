// SPDX-License-Identifier: MIT
#include "demo/tour.h"

#include "app/mainwindow.h"
#include "presenter/script.h"

namespace {

using script::Act;
using script::Step;

constexpr int kAnswerMs = 2000;

// Every page with what the board answers there; then a crossbar fault: the path that blinks, and what has been caught.
constexpr Step steps[] = {
    {Act::Await, "lineEdit_firewareVision", "Version"},
    {Act::Await, "label_FCCU_status", "NORMAL"},
    {Act::Turn, "tabWidgetPage1"},
    {Act::Await, "label_acqnclk_fvalue", "Green"},
    {Act::Picture, "MainWindow", "01-safety-module-cmu"},
    {Act::Turn, "tabWidgetPage2"},
    {Act::Await, "groupBox_XBIC4", "on"},
    {Act::Picture, "MainWindow", "02-safety-module-xbic"},
    {Act::Turn, "tabWidgetPage3"},
    {Act::Await, "lineEdit_smpu01_Region15", "Valid"},
    {Act::Picture, "MainWindow", "03-safety-module-smpu"},
    {Act::Turn, "tabWidgetPage4"},
    {Act::Picture, "MainWindow", "04-safety-module-memu"},
    {Act::Turn, "tabWidgetPage5"},
    {Act::Picture, "MainWindow", "05-safety-module-crc"},
    {Act::Turn, "tabWidgetPage6"},
    {Act::Await, "label_intcm_onoff9", "On"},
    {Act::Picture, "MainWindow", "06-safety-module-intcm"},
    {Act::Turn, "tabWidgetPage7"},
    {Act::Await, "lineEdit_vg5k_Fail", "NORMAL_FS"},
    {Act::Picture, "MainWindow", "07-safety-module-vg5k"},
    {Act::Turn, "tabWidgetPage8"},
    {Act::Await, "label_PMC_IOLVD", "Green"},
    {Act::Picture, "MainWindow", "08-safety-module-pmc"},
    {Act::Turn, "tabWidgetPage9"},
    {Act::Await, "lineEdit_swt_2_mode", "Fixed"},
    {Act::Picture, "MainWindow", "09-safety-module-swt"},
    {Act::Turn, "tabWidgetPage10"},
    {Act::Picture, "MainWindow", "10-safety-module-spt"},
    {Act::Turn, "tab_CSE"},
    {Act::Picture, "MainWindow", "11-security-module-cse"},
    {Act::Turn, "tab_REG_PROT"},
    {Act::Picture, "MainWindow", "12-security-module-reg_prot"},
    {Act::Turn, "tabWidgetPage2"},
    {Act::Press, "pushButton_xbic_fault1"},
    {Act::Await, "label_xbic0_PBRIDGE1", "Red"},
    {Act::Picture, "MainWindow", "13-fault-injected"},
    {Act::Await, "textBrowser_fccurecord", "Fault ID 47"},
    {Act::Await, "textEdit_xbicFaultRecord", "Fault Number: 1"},
    {Act::Picture, "MainWindow", "14-fault-caught"},
};

} // namespace

bool takeTour(MainWindow &window, const QString &folder)
{
    script::Player player(window);
    player.setFolder(folder);
    player.setPatience(kAnswerMs, true);
    return player.play(steps);
}
