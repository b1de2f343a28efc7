// SPDX-License-Identifier: MIT
// Overlays of a window whose contents are out of date: a veil over the pages, a band above them.
#pragma once

#include <QToolBar>
#include <QWidget>

class ElidedLabel;
class QLabel;
class QMainWindow;

/// A light veil over another widget, as large as that one. Clicks and keys go through it, and no style changes.
class Veil : public QWidget
{
public:
    /// Hidden at first.
    explicit Veil(QWidget &covered);

    /// Lays the veil over everything, or lifts it.
    void cover(bool covered);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

/// A red band between the menu bar and the pages: the trouble and its remedy.
class Band : public QToolBar
{
public:
    /// Hidden at first.
    explicit Band(QMainWindow &window);

    /// Shows the band, or hides it where `trouble` is empty. New words are announced to screen readers.
    void say(const QString &trouble, const QString &remedy);

private:
    QLabel *m_trouble;
    ElidedLabel *m_remedy;
};
