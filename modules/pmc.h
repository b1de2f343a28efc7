// SPDX-License-Identifier: MIT
// Power management controller: eight voltage detectors, their self-tests and faults.
#pragma once

#include "modules/faultlist.h"
#include "protocol/pmc.h"

namespace Ui {
class MainWindow;
}

class PmcPage
{
public:
    explicit PmcPage(const Ui::MainWindow &form);
    Q_DISABLE_COPY(PmcPage)

    void show(const protocol::pmc::Detectors &detectors);
    void show(const protocol::pmc::SelfTest &test);
    void show(const protocol::pmc::FaultRecord &record);
    /// Shows the fault of that row; a negative one changes nothing.
    void select(int row);
    /// Self-tests count as not started.
    void reset();

private:
    const Ui::MainWindow &m_form;
    protocol::pmc::DetectorBits pmcDetectorBits = {};
    FaultList *const pmcFaultRecords; // the selector's
};
