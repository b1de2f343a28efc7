// SPDX-License-Identifier: MIT
// Where faults were: outlines and ways painted over a page, without a change to its widgets.
#pragma once

#include <QPolygonF>
#include <QVector>
#include <QWidget>

#include <functional>
#include <vector>

/// In the layer's coordinates.
struct FaultMark {
    QRectF outline;      // none where empty
    QPolygonF way;       // ends in an arrow; none where empty
    QString words;       // beside the way's first corner, else at the outline's upper right
    bool isFault = true; // else part of the drawing, such as what connects two boxes
};

class FaultLayer : public QWidget
{
public:
    using Marks = std::vector<FaultMark>;

    /// As large as the widget that it covers. Clicks and keys go through it.
    explicit FaultLayer(QWidget &covered);

    /// Asked for the marks at each painting, as widgets move when the window changes. It may outlive no widget of
    /// the one covered.
    void show(std::function<Marks()> marks);
    /// Where `widget`, somewhere in the covered one, stands.
    QRectF place(const QWidget &widget) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    std::function<Marks()> m_marks;
};
