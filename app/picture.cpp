// SPDX-License-Identifier: MIT
#include "app/picture.h"

#include "app/zoom.h"

#include <QPainter>
#include <QPixmap>

QSize Picture::minimumSizeHint() const
{
    return {zoomed(60), zoomed(60)};
}

QRect Picture::place() const
{
    const QSize full = pixmap(Qt::ReturnByValue).size();
    const QSize most(zoomed(full.width()), zoomed(full.height()));
    const QSize size = full.scaled(contentsRect().size(), Qt::KeepAspectRatio).boundedTo(most);
    return {contentsRect().center() - QPoint(size.width() / 2, size.height() / 2), size};
}

void Picture::paintEvent(QPaintEvent *)
{
    const QPixmap picture = pixmap(Qt::ReturnByValue);
    if (picture.isNull())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(place(), picture);
}
