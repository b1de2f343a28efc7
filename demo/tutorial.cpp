// SPDX-License-Identifier: MIT
#include "demo/tutorial.h"

#include "app/mainwindow.h"
#include "demo/recorder.h"
#include "demo/stage.h"
#include "demo/tutorialscript.h"
#include "link/commandchannel.h"
#include "presenter/driver.h"

#include <QLineEdit>
#include <QTabBar>
#include <QTextStream>

#include <utility>

namespace {

using script::Act;
using script::Step;
using tutorial::Chapter;

constexpr int kCardMs = 6000;
constexpr int kReadMs = 1300; // to find the caption; then so much a character
constexpr int kReadMsPerCharacter = 46;
constexpr int kAfterMs = 700;
constexpr int kKeyMs = 120;

/// Carries steps out as a hand would, and says what they are about.
class Narrator : public script::Player
{
public:
    explicit Narrator(MainWindow &window) : Player(window), m_stage(window) {}

    QSize size() const { return m_stage.size(); }
    bool playAll();

private:
    bool play(const Chapter &chapter, const QString &heading);
    bool perform(const Step &step) override;
    bool open(const QString &title) override;
    void press(QWidget &button) override;
    void type(QWidget &field, const QString &text) override;
    void introduce(const Step &step);
    void say(const Step &step);
    void read() { delayMs(kReadMs + kReadMsPerCharacter * m_caption.size()); }
    QString detectionTime() { return window().findChild<QLineEdit *>(QString::fromLatin1(tutorial::kTime))->text(); }

    Stage m_stage;
    QString m_heading;
    QString m_caption;
    const Step *m_introduced = nullptr;
};

bool Narrator::playAll()
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
        caught << QStringLiteral("%1:  %2,  %3 µs").arg(title, QString::fromUtf8(chapter.catcher), detectionTime());
    }
    m_stage.showCard(
        QStringLiteral("Five faults, all caught"),
        caught + QStringList{{}, QStringLiteral("Every page has more to try. Help > Manual explains them all.")});
    delayMs(kCardMs + kCardMs / 2);
    return true;
}

bool Narrator::play(const Chapter &chapter, const QString &heading)
{
    m_heading = heading;
    return Player::play(chapter.steps);
}

// A step is spoken about once, however often it is tried.
bool Narrator::perform(const Step &step)
{
    if (std::exchange(m_introduced, &step) != &step)
        introduce(step);
    if (!Player::perform(step))
        return false;
    if (step.act == Act::Open || step.act == Act::Next || step.act == Act::Look)
        read();
    if (step.act != Act::Await)
        delayMs(kAfterMs);
    return true;
}

void Narrator::introduce(const Step &step)
{
    m_stage.frame(nullptr);
    say(step);
    QWidget *widget = step.act == Act::Open ? nullptr : widgetOf(step);
    if (!widget)
        return;
    if (step.act == Act::Look)
        m_stage.frame(widget);
    else if (step.act != Act::Await)
        m_stage.pointAt(*widget, widget->rect().center());
    if (*step.caption && (step.act == Act::Press || step.act == Act::Inject))
        read();
}

void Narrator::say(const Step &step)
{
    if (!*step.caption)
        return;
    m_caption = QString::fromUtf8(step.caption);
    if (m_caption.contains(QLatin1String("%1")))
        m_caption = m_caption.arg(detectionTime());
    m_stage.showCaption(m_heading, m_caption);
}

bool Narrator::open(const QString &title)
{
    const auto books = window().findChildren<QTabBar *>();
    for (QTabBar *tabs : books) {
        for (int i = 0; tabs->isVisible() && i < tabs->count(); ++i) {
            if (tabs->tabText(i) != title)
                continue;
            m_stage.pointAt(*tabs, tabs->tabRect(i).center());
            m_stage.press(*tabs, tabs->tabRect(i).center());
            return true;
        }
    }
    return false;
}

void Narrator::press(QWidget &button)
{
    m_stage.press(button, button.rect().center());
}

void Narrator::type(QWidget &field, const QString &text)
{
    m_stage.press(field, field.rect().center());
    field.setFocus();
    for (const QChar letter : text) {
        driver::type(&field, letter);
        delayMs(kKeyMs);
    }
}

} // namespace

bool recordTutorial(MainWindow &window, const QString &file)
{
    Narrator narrator(window);
    delayMs(kAfterMs);
    Recorder recorder(file, narrator.size());
    if (!recorder.isRunning()) {
        QTextStream(stderr) << "The tutorial could not be recorded with ffmpeg." << Qt::endl;
        return false;
    }
    const bool played = narrator.playAll();
    return recorder.finish() && played;
}
