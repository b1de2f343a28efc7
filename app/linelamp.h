// SPDX-License-Identifier: MIT
// The lamp of the line: each state has a colour, a shape and a word of its own.
#pragma once

#include "app/linemonitor.h"

#include <QToolButton>

class QPainter;
class QRectF;

/// Paints the lamp of `state` into a square.
void paintLamp(QPainter &painter, const QRectF &square, LineMonitor::State state);

/// The lamp in the status bar, with its word and the port. A press opens the panel.
class LineLamp : public QToolButton
{
public:
    explicit LineLamp(QWidget *parent = nullptr);

    /// `word` names the state, `port` the port with its description.
    void show(LineMonitor::State state, const QString &word, const QString &port);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QFont wordFont() const;
    QSize sizeFor(int widestPort) const;

    LineMonitor::State m_state = LineMonitor::State::Closed;
    QString m_word;
    QString m_port;
};
