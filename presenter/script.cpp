// SPDX-License-Identifier: MIT
#include "presenter/script.h"

#include "app/mainwindow.h"
#include "app/reportfeed.h"
#include "link/commandchannel.h"
#include "presenter/driver.h"
#include "protocol/reset.h"
#include "protocol/sys.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QPixmap>
#include <QTextStream>

#include <algorithm>
#include <utility>

namespace script {

namespace {

constexpr int kTickMs = 20;
constexpr int kAskAgainMs = 3000; // many times what a restart takes

QSize sizeFrom(const QString &text)
{
    return {text.section(QLatin1Char('x'), 0, 0).toInt(), text.section(QLatin1Char('x'), 1).toInt()};
}

bool says(const QWidget &widget, const QString &text)
{
    return driver::textOf(&widget).contains(text) || widget.accessibleDescription().contains(text);
}

// A page's button may send its command seconds later, behind an animation: the next step's must not overtake it. And
// handlers that wait inside one another return only when the last one is over.
bool isReady()
{
    return !isDelayed() || QApplication::activeModalWidget();
}

bool actsOnBoard(Act act)
{
    return act == Act::Press || act == Act::Switch || act == Act::Send || act == Act::Inject || act == Act::Restart;
}

// The counters of the reset escalation first: who plays all day resets the chip more often than they allow.
void sendRestart()
{
    using namespace protocol::reset;
    sendCommand(escalationCommand(Kind::Functional, Operation::ClearCounter));
    sendCommand(escalationCommand(Kind::Destructive, Operation::ClearCounter));
    sendCommand(protocol::sys::kDestructiveReset);
}

} // namespace

Player::Player(MainWindow &window) : m_window(window)
{
    connect(&m_timer, &QTimer::timeout, this, &Player::tick);
    connect(&reportFeed(), &ReportFeed::reported, this, &Player::hear);
}

void Player::setFolder(const QString &folder)
{
    QDir().mkpath(folder);
    m_folder.setPath(folder);
}

void Player::setPatience(int milliseconds, bool lenient)
{
    m_patienceMs = milliseconds;
    m_lenient = lenient;
}

void Player::start(std::span<const Step> steps)
{
    ++m_run;
    m_steps = steps;
    m_next = 0;
    m_whole = m_tried = m_begun = false;
    m_timer.start(kTickMs);
}

void Player::stop()
{
    ++m_run;
    m_timer.stop();
}

bool Player::play(std::span<const Step> steps)
{
    if (steps.empty())
        return true;
    start(steps);
    m_blocking = true;
    m_loop.exec();
    m_blocking = false;
    m_timer.stop();
    return m_whole;
}

void Player::tick()
{
    if (m_next >= m_steps.size())
        return isReady() ? end(true) : void();
    const Step &step = m_steps[m_next];
    const int run = m_run;
    const bool waits = !m_begun && actsOnBoard(step.act) && !isReady();
    const bool taken = !waits && perform(step);
    if (run != m_run)
        return; // a key has begun something else meanwhile
    if (!taken) {
        if (!std::exchange(m_tried, true))
            m_waiting.start(); // the first try may take its time
        if (m_waiting.elapsed() < m_patienceMs)
            return;
        if (!m_lenient || step.act != Act::Await) {
            QTextStream(stderr) << "Step " << m_next + 1 << " (" << step.widget << ", \"" << step.text
                                << "\") cannot be taken." << Qt::endl;
            return end(false);
        }
    }
    m_tried = m_begun = false;
    ++m_next;
}

void Player::end(bool whole)
{
    m_timer.stop();
    m_whole = whole;
    emit ended(whole);
    if (!m_blocking)
        return;
    if (whole)
        m_loop.quit();
    else
        QApplication::exit(1); // a dialog may be open on top of our own loop
}

QWidget *Player::widgetOf(const Step &step)
{
    const QString name = QString::fromLatin1(step.widget);
    if (name == QLatin1String("dialog"))
        return QApplication::activeModalWidget();
    auto *child = m_window.findChild<QWidget *>(name);
    return child ? child : driver::find(name);
}

// Work that may open a dialog or wait starts from the event loop, so that the steps go on meanwhile.
bool Player::perform(const Step &step)
{
    const QString name = QString::fromLatin1(step.widget);
    switch (step.act) {
    case Act::Open:
        return open(name);
    case Act::Page:
        return driver::turnToPage(&m_window, name);
    case Act::Send:
        sendCommand(name);
        return true;
    case Act::Restart:
        return restart();
    case Act::Call:
        return call(name);
    case Act::Choose:
        return choose(name);
    default:
        QWidget *widget = widgetOf(step);
        return widget && act(step, *widget);
    }
}

bool Player::act(const Step &step, QWidget &widget)
{
    const QString text = QString::fromUtf8(step.text);
    switch (step.act) {
    case Act::Turn:
        driver::turnTo(&widget);
        return true;
    case Act::Press:
        press(widget);
        return true;
    case Act::Switch:
        return setSwitch(widget, text == QLatin1String("on"));
    case Act::Inject:
        return inject(widget);
    case Act::Enter:
        return driver::enter(&widget, text);
    case Act::Type:
        type(widget, text);
        return true;
    case Act::Next:
        driver::pressKey(&widget, Qt::Key_Down);
        return true;
    case Act::Await:
        return says(widget, text);
    case Act::Resize:
        widget.resize(sizeFrom(text));
        return true;
    case Act::Leave:
        widget.close();
        return true;
    case Act::Picture:
        return takePicture(widget, text);
    default:
        return true;
    }
}

bool Player::open(const QString &title)
{
    return driver::openPage(&m_window, title);
}

void Player::press(QWidget &button)
{
    QTimer::singleShot(0, &button, [&button] { qobject_cast<QAbstractButton *>(&button)->click(); });
}

bool Player::setSwitch(QWidget &widget, bool on)
{
    const QVariant is = widget.property("checked");
    if (is.isValid() && is.toBool() != on)
        QTimer::singleShot(0, &widget, [&widget] { driver::press(&widget); });
    return is.isValid();
}

void Player::type(QWidget &field, const QString &text)
{
    driver::type(&field, text);
}

// An injection is lost on a board that restarts: it is made again.
bool Player::inject(QWidget &button)
{
    const auto *history = m_window.findChild<QComboBox *>(QStringLiteral("comboBox_FaultID"));
    if (m_begun && history->count() > m_faults)
        return true;
    if (!m_begun || (m_restarted && isReady())) {
        m_begun = true;
        m_restarted = false;
        m_faults = history->count();
        press(button);
    }
    return false;
}

// So is the reset; and a chip that is held in reset hears nothing until somebody has taken its power away.
bool Player::restart()
{
    if (m_begun && m_back)
        return true;
    if (!m_begun || m_asked.hasExpired(kAskAgainMs)) {
        m_begun = true;
        m_restarted = m_back = false;
        m_asked.start();
        sendRestart();
    }
    return false;
}

void Player::hear(const protocol::Report &report)
{
    const auto *notice = std::get_if<protocol::sys::RestartNotice>(&report);
    const auto *reasons = std::get_if<protocol::reset::Reasons>(&report);
    if (notice && notice->restarted) {
        m_restarted = true;
        if (m_begun && m_steps[m_next].act == Act::Restart)
            sendCommand(protocol::reset::kGetReasons);
    }
    if (!reasons || !m_restarted)
        return;
    m_back = reasons->isDestructive();
}

bool Player::call(const QString &name)
{
    const auto own = m_calls.find(name);
    if (own == m_calls.end())
        return QMetaObject::invokeMethod(&m_window, name.toLatin1().constData(), Qt::QueuedConnection);
    QTimer::singleShot(0, this, own->second);
    return true;
}

bool Player::choose(const QString &entry)
{
    auto *action = m_window.findChild<QAction *>(entry);
    if (action)
        QTimer::singleShot(0, action, &QAction::trigger);
    return action;
}

bool Player::takePicture(QWidget &widget, const QString &name)
{
    const QString path = m_folder.filePath(name + QStringLiteral(".png"));
    if (!widget.isVisible() || !widget.grab().save(path))
        return false;
    QTextStream(stdout) << path << Qt::endl;
    return true;
}

} // namespace script
