// SPDX-License-Identifier: MIT
#include "demo/subtitles.h"

namespace {

// "00:01:02,345"
QString timeText(qint64 ms)
{
    const auto two = [](qint64 number) { return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0')); };
    return QStringLiteral("%1:%2:%3,%4")
        .arg(two(ms / 3'600'000), two(ms / 60'000 % 60), two(ms / 1000 % 60))
        .arg(ms % 1000, 3, 10, QLatin1Char('0'));
}

// What ffmpeg's metadata gives a meaning to.
QString escaped(const QString &text)
{
    QString safe;
    for (const QChar letter : text) {
        if (QStringLiteral("=;#\\\n").contains(letter))
            safe += QLatin1Char('\\');
        safe += letter;
    }
    return safe;
}

} // namespace

void Subtitles::add(std::vector<Entry> &entries, qint64 ms, const QString &text)
{
    if (!entries.empty() && entries.back().to < 0)
        entries.back().to = ms;
    if (!text.isEmpty())
        entries.push_back({ms, -1, text});
}

void Subtitles::say(qint64 ms, const QString &text)
{
    add(m_said, ms, text);
}

void Subtitles::beginChapter(qint64 ms, const QString &title)
{
    add(m_chapters, ms, title);
}

void Subtitles::end(qint64 ms)
{
    add(m_said, ms, {});
    add(m_chapters, ms, {});
}

QByteArray Subtitles::srt() const
{
    QString text;
    int number = 0;
    for (const Entry &entry : m_said)
        text += QStringLiteral("%1\n%2 --> %3\n").arg(++number).arg(timeText(entry.from), timeText(entry.to))
            + entry.text + QStringLiteral("\n\n");
    return text.toUtf8();
}

QByteArray Subtitles::chapters() const
{
    QString text = QStringLiteral(";FFMETADATA1\n");
    for (const Entry &entry : m_chapters)
        text += QStringLiteral("[CHAPTER]\nTIMEBASE=1/1000\nSTART=%1\nEND=%2\ntitle=%3\n")
                    .arg(entry.from)
                    .arg(entry.to)
                    .arg(escaped(entry.text));
    return text.toUtf8();
}
