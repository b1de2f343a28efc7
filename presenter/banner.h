// SPDX-License-Identifier: MIT
// The story in letters for the last row of a room.
#pragma once

#include "presenter/story.h"

#include <QColor>
#include <QToolBar>

#include <array>

class QMainWindow;

namespace presenter {

/// Letters are this part of the screen's height.
inline constexpr int kLettersPerScreen = 20;

/// Colours of the banner; each ink has a contrast of at least 7:1 to the ground.
inline constexpr QRgb kGround = 0xFF0F2A52;
inline constexpr QRgb kInk = 0xFFFFFFFF;
inline constexpr QRgb kPaleInk = 0xFFC3D3EC;  // what has not happened yet
inline constexpr QRgb kLightInk = 0xFFFFC83C; // headings, and what it means

class Banner : public QToolBar
{
    Q_OBJECT

public:
    /// Hidden at first.
    explicit Banner(QMainWindow &window);

    /// Where the story is painted.
    QWidget &canvas() const;
    void setStory(const Story &story);
    /// A line of the speaker's, shown until the story says what its fault means, and in small what comes next.
    void setCaption(const QString &caption, const QString &next);
    /// Makes the letters fit for a screen of this height.
    void setScreenHeight(int pixels);

    /// Height of the letters, pixels.
    int letters() const { return m_letters; }
    /// Width that a line of text takes, with what stands beside it.
    int widthOf(const QString &line) const;

private:
    class Canvas;
    void layOut();
    QString lastLine() const;
    void announce();

    Canvas *m_canvas;
    Story m_story;
    QString m_caption;
    QString m_next;
    int m_letters = 40;
};

} // namespace presenter
