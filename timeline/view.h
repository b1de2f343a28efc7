// SPDX-License-Identifier: MIT
// The time line on the screen: zoomed by the wheel, moved by dragging, read by clicking.
#pragma once

#include "timeline/picture.h"

#include <QTimer>
#include <QWidget>

namespace timeline {

class Observer;

class View : public QWidget
{
    Q_OBJECT

public:
    explicit View(const Observer &observer, QWidget *parent = nullptr);

    const Span &span() const { return m_span; }
    void setSpan(const Span &span);
    /// All that is known.
    void showAll();
    /// About the middle; while it follows, about now.
    void zoom(double factor);
    /// The right end is now, from now on or no longer.
    void follow(bool on);
    bool isFollowing() const { return m_following; }
    /// Number of a fault, -1 for none. One out of sight is brought into sight.
    void select(int fault);
    int selected() const { return m_selected; }

    QSize minimumSizeHint() const override { return Picture::kLeast; }
    QSize sizeHint() const override { return {1000, 330}; }

signals:
    /// The user wants this fault.
    void chosen(int fault);
    void followingChanged(bool on);

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    Picture picture() const { return {chronicle(), m_span, size(), m_selected}; }
    const Chronicle &chronicle() const;
    void keepUp();
    void repaintSoon();
    void moveBy(int pixels);
    void chooseBeside(int step);

    const Observer &m_observer;
    Span m_span;
    bool m_following = true;
    int m_selected = -1;
    int m_pressedAt = 0; // x
    bool m_dragging = false;
    QTimer m_clock; // while it follows
    QTimer m_soon;
};

} // namespace timeline
