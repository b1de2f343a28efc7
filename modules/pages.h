// SPDX-License-Identifier: MIT
// All pages and panels of the window, and everything that one of them does to another.
#pragma once

#include "modules/bist.h"
#include "modules/cmu.h"
#include "modules/crc.h"
#include "modules/cse.h"
#include "modules/escalation.h"
#include "modules/fccu.h"
#include "modules/intcm.h"
#include "modules/memu.h"
#include "modules/pmc.h"
#include "modules/regp.h"
#include "modules/reset.h"
#include "modules/smpu.h"
#include "modules/spt.h"
#include "modules/swt.h"
#include "modules/sys.h"
#include "modules/vg5k.h"
#include "modules/xbic.h"
#include "protocol/report.h"

class MainWindow;

struct Pages {
    Pages(const Ui::MainWindow &form, MainWindow &window);

    BistPage bist;
    CmuPage cmu;
    CrcPage crc;
    CsePage cse;
    EscalationPanel escalation;
    FccuPage fccu;
    IntcmPage intcm;
    MemuPage memu;
    PmcPage pmc;
    RegpPage regp;
    ResetPanel reset;
    SmpuPage smpu;
    SptPage spt;
    SwtPage swt;
    SysPanel sys;
    Vg5kPage vg5k;
    XbicPage xbic;

    /// Hands the report to its page. Text messages have none.
    void show(const protocol::Report &report);
    /// Decodes and shows a payload; unknown modules and types change nothing.
    void show(quint8 module, quint8 type, const QByteArray &payload);
    void show(protocol::ModuleId module, quint8 type, const QByteArray &payload);

    /// The board says that it has restarted: a refresh a little later. Each notice gets a timer of its own.
    void refreshSoon();
    /// Empties the fault log, asks for the clocks, resets PMC's self-tests after a destructive reset, and plays new
    /// self-test results. Refreshes nest inside each other's waits.
    void refreshAfterRestart();

private:
    void refresh();

    MainWindow &m_window;
    QPointer<QTimer> resetTimer; // the latest one; earlier ones run on
    int m_refreshes = 0;         // under way
    bool m_refreshMissed = false;
};
