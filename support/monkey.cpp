// SPDX-License-Identifier: MIT
#include "support/monkey.h"

#include "console/consoleform.h"
#include "presenter/driver.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>

#include <algorithm>
#include <utility>

Monkey::Monkey(MainWindow &window, quint32 seed, int mostInside)
    : m_window(window),
      m_random(seed),
      m_mostInside(mostInside)
{
    connect(&m_timer, &QTimer::timeout, this, [this] {
        // A timer does not fire inside its own handler: the work is done outside it.
        QTimer::singleShot(0, this, &Monkey::act);
    });
    add(8, [this] { pressSomething(); });
    add(2, [this] { turnSomewhere(); });
    add(1, [this] { typeSomething(); });
}

void Monkey::add(int weight, std::function<void()> action)
{
    m_choices.push_back({weight, std::move(action)});
    m_weights += weight;
}

void Monkey::addMenu(int weight, const char *name)
{
    auto *action = m_window.findChild<QAction *>(QString::fromLatin1(name));
    if (!action)
        qFatal("no action %s", name);
    add(weight, [action] { action->trigger(); });
}

void Monkey::addConsole(int weight, int milliseconds)
{
    add(weight, [this, milliseconds] {
        if (m_inConsole)
            return;
        m_inConsole = true;
        closeConsoleIn(milliseconds);
        m_window.console_mode(); // returns when the console is closed
        m_inConsole = false;
    });
}

void Monkey::closeConsoleIn(int milliseconds)
{
    QTimer::singleShot(milliseconds, this, [this, milliseconds] {
        if (consoleForm *console = driver::topLevel<consoleForm>())
            console->close();
        else if (m_inConsole)
            closeConsoleIn(milliseconds); // a box of its own is still in front
    });
}

void Monkey::start(int interval, int most)
{
    m_most = most;
    m_timer.start(interval);
}

void Monkey::act()
{
    m_resting = m_depth >= m_mostInside || (m_resting && m_depth > 0);
    if (m_resting || !m_timer.isActive())
        return;
    m_deepest = std::max(m_deepest, ++m_depth);
    if (++m_actions == m_most)
        stop();
    int pick = below(m_weights);
    const auto choice = std::find_if(m_choices.begin(), m_choices.end(),
                                     [&pick](const Action &action) { return (pick -= action.weight) < 0; });
    choice->run();
    --m_depth;
}

void Monkey::pressSomething()
{
    const auto buttons = m_window.centralWidget()->findChildren<QAbstractButton *>();
    QAbstractButton *button = buttons.at(below(static_cast<int>(buttons.size())));
    if (button->isEnabled() && button->objectName().contains(QLatin1Char('_')))
        button->click();
}

void Monkey::turnSomewhere()
{
    const auto tabs = m_window.findChildren<QTabWidget *>();
    QTabWidget *widget = tabs.at(below(static_cast<int>(tabs.size())));
    widget->setCurrentIndex(below(widget->count()));
}

// Types into the console if one is open, else into a field, which refuses invalid characters itself.
void Monkey::typeSomething()
{
    static constexpr int keys[] = {Qt::Key_1,     Qt::Key_A,      Qt::Key_F,         Qt::Key_Z,
                                   Qt::Key_Space, Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Delete,
                                   Qt::Key_Left,  Qt::Key_Up,     Qt::Key_Down};
    QWidget *target = nullptr;
    if (consoleForm *console = driver::topLevel<consoleForm>()) {
        target = console->findChild<QTextEdit *>();
    } else {
        QList<QWidget *> fields;
        for (QWidget *field : m_window.centralWidget()->findChildren<QWidget *>()) {
            if (qobject_cast<QLineEdit *>(field) || qobject_cast<QPlainTextEdit *>(field)
                || qobject_cast<QSpinBox *>(field))
                fields.append(field);
        }
        target = fields.at(below(static_cast<int>(fields.size())));
    }
    for (int count = 1 + below(8); count > 0; --count)
        QTest::keyClick(target, static_cast<Qt::Key>(keys[below(static_cast<int>(std::size(keys)))]));
}
