// SPDX-License-Identifier: MIT
#include "app/picture.h"

#include <QPainter>
#include <QPixmap>

QSize Picture::minimumSizeHint() const
{
    return {60, 60};
}

void Picture::paintEvent(QPaintEvent *)
{
    const QPixmap picture = pixmap(Qt::ReturnByValue);
    if (picture.isNull())
        return;
    const QSize size = picture.size().scaled(contentsRect().size(), Qt::KeepAspectRatio).boundedTo(picture.size());
    const QRect place(contentsRect().center() - QPoint(size.width() / 2, size.height() / 2), size);
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(place, picture);
}
