// SPDX-License-Identifier: MIT
// Walks through a speaker's script: at a clicker's pace, or by itself.
#pragma once

#include "presenter/scriptfile.h"

#include <QObject>
#include <QTimer>

#include <memory>

class MainWindow;
class QShortcut;

namespace presenter {

class Mode;

class Speaker : public QObject
{
    Q_OBJECT

public:
    Speaker(MainWindow &window, Mode &mode);
    ~Speaker() override;

    /// Begins the script in presenter mode. Returns what is wrong with the file, for people; then nothing has happened.
    QString begin(const QString &path);
    /// The same, without hands: each scene stays for its time, and behind the last one all begins anew, `rounds` times; 0:
    /// without end. A touch stops it, and may end presenter mode, until nobody has touched anything for a while.
    QString playByItself(const QString &path, int rounds = 0);
    /// How long each scene stays when the script plays by itself, in place of its own time; 0: its own time.
    void setStay(int milliseconds) { m_stayMs = milliseconds; }
    void end();

    void next();
    void back();
    /// The first scene; board and window as at the start.
    void anew();
    /// Darkens the screen, or lights it again.
    void blank();

    bool isSpeaking() const { return m_speaking; }
    /// Number of the scene, from 0 on; -1 before the first.
    int scene() const { return m_scene; }
    const ScriptFile &script() const { return m_script; }
    bool isBlank() const;

signals:
    /// The scene's steps have been taken, or one of them could not be.
    void sceneTaken(int scene, bool whole);
    /// A script that plays by itself has come to its end.
    void roundEnded(int rounds);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addKey(Qt::Key keys, const char *what, void (Speaker::*work)());
    void show(int scene, std::vector<script::Step> before = {});
    void whenTaken(bool whole);
    void afterScene();
    void enter();
    void leave();

    MainWindow &m_window;
    Mode &m_mode;
    ScriptFile m_script;
    script::Player m_player;
    std::vector<script::Step> m_steps; // of the scene
    QList<QShortcut *> m_keys;         // while it speaks
    std::unique_ptr<QWidget> m_curtain;
    QTimer m_stay;
    QTimer m_idle;
    int m_scene = -1;
    int m_rounds = 0;
    int m_roundsWanted = 0;
    int m_stayMs = 0;
    bool m_speaking = false;
    bool m_alone = false;
};

} // namespace presenter
