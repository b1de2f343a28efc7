// SPDX-License-Identifier: MIT
// Signal processing accelerator: frame counter and fault record.
#pragma once

#include "protocol/spt.h"

#include <QtGlobal>

class FaultLayer;
namespace Ui {
class MainWindow;
}

class SptPage
{
public:
    explicit SptPage(const Ui::MainWindow &form);

    // Ask for a fault in one of the accelerator's memories; the drawing shows it once the record holds one.
    void injectOperands();
    void injectTwiddles();
    void clearFaults();

    void show(const protocol::spt::FrameCount &frames);
    void show(const protocol::spt::FaultRecord &record);

private:
    Q_DISABLE_COPY(SptPage)

    const Ui::MainWindow &m_form;
    FaultLayer *const m_layer;
    bool m_operands = false; // a fault was injected since the record was empty
    bool m_twiddles = false;
    bool m_faulty = false; // the record is not empty
};
