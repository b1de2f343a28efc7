// SPDX-License-Identifier: MIT
// The time line's picture: on the screen, as SVG, as PNG.
#pragma once

#include "timeline/chronicle.h"
#include "timeline/scale.h"

#include <QRect>
#include <QRgb>

class QPainter;

namespace timeline {

/// Above, a row per mechanism with its marks; below, how long detection took in the span shown, a row per mechanism.
class Picture
{
public:
    /// For a picture of this size; `selected` is the number of a fault, -1 for none.
    Picture(const Chronicle &chronicle, const Span &span, const QSize &size, int selected = -1);

    /// With its background. The effort depends on the width, not on the number of faults.
    void paint(QPainter &painter) const;

    /// Where the marks are.
    QRect marks() const { return {m_left, m_top, m_scale.width(), m_bandHeight * kBandCount}; }
    qint64 timeAt(int x) const { return m_scale.start(x - m_left); }
    /// Number of the fault nearest to a point of its row; -1 where none is within a few pixels.
    int faultAt(const QPoint &point) const;

    static constexpr QSize kLeast{420, 240};

private:
    QRect band(int number) const { return {m_left, m_top + number * m_bandHeight, m_scale.width(), m_bandHeight}; }
    void paintRows(QPainter &painter) const;
    void paintAxis(QPainter &painter) const;
    void paintLegend(QPainter &painter) const;
    void paintGaps(QPainter &painter) const;
    void paintMarks(QPainter &painter, int number) const;
    void paintFlags(QPainter &painter, int number, Mark mark, QRgb colour) const;
    void paintRestarts(QPainter &painter) const;
    void paintSelection(QPainter &painter) const;
    void paintHistograms(QPainter &painter) const;
    void paintHistogram(QPainter &painter, int number, const QRect &row) const;

    const Chronicle &m_chronicle;
    QSize m_size;
    int m_selected;
    int m_left;
    int m_top;
    int m_bandHeight;
    int m_histogramTop;
    int m_rowHeight;
    Scale m_scale;
};

} // namespace timeline
