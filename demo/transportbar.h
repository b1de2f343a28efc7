// SPDX-License-Identifier: MIT
// Play, pause, step, speed, next fault, next mark, time: the strip under a window that shows a recording.
#pragma once

#include "demo/replayprocess.h"

#include <QToolBar>

class QComboBox;
class QLabel;
class QSlider;

class TransportBar : public QToolBar
{
    Q_OBJECT

public:
    /// `replay` outlives the bar.
    TransportBar(ReplayProcess &replay, QWidget *parent);

private:
    void addSpeeds();
    int addSpeed(double speed);
    void addTime();
    void show(const ReplayProcess::Position &position);
    void moveToSlider();

    ReplayProcess &m_replay;
    ReplayProcess::Position m_position;
    QAction *m_play = nullptr;
    QComboBox *m_speed = nullptr;
    QSlider *m_slider = nullptr;
    QLabel *m_time = nullptr;
};
