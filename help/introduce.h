// SPDX-License-Identifier: MIT
// Introduces the program with an annotated picture of its window.
#pragma once

#include <QWidget>

class introduce : public QWidget
{
    Q_OBJECT

public:
    explicit introduce(QWidget *parent = nullptr);

    /// Moves it over the middle of another window, with its upper left corner on the screen.
    void centreOn(const QWidget &window);
};
