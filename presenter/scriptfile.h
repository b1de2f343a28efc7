// SPDX-License-Identifier: MIT
// A speaker's script, read from a TOML file; Presentation/ten-minutes.toml shows all that there is.
#pragma once

#include "presenter/script.h"

#include <QByteArray>
#include <QString>

#include <deque>
#include <vector>

namespace presenter {

struct Scene {
    QString title;
    QString caption;
    int seconds = 20; // that it stays when the script plays by itself
    std::vector<script::Step> steps;
};

class ScriptFile
{
public:
    ScriptFile() = default;
    Q_DISABLE_COPY(ScriptFile)

    /// Reads the file anew. Returns what is wrong with it, "FILE:LINE: ...", for people; then there are no scenes.
    QString load(const QString &path);

    const QString &title() const { return m_title; }
    const std::vector<Scene> &scenes() const { return m_scenes; }
    /// After the last touch, then a script that plays by itself begins anew.
    int idleSeconds() const { return m_idleSeconds; }

private:
    friend class ScriptReader;
    static constexpr int kIdleSeconds = 60;

    QString m_title;
    std::vector<Scene> m_scenes;
    int m_idleSeconds = kIdleSeconds;
    std::deque<QByteArray> m_words; // that the steps name
};

} // namespace presenter
