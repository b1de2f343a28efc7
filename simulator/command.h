// SPDX-License-Identifier: MIT
// A command of the board: its name, its help and its work.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace simulator {

struct Command {
    /// `words` are the literal ones that a line begins with ("cmu 13"); a command without help is not listed.
    Command(const char *words, const char *help, std::function<void()> run);
    /// `arguments` names what follows, a word for each argument ("<monitor> <upper> <lower>"); one in brackets may be
    /// missing ("[<data>]"), "..." stands for any number.
    Command(const char *words, const char *arguments, const char *help, std::function<void(const QStringList &)> run);

    /// Words and arguments, "cmu 13 <monitor>".
    QString usage() const { return QString(words + QLatin1Char(' ') + arguments).trimmed(); }
    bool takes(int count) const { return count >= minCount && count <= maxCount; }

    QString words;
    QString arguments;
    QString help;
    int minCount = 0;
    int maxCount = 0;
    std::function<void(const QStringList &)> run;
};

} // namespace simulator
