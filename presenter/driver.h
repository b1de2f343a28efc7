// SPDX-License-Identifier: MIT
// A user's hands and eyes: finds widgets, turns to their pages, presses, types, and reads what they say. The widgets get
// real mouse and key events.
#pragma once

#include <QApplication>
#include <QMainWindow>
#include <QString>
#include <QWidget>

namespace driver {

/// The first visible window of this kind; null where none is.
template <class Window> Window *topLevel()
{
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        auto *wanted = qobject_cast<Window *>(window);
        if (wanted && wanted->isVisible())
            return wanted;
    }
    return nullptr;
}

/// The widget of this name, in whichever window; null where none has it.
QWidget *find(const QString &name);

/// Turns to the pages that hold the widget.
void turnTo(QWidget *widget);
/// Turns to the page with this title, among the tabs that can be seen. False where no tab has it.
bool openPage(const QWidget *window, const QString &title);

/// Turns to the page with this title and to those that hold it. False where no tab has it.
bool turnToPage(const QWidget *window, const QString &title);

/// Presses and releases the left button there; without a place where a press works: at the left for a check box.
void press(QWidget *widget);
void press(QWidget *widget, const QPoint &place);
/// Puts text into a field, a number into a spin box, selects the item of this text. False where the widget takes none.
bool enter(QWidget *widget, const QString &text);
/// Types the text key by key; a line feed is the Return key.
void type(QWidget *widget, const QString &text);
void pressKey(QWidget *widget, int key);

/// The window's own part or one of the library, such as the scroll buttons of a tab bar or the editor of a spin box.
bool isOurs(const QObject *object);

/// What the window's status bar says of the port.
QString portState(const QMainWindow &window);
/// What a widget says: its text or number; for what can be checked "[on]" or "[off]".
QString textOf(const QWidget *widget);

} // namespace driver
