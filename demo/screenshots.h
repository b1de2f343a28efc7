// SPDX-License-Identifier: MIT
// The pictures of the manual, taken from the running program in front of a virtual board.
#pragma once

#include <QDir>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class MainWindow;
struct Step;

/// Walks through the table of steps (screenshotsteps.h) from inside the event loop, also while the program waits or shows
/// a dialog, and saves its pictures. Ends the application when done: with 0, or with 1 after a step that cannot be taken.
class Screenshots : public QObject
{
    Q_OBJECT

public:
    /// `ports` are the names that the program was given; `folder` is made where missing.
    Screenshots(MainWindow &window, const QString &folder, const QStringList &ports);

private:
    void tick();
    bool perform(const Step &step);
    bool takePicture(const Step &step);
    void askForPort();

    MainWindow &m_window;
    QDir m_folder;
    QStringList m_ports;
    QTimer m_timer;
    QElapsedTimer m_waiting;
    std::size_t m_next = 0;
};
