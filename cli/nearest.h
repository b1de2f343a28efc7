// SPDX-License-Identifier: MIT
// A misspelt word and the one that was meant.
#pragma once

#include <QString>
#include <QStringList>

/// The word of `words` that takes the fewest letters to be added, left out, changed or swapped with their neighbour,
/// whatever the case; empty where every word takes more than a third of its letters (and more than one).
QString nearest(const QString &word, const QStringList &words);

/// "no verb \"stauts\"; did you mean \"status\"?", or a list of all words where none is near.
QString unknownText(const QString &kind, const QString &word, const QStringList &words);
