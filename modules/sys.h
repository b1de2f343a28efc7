// SPDX-License-Identifier: MIT
// System status: operating mode and firmware version.
#pragma once

#include "protocol/sys.h"

namespace Ui {
class MainWindow;
}

class SysPanel
{
public:
    explicit SysPanel(const Ui::MainWindow &form) : m_form(form) {}

    void show(const protocol::sys::OperatingMode &mode);
    void show(const protocol::sys::FirmwareVersion &version);

private:
    const Ui::MainWindow &m_form;
};
