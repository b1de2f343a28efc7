// SPDX-License-Identifier: MIT
// Register protection: the two locks, the register in its two spaces, and the writes.
#pragma once

#include "protocol/regp.h"

#include <QPixmap>

class LockPath;
class QCheckBox;
class QLabel;
namespace Ui {
class MainWindow;
}

class RegpPage
{
public:
    explicit RegpPage(const Ui::MainWindow &form);

    /// Sends the field's text for that way of writing, unchanged.
    void write(protocol::regp::Write how);

    void show(const protocol::regp::Status &status);

private:
    // A padlock that is open while its lock is off.
    struct Lock {
        QLabel *status;
        QCheckBox *box;
        QLabel *picture;
        QPixmap closed;
        QPixmap open;
    };
    static Lock lockOf(QLabel *status, QCheckBox *box, QLabel *picture);
    static void show(const Lock &lock, bool locked);

    const Ui::MainWindow &m_form;
    const Lock m_soft;
    const Lock m_hard;
    LockPath *m_path;
};
