// SPDX-License-Identifier: MIT
// The external safety power chip: regulators, fail-safe state, debug mode, fault counter.
#pragma once

#include "protocol/vg5k.h"

namespace Ui {
class MainWindow;
}

class Vg5kPage
{
public:
    explicit Vg5kPage(const Ui::MainWindow &form) : m_form(form) {}

    void show(const protocol::vg5k::Report &report);

private:
    void showRegulators(quint8 bits);
    void showState(const protocol::vg5k::Report &report);
    void showDebug(bool debug);

    const Ui::MainWindow &m_form;
};
