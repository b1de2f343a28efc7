// SPDX-License-Identifier: MIT
// Reset escalation: two switches with their thresholds and counters.
#pragma once

#include "protocol/reset.h"

class QPushButton;
class QSpinBox;
namespace Ui {
class MainWindow;
}

class EscalationPanel
{
public:
    explicit EscalationPanel(const Ui::MainWindow &form) : m_form(form) {}

    /// The switch is greyed at once; it turns green with the board's report.
    void toggle(protocol::reset::Kind kind);
    void clearCounter(protocol::reset::Kind kind);
    void setThreshold(protocol::reset::Kind kind);

    void show(const protocol::reset::Escalation &thresholds);

private:
    QPushButton *button(protocol::reset::Kind kind) const;
    QSpinBox *threshold(protocol::reset::Kind kind) const;

    const Ui::MainWindow &m_form;
};
