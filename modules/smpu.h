// SPDX-License-Identifier: MIT
// System memory protection: five region rows.
#pragma once

#include "protocol/smpu.h"

namespace Ui {
class MainWindow;
}

class SmpuPage
{
public:
    explicit SmpuPage(const Ui::MainWindow &form) : m_form(form) {}

    /// Regions without a row change nothing.
    void show(const protocol::smpu::Region &region);
    void show(const protocol::smpu::FaultRecord &record);

private:
    const Ui::MainWindow &m_form;
};
