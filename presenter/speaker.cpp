// SPDX-License-Identifier: MIT
#include "presenter/speaker.h"

#include "app/mainwindow.h"
#include "presenter/mode.h"

#include <QApplication>
#include <QPalette>
#include <QShortcut>

#include <algorithm>

namespace presenter {

namespace {

constexpr int kMostBoxes = 16;
constexpr int kPatienceMs = 15'000; // for one step of a scene

// Boxes that nobody has answered go: a dialog in front would keep a clicker's keys.
void closeBoxes()
{
    QWidget *box = QApplication::activeModalWidget();
    for (int n = 0; box && n < kMostBoxes; ++n, box = QApplication::activeModalWidget())
        box->close();
}

} // namespace

Speaker::Speaker(MainWindow &window, Mode &mode)
    : QObject(&window),
      m_window(window),
      m_mode(mode),
      m_player(window),
      m_curtain(std::make_unique<QWidget>(&window))
{
    setObjectName(QStringLiteral("speaker"));
    m_player.setPatience(kPatienceMs, false);
    m_player.addCall("forget", [this] { m_mode.teller().forget(); });
    m_curtain->setObjectName(QStringLiteral("curtain"));
    m_curtain->setAutoFillBackground(true);
    m_curtain->setPalette(QPalette(Qt::black));
    m_curtain->hide();
    m_stay.setSingleShot(true);
    m_idle.setSingleShot(true);
    addKey(Qt::Key_PageDown, "Script: next step", &Speaker::next);
    addKey(Qt::Key_PageUp, "Script: step before", &Speaker::back);
    addKey(Qt::Key_Period, "Script: dark or light", &Speaker::blank);
    addKey(Qt::Key_Home, "Script: begin anew", &Speaker::anew);
    connect(&m_player, &script::Player::ended, this, &Speaker::whenTaken);
    connect(&m_stay, &QTimer::timeout, this, &Speaker::afterScene);
    connect(&m_idle, &QTimer::timeout, this, &Speaker::anew);
    connect(&mode, &Mode::ended, this, &Speaker::leave);
}

Speaker::~Speaker() = default;

void Speaker::addKey(Qt::Key keys, const char *what, void (Speaker::*work)())
{
    auto *key = new QShortcut(QKeySequence(keys), &m_window);
    key->setWhatsThis(QLatin1String(what));
    key->setEnabled(false);
    key->setAutoRepeat(false);
    connect(key, &QShortcut::activated, this, work);
    m_keys.append(key);
}

QString Speaker::begin(const QString &path)
{
    m_player.stop(); // its steps go with the file
    QString trouble = m_script.load(path);
    if (!trouble.isEmpty())
        return trouble;
    enter();
    m_mode.teller().forget();
    show(0);
    return {};
}

void Speaker::enter()
{
    m_speaking = true;
    for (QShortcut *key : qAsConst(m_keys))
        key->setEnabled(true);
    m_mode.begin();
}

QString Speaker::playByItself(const QString &path, int rounds)
{
    m_alone = true;
    m_rounds = 0;
    m_roundsWanted = rounds;
    qApp->installEventFilter(this);
    return begin(path);
}

void Speaker::end()
{
    m_alone = false;
    qApp->removeEventFilter(this);
    m_idle.stop();
    leave();
}

void Speaker::leave()
{
    if (!m_speaking)
        return;
    m_speaking = false;
    m_stay.stop();
    m_player.stop();
    m_curtain->hide();
    m_scene = -1;
    for (QShortcut *key : qAsConst(m_keys))
        key->setEnabled(false);
    m_mode.banner().setCaption({}, {});
    m_mode.end();
}

void Speaker::show(int scene, std::vector<script::Step> before)
{
    const auto &scenes = m_script.scenes();
    if (!m_speaking || scenes.empty())
        return;
    const int last = static_cast<int>(scenes.size()) - 1;
    m_scene = std::clamp(scene, 0, last);
    m_curtain->hide();
    m_stay.stop();
    const Scene &now = scenes[static_cast<std::size_t>(m_scene)];
    m_mode.banner().setCaption(now.caption.isEmpty() ? now.title : now.caption,
                               m_scene < last ? scenes[static_cast<std::size_t>(m_scene) + 1].title
                                              : QStringLiteral("the end"));
    m_steps = std::move(before);
    m_steps.insert(m_steps.end(), now.steps.begin(), now.steps.end());
    m_player.start(m_steps);
}

void Speaker::next()
{
    if (m_scene + 1 < static_cast<int>(m_script.scenes().size()))
        show(m_scene + 1);
}

void Speaker::back()
{
    show(m_scene - 1);
}

void Speaker::blank()
{
    m_curtain->setGeometry(m_window.rect());
    m_curtain->raise();
    m_curtain->setVisible(m_curtain->isHidden());
}

bool Speaker::isBlank() const
{
    return m_curtain->isVisible();
}

void Speaker::anew()
{
    m_idle.stop();
    if (m_alone)
        enter(); // whoever was there may have left
    if (!m_speaking)
        return;
    m_player.stop();
    closeBoxes();
    show(0, {{script::Act::Restart}, {script::Act::Call, "forget"}});
}

void Speaker::whenTaken(bool whole)
{
    emit sceneTaken(m_scene, whole);
    if (m_alone && !m_idle.isActive() && m_speaking)
        m_stay.start(m_stayMs > 0 ? m_stayMs : m_script.scenes()[static_cast<std::size_t>(m_scene)].seconds * 1000);
}

void Speaker::afterScene()
{
    if (m_scene + 1 < static_cast<int>(m_script.scenes().size())) {
        next();
        return;
    }
    emit roundEnded(++m_rounds);
    if (m_roundsWanted == 0 || m_rounds < m_roundsWanted)
        anew();
}

// Only what comes from the user's own hands. A shortcut's key is no key press, but was asked for as one.
bool Speaker::eventFilter(QObject *watched, QEvent *event)
{
    const bool touched = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress
        || event->type() == QEvent::ShortcutOverride || event->type() == QEvent::Wheel;
    if (touched && event->spontaneous()) {
        m_stay.stop();
        m_player.stop();
        m_idle.start(m_script.idleSeconds() * 1000);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace presenter
