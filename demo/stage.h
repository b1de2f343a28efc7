// SPDX-License-Identifier: MIT
// Additions of the tutorial to the picture: captions below the window, cards over it, a frame, and a large pointer.
#pragma once

#include <QPoint>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>

class CaptionBar;
class Card;

class Stage
{
public:
    /// Puts the window at the top left of the screen and the captions beneath it.
    explicit Stage(QWidget &window);
    ~Stage();

    QSize size() const;
    void showCaption(const QString &heading, const QString &text);
    /// A card over everything: a title and lines below it.
    void showCard(const QString &title, const QStringList &lines);
    void hideCard();
    /// Frames a widget; none where null.
    void frame(const QWidget *widget);
    /// Moves the pointer there as a hand would. `place` is in the widget.
    void pointAt(const QWidget &widget, const QPoint &place);
    /// Presses and releases the left button there.
    void press(QWidget &widget, const QPoint &place);

private:
    QWidget &m_window;
    std::unique_ptr<QWidget> m_frame;
    std::unique_ptr<CaptionBar> m_bar;
    std::unique_ptr<Card> m_card;
};
