// SPDX-License-Identifier: MIT
// System memory protection: five region rows.
#pragma once

#include "protocol/smpu.h"

#include <map>

class FaultLayer;
namespace Ui {
class MainWindow;
}

class SmpuPage
{
public:
    explicit SmpuPage(const Ui::MainWindow &form);

    /// Regions without a row change nothing.
    void show(const protocol::smpu::Region &region);
    void show(const protocol::smpu::FaultRecord &record);

private:
    void markFaults();

    const Ui::MainWindow &m_form;
    FaultLayer *const m_layer;
    protocol::smpu::FaultRecord m_faults = {};
    std::map<quint8, protocol::smpu::Region> m_regions; // by selector, those with a row
};
