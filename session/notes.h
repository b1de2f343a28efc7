// SPDX-License-Identifier: MIT
// The words of a recording's comments: what happened to the port, and the marks that people set.
#pragma once

#include <QString>

namespace session {

enum class NoteKind { Opened, Closed, Lost, Mark, Firmware, Other };

struct Note {
    NoteKind kind = NoteKind::Other;
    QString text; // the port, the reason, the mark's word, the version; of Other the whole comment

    bool operator==(const Note &) const = default;
};

/// "opened /dev/ttyUSB0", "closed", "lost: no such device", "mark: second fault", "firmware 1.20 of 2026/11/3". Control
/// characters, line breaks among them, become blanks.
QString commentOf(const Note &note);

/// The note that a comment is; comments by others are Other.
Note noteOf(const QString &comment);

/// "opened", "mark", ...: one word per kind; of Other "comment".
QString kindText(NoteKind kind);

} // namespace session
