// SPDX-License-Identifier: MIT
// Presenter mode: the whole screen for the page in front and the story of the last fault. F11 or the button in the status
// bar begin and end it, Esc ends it.
#pragma once

#include "presenter/banner.h"
#include "presenter/story.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QRect>
#include <QTimer>

class QMainWindow;
class QScrollArea;
class QShortcut;
class QToolButton;

namespace presenter {

class Mode : public QObject
{
    Q_OBJECT

public:
    static constexpr int kPointerMs = 3000; // without a movement, then it hides

    explicit Mode(QMainWindow &window);
    ~Mode() override;

    bool isOn() const { return m_on; }
    void begin();
    void end();
    void toggle() { m_on ? end() : begin(); }

    Banner &banner() { return *m_banner; }
    Teller &teller() { return m_teller; }

signals:
    void begun();
    void ended();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fold(const char *name);
    void foldAll();
    void unfoldAll();
    void foldLog(bool folded);
    void fitScreen();
    QSize least() const;
    void enlarge();
    void place(const QRect &where, Qt::WindowStates states);
    void scrollPages(bool scroll);
    void showPointer();
    void hidePointer();

    QMainWindow &m_window;
    Teller m_teller;
    Banner *m_banner;
    QToolButton *m_button;
    QShortcut *m_leave;
    QList<QPointer<QWidget>> m_folded; // by us: they come back
    QPointer<QScrollArea> m_scroller;  // ours, on small screens
    QTimer m_pointer;
    Qt::WindowStates m_before = {};
    QRect m_placeBefore;
    int m_logStretch = 0;
    int m_percentBefore = 100;
    bool m_on = false;
    bool m_pointerHidden = false;
};

} // namespace presenter
