// SPDX-License-Identifier: MIT
// The window that introduces the program by a picture of it.
#pragma once

#include <QWidget>

class introduce : public QWidget
{
    Q_OBJECT

public:
    explicit introduce(QWidget *parent = nullptr);
};
