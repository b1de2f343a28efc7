// SPDX-License-Identifier: MIT
#include "app/frameflash.h"

#include "app/zoom.h"

#include <QPainter>

namespace {

constexpr int kStepMs = 90;
constexpr int kSteps[] = {255, 255, 255, 255, 255, 255, 210, 160, 110, 60}; // opacity: 0.5 s, then it fades
constexpr int kWidth = 6;                                                   // pixels

} // namespace

FrameFlash::FrameFlash(QWidget &framed) : QWidget(&framed)
{
    setObjectName(QStringLiteral("frameFlash_") + framed.objectName());
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void FrameFlash::flash()
{
    if (m_timer.isActive())
        return;
    m_step = 0;
    setGeometry(parentWidget()->rect());
    const int width = zoomed(kWidth);
    setMask(QRegion(rect()) - rect().adjusted(width, width, -width, -width)); // the content is not painted anew
    raise();
    show();
    m_timer.start(kStepMs, this);
}

void FrameFlash::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(208, 28, 46, kSteps[m_step]));
}

void FrameFlash::timerEvent(QTimerEvent *)
{
    if (++m_step < static_cast<int>(std::size(kSteps))) {
        update();
        return;
    }
    m_timer.stop();
    hide();
}
