// SPDX-License-Identifier: MIT
// A frame that lights up once around a widget and goes, to lead the eye there.
#pragma once

#include <QBasicTimer>
#include <QWidget>

class FrameFlash : public QWidget
{
public:
    /// Hidden at first. Clicks and keys go through it.
    explicit FrameFlash(QWidget &framed);

    /// One that is under way goes on: a flood of faults is one flash.
    void flash();

protected:
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    QBasicTimer m_timer;
    int m_step = 0;
};
