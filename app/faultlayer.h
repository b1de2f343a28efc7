// SPDX-License-Identifier: MIT
// Where faults were: outlines and ways painted over a page, without a change to its widgets.
#pragma once

#include <QPixmap>
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
    bool isFault = true; // else part of the drawing, such as a line between two boxes

    bool operator==(const FaultMark &) const = default;
};

class FaultLayer : public QWidget
{
public:
    using Marks = std::vector<FaultMark>;

    /// As large as the widget that it covers. Clicks and keys go through it.
    explicit FaultLayer(QWidget &covered);

    /// Asked for the marks at each painting, as widgets move when the window changes; of several at one place the
    /// first counts. It may outlive no widget of the one covered.
    void show(std::function<Marks()> marks);
    /// Where `widget`, somewhere in the covered one, stands.
    QRectF place(const QWidget &widget) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void drawMarks();

    std::function<Marks()> m_marks;
    Marks m_drawn;
    QPixmap m_picture; // of m_drawn: widgets below repaint often, marks change seldom
};
