// SPDX-License-Identifier: MIT
// The time line beside the pages: Ctrl+T shows and hides it. Whatever fault is selected in the history is marked here, and
// the other way round.
#pragma once

#include "timeline/observer.h"

#include <QDockWidget>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QToolButton;

namespace timeline {

class View;

class Dock : public QDockWidget
{
    Q_OBJECT

public:
    /// `history` selects among the window's faults.
    Dock(QComboBox &history, QWidget *parent);

    const Observer &observer() const { return m_observer; }
    View &view() { return *m_view; }
    /// Shows it and turns to it, or hides it.
    void toggle();
    /// Asks for a file and saves there: the log or the picture, by the ending. Returns at once.
    void askAndExport();
    /// Returns why it failed, for people; empty on success.
    QString exportTo(const QString &path) const;

private:
    void addTools(QHBoxLayout &row);
    QToolButton *addButton(QHBoxLayout &row, const QString &text, const QString &name, const QString &hint);
    void choose(int fault);
    void showSelected(int fault);
    void place();

    Observer m_observer;
    QComboBox &m_history;
    View *m_view;
    QLabel *m_details;
    QToolButton *m_follow = nullptr;
    bool m_placed = false;
};

} // namespace timeline
