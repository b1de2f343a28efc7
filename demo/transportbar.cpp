// SPDX-License-Identifier: MIT
#include "demo/transportbar.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QSlider>
#include <QSignalBlocker>
#include <QStyle>

#include <cmath>

namespace {

constexpr int kSliderSteps = 1000;

// "1:05.3"
QString timeText(double seconds)
{
    const auto tenths = std::llround(seconds * 10);
    return QStringLiteral("%1:%2.%3").arg(tenths / 600).arg(tenths / 10 % 60, 2, 10, QLatin1Char('0')).arg(tenths % 10);
}

} // namespace

TransportBar::TransportBar(ReplayProcess &replay, QWidget *parent) : QToolBar(parent), m_replay(replay)
{
    setObjectName(QStringLiteral("transportBar"));
    setWindowTitle(QStringLiteral("Replay"));
    setMovable(false);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setStyleSheet(QStringLiteral(
        "QToolBar { spacing: 6px; padding: 4px 6px; background: rgb(228,234,243); border-top: 1px solid "
        "rgb(168,180,198); }"
        "QToolButton { border: 1px solid rgb(120,136,160); border-radius: 4px; padding: 3px 10px; background: white; }"
        "QToolButton:hover, QToolButton:focus { border-color: rgb(26,102,204); background: rgb(232,241,253); }"
        "QToolButton:pressed { background: rgb(200,220,246); }"
        "QSlider { margin: 0px 8px; }"));
    const auto add = [this](const char *text, QStyle::StandardPixmap sign, const char *keys, const auto &run) {
        QAction *action = addAction(style()->standardIcon(sign), QLatin1String(text));
        action->setShortcut(QKeySequence(QLatin1String(keys)));
        action->setToolTip(QStringLiteral("%1 (%2)").arg(QLatin1String(text), QLatin1String(keys)));
        connect(action, &QAction::triggered, this, run);
        widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
        return action;
    };
    m_play = add("Pause", QStyle::SP_MediaPause, "Ctrl+Space", [this] {
        if (m_position.state == QLatin1String("playing"))
            m_replay.pause();
        else
            m_replay.play();
    });
    add("Step", QStyle::SP_ToolBarHorizontalExtensionButton, "Ctrl+Right", [this] { m_replay.step(); });
    add("Next fault", QStyle::SP_MediaSeekForward, "Ctrl+Shift+F", [this] { m_replay.nextFault(); });
    add("Next mark", QStyle::SP_MediaSkipForward, "Ctrl+Shift+M", [this] { m_replay.nextMark(); });
    addSpeeds();
    addTime();
    connect(&replay, &ReplayProcess::moved, this, &TransportBar::show);
    show(replay.position());
}

void TransportBar::addSpeeds()
{
    m_speed = new QComboBox(this);
    m_speed->setAccessibleName(QStringLiteral("Replay speed"));
    for (const double speed : {0.5, 1.0, 2.0, 5.0, 10.0})
        addSpeed(speed);
    m_speed->setCurrentIndex(1);
    connect(m_speed, qOverload<int>(&QComboBox::activated), this,
            [this](int index) { m_replay.setSpeed(m_speed->itemData(index).toDouble()); });
    addWidget(m_speed);
}

int TransportBar::addSpeed(double speed)
{
    m_speed->addItem(QStringLiteral("%1 times").arg(speed), speed);
    return m_speed->count() - 1;
}

void TransportBar::addTime()
{
    m_slider = new QSlider(Qt::Horizontal, this);
    m_slider->setObjectName(QStringLiteral("replayPlace"));
    m_slider->setAccessibleName(QStringLiteral("Place in the recording"));
    m_slider->setRange(0, kSliderSteps);
    m_slider->setTracking(false);
    connect(m_slider, &QSlider::valueChanged, this, &TransportBar::moveToSlider);
    addWidget(m_slider);
    m_time = new QLabel(this);
    m_time->setObjectName(QStringLiteral("replayTime"));
    m_time->setTextFormat(Qt::PlainText);
    m_time->setAccessibleName(QStringLiteral("Time in the recording"));
    addWidget(m_time);
}

void TransportBar::moveToSlider()
{
    m_replay.moveTo(m_position.length * m_slider->value() / kSliderSteps);
}

void TransportBar::show(const ReplayProcess::Position &position)
{
    m_position = position;
    const bool plays = position.state == QLatin1String("playing");
    m_play->setText(plays ? QStringLiteral("Pause") : QStringLiteral("Play"));
    m_play->setIcon(style()->standardIcon(plays ? QStyle::SP_MediaPause : QStyle::SP_MediaPlay));
    const int speed = m_speed->findData(position.speed);
    m_speed->setCurrentIndex(speed < 0 ? addSpeed(position.speed) : speed); // any can be asked for at the start
    // The window says beside it that the board does not answer.
    const bool ended = position.state == QLatin1String("ended");
    m_time->setText(QStringLiteral("  %1 of %2, %3")
                        .arg(timeText(position.seconds), timeText(position.length),
                             ended ? QStringLiteral("End of the recording") : position.state));
    QFont font = m_time->font();
    font.setBold(ended);
    m_time->setFont(font);
    const QSignalBlocker quiet(m_slider);
    if (!m_slider->isSliderDown() && position.length > 0)
        m_slider->setValue(static_cast<int>(std::lround(kSliderSteps * position.seconds / position.length)));
}
