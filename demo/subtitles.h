// SPDX-License-Identifier: MIT
// What is said in a video and when: its subtitles and its chapters, as files for ffmpeg.
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

class Subtitles
{
public:
    /// From this moment on, milliseconds from the video's beginning; what was said before ends here. Nothing is said where
    /// the text is empty.
    void say(qint64 ms, const QString &text);
    void beginChapter(qint64 ms, const QString &title);
    /// The video ends.
    void end(qint64 ms);

    /// SubRip.
    QByteArray srt() const;
    /// Chapters as ffmpeg's metadata.
    QByteArray chapters() const;

private:
    struct Entry {
        qint64 from;
        qint64 to;
        QString text;
    };

    static void add(std::vector<Entry> &entries, qint64 ms, const QString &text);

    std::vector<Entry> m_said;
    std::vector<Entry> m_chapters;
};
