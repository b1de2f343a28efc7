// SPDX-License-Identifier: MIT
// Steps to take in the window, and their player: for the speaker's script, tour, pictures and tutorial.
#pragma once

#include "protocol/report.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QObject>
#include <QTimer>

#include <functional>
#include <map>
#include <span>

class MainWindow;

namespace script {

enum class Act {
    Turn,    // to the page that holds the widget
    Open,    // the page with this title
    Page,    // the page with this title, wherever it is
    Press,   // a button
    Switch,  // "on" or "off": presses a box or button that is not yet so
    Send,    // a command to the board
    Inject,  // presses the button and waits until the board reports one more fault
    Restart, // the chip, by a destructive reset, and waits until it has started anew
    Enter,   // text into a field, a number into a spin box, the item of a selector
    Type,    // the text key by key; a line feed is Return
    Next,    // selects the item below
    Choose,  // a menu entry
    Call,    // one of the player's own calls, or a slot of the window, by its name
    Await,   // until the widget's text, its colour in words, or "on" of a group contains the text
    Look,    // at the widget
    Picture, // of the widget, saved under this name
    Resize,  // the window to WIDTHxHEIGHT
    Leave,   // closes the window
};

struct Step {
    Act act{};
    const char *widget = ""; // name of a widget; "dialog": the modal one on the screen; a title; the name of a call
    const char *text = "";
    const char *caption = ""; // said about the step by those who speak
};

/// Tries each step until it can be taken, from inside the event loop: also while the window waits or shows a dialog. What
/// acts on the board waits until the window's animations are over, or a dialog is open.
class Player : public QObject
{
    Q_OBJECT

public:
    explicit Player(MainWindow &window);

    /// Pictures go to this folder, which is made where missing.
    void setFolder(const QString &folder);
    void addCall(const char *name, std::function<void()> work) { m_calls[QString::fromLatin1(name)] = std::move(work); }
    /// How long a step is tried. A lenient player passes over what it has awaited in vain; else that fails.
    void setPatience(int milliseconds, bool lenient);

    /// Begins to take the steps and returns at once; ended() says how it went. Steps under way are given up.
    void start(std::span<const Step> steps);
    void stop();
    /// Returns when all steps are taken. False, with a message on standard error and with every event loop told to end,
    /// where one cannot be taken; false also where the application ends meanwhile.
    bool play(std::span<const Step> steps);

signals:
    /// All steps have been taken, or one could not be; not where they were stopped.
    void ended(bool whole);

protected:
    MainWindow &window() { return m_window; }
    QWidget *widgetOf(const Step &step);

    /// One try. Returns whether the step was taken.
    virtual bool perform(const Step &step);
    virtual bool open(const QString &title);
    virtual void press(QWidget &button);
    virtual void type(QWidget &field, const QString &text);

private:
    void tick();
    bool act(const Step &step, QWidget &widget);
    bool setSwitch(QWidget &widget, bool on);
    bool inject(QWidget &button);
    bool restart();
    void hear(const protocol::Report &report);
    bool call(const QString &name);
    bool choose(const QString &entry);
    bool takePicture(QWidget &widget, const QString &name);
    void end(bool whole);

    MainWindow &m_window;
    QDir m_folder;
    std::map<QString, std::function<void()>> m_calls;
    std::span<const Step> m_steps;
    std::size_t m_next = 0;
    int m_run = 0;            // counts starts and stops
    int m_faults = 0;         // in the history before an injection
    bool m_begun = false;     // a step that waits for the board
    bool m_restarted = false; // the board, since then
    bool m_back = false;      // by a destructive reset
    QElapsedTimer m_asked;
    int m_patienceMs = 15000;
    bool m_lenient = false;
    bool m_whole = false;
    bool m_blocking = false; // inside play()
    bool m_tried = false;    // the current step, in vain
    QTimer m_timer;
    QElapsedTimer m_waiting;
    QEventLoop m_loop;
};

} // namespace script
