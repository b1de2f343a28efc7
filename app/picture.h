// SPDX-License-Identifier: MIT
// A picture that takes the room there is and keeps its proportions.
#pragma once

#include <QLabel>

class Picture : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override;
    /// Where the picture is drawn.
    QRect place() const;

protected:
    void paintEvent(QPaintEvent *event) override;
};
