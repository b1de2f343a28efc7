// SPDX-License-Identifier: MIT
// Memory errors: injection into three memories and the cache, and the record.
#pragma once

#include "protocol/memu.h"

namespace Ui {
class MainWindow;
}

class MemuPage
{
public:
    explicit MemuPage(const Ui::MainWindow &form) : m_form(form) {}

    // Send what is typed as typed; without a selection nothing.
    void injectFlash();
    void injectPram();
    void injectSram();
    void clearFaults();

    void show(const protocol::memu::FaultRecord &record);

private:
    const Ui::MainWindow &m_form;
    protocol::memu::FaultRecord m_faults = {};
};
