// SPDX-License-Identifier: MIT
// Memory errors: injection into three memories and the cache, and the record.
#pragma once

#include "protocol/memu.h"

#include <QtGlobal>

class FaultLayer;
namespace Ui {
class MainWindow;
}

class MemuPage
{
public:
    explicit MemuPage(const Ui::MainWindow &form);

    // Send the field's text unchanged; without a selection, nothing.
    void injectFlash();
    void injectPram();
    void injectSram();
    void clearFaults();

    void show(const protocol::memu::FaultRecord &record);

private:
    Q_DISABLE_COPY(MemuPage)

    const Ui::MainWindow &m_form;
    FaultLayer *const m_layer; // of the picture
    protocol::memu::FaultRecord m_faults = {};
};
