// SPDX-License-Identifier: MIT
// Register protection: the two locks, the register in its two spaces, and the writes.
#pragma once

#include "protocol/regp.h"

namespace Ui {
class MainWindow;
}

class RegpPage
{
public:
    explicit RegpPage(const Ui::MainWindow &form) : m_form(form) {}

    /// Sends what is typed for that way of writing, as typed.
    void write(protocol::regp::Write how);

    void show(const protocol::regp::Status &status);

private:
    const Ui::MainWindow &m_form;
};
