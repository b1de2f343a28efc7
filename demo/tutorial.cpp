// SPDX-License-Identifier: MIT
#include "demo/tutorial.h"

#include "app/mainwindow.h"
#include "demo/recorder.h"
#include "demo/stage.h"
#include "demo/tutorialscript.h"
#include "link/commandchannel.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTextStream>

#include <functional>

namespace {

using tutorial::Act;
using tutorial::Chapter;
using tutorial::Step;

constexpr int kCardMs = 6000;
constexpr int kReadMs = 1300; // to find the caption; then so much a character
constexpr int kReadMsPerCharacter = 46;
constexpr int kAfterMs = 700;
constexpr int kKeyMs = 120;
constexpr int kAnswerMs = 8000;
constexpr int kPollMs = 50;

class Player
{
public:
    explicit Player(MainWindow &window) : m_window(window), m_stage(window) {}

    QSize size() const { return m_stage.size(); }
    bool play();

private:
    bool play(const Chapter &chapter, const QString &heading);
    bool run(const Step &step);
    bool inject(const Step &step);
    void open(const QString &title);
    void press(const Step &step);
    void type(const Step &step);
    void next(const Step &step);
    void say(const Step &step);
    void read(const QString &text) { delayMs(kReadMs + kReadMsPerCharacter * text.size()); }
    static bool fail(const Step &step);
    bool await(const std::function<bool()> &condition, const Step &step);

    QWidget *widget(const char *name) const { return m_window.findChild<QWidget *>(QString::fromLatin1(name)); }
    template <class Kind> Kind &the(const char *name) const
    {
        return *m_window.findChild<Kind *>(QString::fromLatin1(name));
    }

    MainWindow &m_window;
    Stage m_stage;
    QString m_heading;
    QString m_caption;
};

bool Player::play()
{
    m_stage.showCard(QStringLiteral("Safety Workbench"),
                     {QStringLiteral("A tour of five faults"),
                      {},
                      QStringLiteral("How the microcontroller QM7D305 notices that something is wrong,"),
                      QStringLiteral("and what this window shows of it.")});
    delayMs(kCardMs);
    m_stage.hideCard();
    if (!play(tutorial::prologue, QString::fromUtf8(tutorial::prologue.title)))
        return false;
    QStringList caught;
    for (const Chapter &chapter : tutorial::chapters) {
        const QString title = QString::fromUtf8(chapter.title);
        if (!play(chapter, QStringLiteral("%1 of 5\n%2").arg(caught.size() + 1).arg(title)))
            return false;
        caught << QStringLiteral("%1:  %2,  %3 µs")
                      .arg(title, QString::fromUtf8(chapter.catcher), the<QLineEdit>(tutorial::kTime).text());
    }
    m_stage.showCard(
        QStringLiteral("Five faults, all caught"),
        caught + QStringList{{}, QStringLiteral("Every page has more to try. Help > Manual explains them all.")});
    delayMs(kCardMs + kCardMs / 2);
    return true;
}

bool Player::play(const Chapter &chapter, const QString &heading)
{
    m_heading = heading;
    for (const Step &step : chapter.steps) {
        if (!run(step))
            return false;
        delayMs(kAfterMs);
    }
    return true;
}

bool Player::run(const Step &step)
{
    m_stage.frame(nullptr);
    if (step.act != Act::Open && !widget(step.target)->isVisible())
        return fail(step);
    say(step);
    switch (step.act) {
    case Act::Open:
        open(QString::fromLatin1(step.target));
        read(m_caption);
        return true;
    case Act::Settle:
        if (!await([this] { return the<QLabel>(tutorial::kState).text() == QLatin1String("NORMAL"); }, step))
            return false;
        [[fallthrough]];
    case Act::Look:
        m_stage.frame(widget(step.target));
        if (*step.caption)
            read(m_caption);
        return true;
    case Act::Press:
        press(step);
        return true;
    case Act::Inject:
        return inject(step);
    case Act::Type:
        type(step);
        return true;
    case Act::Next:
        next(step);
        return true;
    }
    return false;
}

void Player::say(const Step &step)
{
    if (!*step.caption)
        return;
    m_caption = QString::fromUtf8(step.caption);
    if (m_caption.contains(QLatin1String("%1")))
        m_caption = m_caption.arg(the<QLineEdit>(tutorial::kTime).text());
    m_stage.showCaption(m_heading, m_caption);
}

void Player::open(const QString &title)
{
    for (QTabBar *tabs : m_window.findChildren<QTabBar *>()) {
        for (int i = 0; tabs->isVisible() && i < tabs->count(); ++i) {
            if (tabs->tabText(i) != title)
                continue;
            m_stage.pointAt(*tabs, tabs->tabRect(i).center());
            m_stage.press(*tabs, tabs->tabRect(i).center());
            return;
        }
    }
}

void Player::press(const Step &step)
{
    QWidget &button = *widget(step.target);
    m_stage.pointAt(button, button.rect().center());
    if (*step.caption)
        read(m_caption);
    m_stage.press(button, button.rect().center());
}

bool Player::inject(const Step &step)
{
    const auto &faults = the<QComboBox>(tutorial::kFaultBox);
    const int before = faults.count();
    press(step);
    return await([&faults, before] { return faults.count() > before; }, step);
}

void Player::type(const Step &step)
{
    QWidget &field = *widget(step.target);
    m_stage.pointAt(field, QPoint(30, field.height() / 2));
    m_stage.press(field, QPoint(30, field.height() / 2));
    field.setFocus();
    for (const char *c = step.text; *c; ++c) {
        QKeyEvent event(QEvent::KeyPress, 0, Qt::NoModifier, QString(QLatin1Char(*c)));
        QApplication::sendEvent(&field, &event);
        delayMs(kKeyMs);
    }
}

void Player::next(const Step &step)
{
    QWidget &box = *widget(step.target);
    m_stage.pointAt(box, box.rect().center());
    box.setFocus();
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QApplication::sendEvent(&box, &event);
    read(m_caption);
}

bool Player::await(const std::function<bool()> &condition, const Step &step)
{
    for (int ms = 0; ms < kAnswerMs; ms += kPollMs) {
        if (condition())
            return true;
        delayMs(kPollMs);
    }
    return fail(step);
}

bool Player::fail(const Step &step)
{
    QTextStream(stderr) << "What the tutorial says did not happen: " << step.target << Qt::endl;
    return false;
}

} // namespace

bool recordTutorial(MainWindow &window, const QString &file)
{
    Player player(window);
    delayMs(kAfterMs);
    Recorder recorder(file, player.size());
    if (!recorder.isRunning()) {
        QTextStream(stderr) << "The tutorial could not be recorded with ffmpeg." << Qt::endl;
        return false;
    }
    const bool played = player.play();
    return recorder.finish() && played;
}
