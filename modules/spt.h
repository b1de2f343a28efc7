// SPDX-License-Identifier: MIT
// Signal processing accelerator: frame counter and fault record.
#pragma once

#include "protocol/spt.h"

namespace Ui {
class MainWindow;
}

class SptPage
{
public:
    explicit SptPage(const Ui::MainWindow &form) : m_form(form) {}

    void show(const protocol::spt::FrameCount &frames);
    void show(const protocol::spt::FaultRecord &record);

private:
    const Ui::MainWindow &m_form;
};
