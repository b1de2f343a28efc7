// SPDX-License-Identifier: MIT
#include "demo/tutorial.h"

#include "app/mainwindow.h"
#include "demo/recorder.h"
#include "demo/stage.h"
#include "demo/subtitles.h"
#include "demo/tutorialscript.h"
#include "link/commandchannel.h"
#include "presenter/driver.h"

#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTabBar>
#include <QTextStream>

#include <utility>

namespace {

using script::Act;
using script::Step;
using tutorial::Chapter;

constexpr QSize kFilmedWindow(1920, 900); // with the captions beneath it 16:9
constexpr int kCardMs = 5000;
constexpr int kReadMs = 1100; // to find the caption; then so much a character
constexpr int kReadMsPerCharacter = 38;
constexpr int kAfterMs = 700;
constexpr int kKeyMs = 120;

/// Carries steps out as a hand would, and says what they are about.
class Narrator : public script::Player
{
public:
    explicit Narrator(MainWindow &window) : Player(window), m_stage(window) {}

    QSize size() const { return m_stage.size(); }
    bool playAll();
    /// From now on the video runs.
    void startClock() { m_clock.start(); }
    /// Subtitles and chapters beside the video. False where they cannot be written.
    bool writeBeside(const QString &video);

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

    void showCard(const QString &title, const QStringList &lines, int ms);

    Stage m_stage;
    Subtitles m_subtitles;
    QElapsedTimer m_clock;
    QString m_heading;
    QString m_caption;
    const Step *m_introduced = nullptr;
};

bool Narrator::playAll()
{
    showCard(QStringLiteral("Safety Workbench"),
             {QStringLiteral("A tour of five faults and two protections"),
              {},
              QStringLiteral("How the microcontroller QM7D305 notices that something is wrong,"),
              QStringLiteral("and what this window shows of it.")},
             kCardMs);
    if (!play(tutorial::prologue, QString::fromUtf8(tutorial::prologue.title)))
        return false;
    QStringList caught;
    for (const Chapter &chapter : tutorial::chapters) {
        const QString title = QString::fromUtf8(chapter.title);
        if (!play(chapter, QStringLiteral("%1 of 7\n%2").arg(caught.size() + 1).arg(title)))
            return false;
        caught << QStringLiteral("%1:  %2,  %3 µs").arg(title, QString::fromUtf8(chapter.catcher), detectionTime());
    }
    int number = caught.size();
    for (const Chapter &chapter : tutorial::securityChapters) {
        const QString title = QString::fromUtf8(chapter.title);
        if (!play(chapter, QStringLiteral("%1 of 7\n%2").arg(++number).arg(title)))
            return false;
    }
    showCard(QStringLiteral("Five faults, all caught"),
             caught + QStringList{{}, QStringLiteral("Every page has more to try. Help > Manual explains them all.")},
             kCardMs + kCardMs / 2);
    return true;
}

void Narrator::showCard(const QString &title, const QStringList &lines, int ms)
{
    m_subtitles.beginChapter(m_clock.elapsed(), title);
    m_subtitles.say(m_clock.elapsed(),
                    title + QLatin1Char('\n')
                        + QStringList(lines).filter(QRegularExpression(".")).join(QLatin1Char('\n')));
    m_stage.showCard(title, lines);
    delayMs(ms);
    m_stage.hideCard();
}

bool Narrator::writeBeside(const QString &video)
{
    m_subtitles.end(m_clock.elapsed());
    const auto write = [](const QString &path, const QByteArray &bytes) {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
    };
    return write(video + QStringLiteral(".srt"), m_subtitles.srt())
        && write(video + QStringLiteral(".chapters"), m_subtitles.chapters());
}

bool Narrator::play(const Chapter &chapter, const QString &heading)
{
    m_heading = heading;
    m_subtitles.beginChapter(m_clock.elapsed(), QString::fromUtf8(chapter.title));
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
    m_subtitles.say(m_clock.elapsed(), m_caption);
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
    window.resize(kFilmedWindow);
    Narrator narrator(window);
    delayMs(kAfterMs);
    Recorder recorder(file, narrator.size());
    if (!recorder.isRunning()) {
        QTextStream(stderr) << "The tutorial could not be recorded with ffmpeg." << Qt::endl;
        return false;
    }
    narrator.startClock();
    const bool played = narrator.playAll();
    return recorder.finish() && played && narrator.writeBeside(file);
}
