// SPDX-License-Identifier: MIT
#include "presenter/script.h"

#include "app/mainwindow.h"
#include "link/commandchannel.h"
#include "presenter/driver.h"

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

QSize sizeFrom(const QString &text)
{
    return {text.section(QLatin1Char('x'), 0, 0).toInt(), text.section(QLatin1Char('x'), 1).toInt()};
}

bool says(const QWidget &widget, const QString &text)
{
    return driver::textOf(&widget).contains(text) || widget.accessibleDescription().contains(text);
}

} // namespace

Player::Player(MainWindow &window) : m_window(window)
{
    connect(&m_timer, &QTimer::timeout, this, &Player::tick);
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
    m_steps = steps;
    m_next = 0;
    m_faults = -1;
    m_whole = m_tried = false;
    m_timer.start(kTickMs);
}

void Player::stop()
{
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
        return end(true);
    const Step &step = m_steps[m_next];
    if (!perform(step)) {
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
    m_tried = false;
    if (++m_next == m_steps.size())
        end(true);
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

bool Player::inject(QWidget &button)
{
    const auto *history = m_window.findChild<QComboBox *>(QStringLiteral("comboBox_FaultID"));
    if (m_faults < 0) {
        m_faults = history->count();
        press(button);
    }
    if (history->count() <= m_faults)
        return false;
    m_faults = -1;
    return true;
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
