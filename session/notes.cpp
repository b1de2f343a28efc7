// SPDX-License-Identifier: MIT
#include "session/notes.h"

#include <iterator>

namespace session {

namespace {

struct Row {
    NoteKind kind;
    const char *word;
    const char *prefix;
};

// clang-format off
constexpr Row rows[] = {
    {NoteKind::Opened,   "opened",   "opened "},
    {NoteKind::Closed,   "closed",   "closed"},
    {NoteKind::Lost,     "lost",     "lost: "},
    {NoteKind::Mark,     "mark",     "mark: "},
    {NoteKind::Firmware, "firmware", "firmware "},
    {NoteKind::Other,    "comment",  ""},
};
// clang-format on
static_assert(std::size(rows) == static_cast<std::size_t>(NoteKind::Other) + 1);

QString inOneLine(QString text)
{
    for (QChar &character : text) {
        if (character.category() == QChar::Other_Control)
            character = QLatin1Char(' ');
    }
    return text;
}

} // namespace

QString commentOf(const Note &note)
{
    return QLatin1String(rows[static_cast<int>(note.kind)].prefix) + inOneLine(note.text);
}

Note noteOf(const QString &comment)
{
    for (const Row &row : rows) {
        const QLatin1String prefix(row.prefix);
        const bool whole = row.kind != NoteKind::Closed || comment == prefix;
        if (whole && comment.startsWith(prefix))
            return {row.kind, comment.mid(prefix.size())};
    }
    return {};
}

QString kindText(NoteKind kind)
{
    return QLatin1String(rows[static_cast<int>(kind)].word);
}

} // namespace session
