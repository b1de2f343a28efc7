// SPDX-License-Identifier: MIT
#include "help/introduce.h"

#include "app/zoom.h"

#include <QLabel>
#include <QPixmap>
#include <QScreen>

introduce::introduce(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("introduce"));
    setWindowTitle(QStringLiteral("Introduction"));
    resize(1280, 768);
    auto *picture = new QLabel(this);
    picture->setObjectName(QStringLiteral("label"));
    picture->setGeometry(30, 50, 1200, 640);
    picture->setFixedSize(1200, 640);
    picture->setScaledContents(true);
    keepUnzoomed(*picture);
    picture->setPixmap(QPixmap(QStringLiteral(":/images/SW.png")));
    picture->setAccessibleName(QStringLiteral("The window and its parts"));
}

void introduce::centreOn(const QWidget &window)
{
    QRect place = frameGeometry();
    place.moveCenter(window.frameGeometry().center());
    const QPoint least = window.screen()->availableGeometry().topLeft();
    move(qMax(place.left(), least.x()), qMax(place.top(), least.y()));
}
