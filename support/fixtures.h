// SPDX-License-Identifier: MIT
// The real window on a real pseudo-terminal, in front of the test itself (WindowFixture) or of a virtual board
// (BoardFixture). A message box that nobody answers fails the test at once.
#pragma once

#include "app/mainwindow.h"
#include "simulator/virtualboard.h"
#include "support/boxanswerer.h"
#include "support/cuttingproxy.h"
#include "presenter/driver.h"
#include "support/rawline.h"

#include <QLabel>
#include <QLineEdit>
#include <QStringList>
#include <QTextEdit>

#include <functional>
#include <memory>

/// Window and widgets by name; a name that does not exist ends the test program.
class RealWindow : public QObject
{
    Q_OBJECT

public:
    MainWindow &window() { return *m_window; }

    template <class Widget> Widget *find(const char *name)
    {
        auto *widget = m_window->findChild<Widget *>(QString::fromLatin1(name));
        if (!widget)
            qFatal("no widget %s", name);
        return widget;
    }
    /// Presses a button, radio button or check box with the mouse, after turning to the page that holds it.
    void click(const char *name);
    void turnTo(QWidget *widget) { driver::turnTo(widget); }
    QString text(const char *name) { return driver::textOf(find<QWidget>(name)); }
    /// The status bar's text on the port.
    QString portState() const;
    QString style(const char *name) { return find<QWidget>(name)->styleSheet(); }

protected:
    void build(const QString &tty);

    std::unique_ptr<MainWindow> m_window;

private:
    BoxGuard m_guard;
};

/// The board is the test.
class WindowFixture : public RealWindow
{
    Q_OBJECT

public:
    WindowFixture();

    RawLine &line() { return m_line; }
    /// Commands sent since the last call, "get 1|get 9".
    QString sent();
    /// Commands sent while `work` runs, "get 3|get 4|"; "nothing arrives" where the line is dead.
    QString sentBy(const std::function<void()> &work);

    /// Sends a report; the payload is in hexadecimal.
    void send(int module, int type, const char *payload);
    /// Sends reports and waits until the window has shown them. False where it does not.
    bool show(int module, int type, const char *payload);
    bool show(const QByteArray &frames);

private:
    RawLine m_line;
};

/// The board is a virtual one, in this process.
class BoardFixture : public RealWindow
{
    Q_OBJECT

public:
    enum class Wire { Direct, Cutting };
    explicit BoardFixture(const simulator::VirtualBoard::Options &options = {}, Wire wire = Wire::Direct);

    simulator::VirtualBoard &virtualBoard() { return *m_board; }
    simulator::Board &board() { return m_board->board(); }
    /// Between board and window, where the wire is a cutting one.
    CuttingProxy &proxy() { return *m_proxy; }
    /// Command lines that the board carried out since the last clear.
    QStringList commands;

private:
    std::unique_ptr<simulator::VirtualBoard> m_board;
    std::unique_ptr<CuttingProxy> m_proxy;
};
