// SPDX-License-Identifier: MIT
// A user without aim: presses, turns pages, types and uses the menu at random, also while handlers wait.
#pragma once

#include "app/mainwindow.h"

#include <QTimer>

#include <functional>
#include <random>
#include <vector>

class Monkey : public QObject
{
    Q_OBJECT

public:
    /// Knows how to press buttons, turn pages and type into fields; the same seed makes the same choices. When
    /// `mostInside` actions wait inside one another, it rests until the first of them has returned.
    Monkey(MainWindow &window, quint32 seed, int mostInside);

    /// Something else to do, as likely as its weight says: pressing buttons weighs 8.
    void add(int weight, std::function<void()> action);
    /// Triggers an action of the menu by its name.
    void addMenu(int weight, const char *name);
    /// Opens the console, which is closed again after `milliseconds`; typing goes to it as long as it is open.
    void addConsole(int weight, int milliseconds);

    /// Acts once each `interval` milliseconds, whatever the actions before wait for, until stop() or, where it is given,
    /// the number of actions.
    void start(int interval, int most = 0);
    void stop() { m_timer.stop(); }

    int actions() const { return m_actions; }
    /// No action waits.
    bool isIdle() const { return m_depth == 0; }
    int deepest() const { return m_deepest; }
    int below(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

private:
    struct Action {
        int weight;
        std::function<void()> run;
    };

    void act();
    void pressSomething();
    void turnSomewhere();
    void typeSomething();
    void closeConsoleIn(int milliseconds);

    MainWindow &m_window;
    std::mt19937 m_random;
    std::vector<Action> m_choices;
    int m_weights = 0;
    QTimer m_timer;
    int m_mostInside;
    int m_most = 0;
    int m_actions = 0;
    int m_depth = 0;
    int m_deepest = 0;
    bool m_resting = false;
    bool m_inConsole = false;
};
