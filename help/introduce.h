// SPDX-License-Identifier: MIT
// Introduces the program with an annotated picture of its window.
#pragma once

#include <QWidget>

class introduce : public QWidget
{
    Q_OBJECT

public:
    explicit introduce(QWidget *parent = nullptr);
};
