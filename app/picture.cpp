// SPDX-License-Identifier: MIT
#include "app/picture.h"

#include "app/zoom.h"

#include <QPainter>
#include <QPixmap>

QSize Picture::minimumSizeHint() const
{
    return {zoomed(60), zoomed(60)};
}

void Picture::paintEvent(QPaintEvent *)
{
    const QPixmap picture = pixmap(Qt::ReturnByValue);
    if (picture.isNull())
        return;
    const QSize most(zoomed(picture.width()), zoomed(picture.height()));
    const QSize size = picture.size().scaled(contentsRect().size(), Qt::KeepAspectRatio).boundedTo(most);
    const QRect place(contentsRect().center() - QPoint(size.width() / 2, size.height() / 2), size);
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(place, picture);
}
