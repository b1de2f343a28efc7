// SPDX-License-Identifier: MIT
#include "timeline/exports.h"

#include "session/clock.h"
#include "protocol/fccu.h"
#include "timeline/picture.h"

#include <QBuffer>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSaveFile>
#include <QSvgGenerator>

#include <algorithm>
#include <charconv>
#include <functional>
#include <type_traits>

namespace timeline {

namespace {

constexpr double kSharpness = 2;
constexpr char kHeading[] = "time,kind,mechanism,fault_id,detection_us,source,text\r\n";

// "2026-11-21T14:03:22.123456789Z"
QString timeText(qint64 time)
{
    return QDateTime::fromSecsSinceEpoch(time / session::kPerSecond, Qt::UTC)
               .toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss."))
        + QStringLiteral("%1Z").arg(time % session::kPerSecond, 9, 10, QLatin1Char('0'));
}

QString quoted(QString text)
{
    return QLatin1Char('"') + text.trimmed().replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

// The shortest that reads as the same number again.
QString numberText(float number)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    return QString::fromLatin1(digits, static_cast<int>(end - digits));
}

QString lineOf(const Fault &fault)
{
    const auto words = protocol::fccu::recordedText(fault.id);
    const QStringList cells{timeText(fault.time),      QStringLiteral("fault"), nameOfBand(fault.band),
                            QString::number(fault.id), numberText(fault.us),    quoted(words.source),
                            quoted(words.description)};
    return cells.join(QLatin1Char(','));
}

QString lineOf(const Happening &one)
{
    return timeText(one.time) + QStringLiteral(",event,%1,,,,").arg(nameOfBand(one.band)) + quoted(one.text);
}

QString lineOf(const Gap &gap)
{
    return timeText(gap.from) + QStringLiteral(",no line,Chip,,,,") + quoted(gap.reason);
}

// The latest of each list that is not later than what the others have left comes first.
void writeLines(const Chronicle &chronicle, const std::function<void(const QString &)> &write)
{
    std::size_t happening = 0;
    std::size_t gap = 0;
    const auto writeUpTo = [&](qint64 time) {
        const auto &happenings = chronicle.happenings();
        const auto &gaps = chronicle.gaps();
        for (;;) {
            const bool hasGap = gap < gaps.size() && gaps[gap].from <= time;
            const bool hasOther = happening < happenings.size() && happenings[happening].time <= time;
            if (hasOther && (!hasGap || happenings[happening].time <= gaps[gap].from))
                write(lineOf(happenings[happening++]));
            else if (hasGap)
                write(lineOf(gaps[gap++]));
            else
                return;
        }
    };
    for (const Fault &fault : chronicle.faults()) {
        writeUpTo(fault.time);
        write(lineOf(fault));
    }
    writeUpTo(chronicle.last());
}

template <class File> QString writtenTo(const QString &path, const std::function<void(QIODevice &)> &write)
{
    File file(path);
    bool good = file.open(QIODevice::WriteOnly);
    if (good) {
        write(file);
        good = file.flush() && file.error() == QFileDevice::NoError;
    }
    if constexpr (std::is_same_v<File, QSaveFile>)
        good = good && file.commit();
    return good ? QString() : path + QStringLiteral(": ") + file.errorString();
}

// What is there is replaced once all is written; a device or a pipe is written to, never replaced.
QString stored(const QString &path, const std::function<void(QIODevice &)> &write)
{
    const QFileInfo target(path);
    const bool replaceable = !target.exists() || target.isFile();
    return replaceable ? writtenTo<QSaveFile>(path, write) : writtenTo<QFile>(path, write);
}

void drawSvg(QIODevice &file, const Picture &picture, const QSize &size)
{
    QSvgGenerator generator;
    generator.setOutputDevice(&file);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(), size));
    generator.setTitle(QStringLiteral("Time line"));
    QPainter painter(&generator);
    picture.paint(painter);
}

void drawPng(QIODevice &file, const Picture &picture, const QSize &size)
{
    QImage image(size * kSharpness, QImage::Format_RGB32);
    image.setDevicePixelRatio(kSharpness);
    QPainter painter(&image);
    picture.paint(painter);
    painter.end();
    image.save(&file, "PNG");
}

} // namespace

QString saveLog(const QString &path, const Chronicle &chronicle)
{
    return stored(path, [&chronicle](QIODevice &file) {
        file.write(kHeading);
        writeLines(chronicle, [&file](const QString &line) { file.write(line.toUtf8() + "\r\n"); });
    });
}

QString savePicture(const QString &path, const Chronicle &chronicle, const Span &span, const QSize &size, int selected)
{
    const QSize whole = size.expandedTo(Picture::kLeast);
    const Picture picture(chronicle, span, whole, selected);
    const bool svg = path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive);
    return stored(path, [&](QIODevice &file) {
        // The generator closes what it writes to.
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        svg ? drawSvg(buffer, picture, whole) : drawPng(buffer, picture, whole);
        file.write(buffer.data());
    });
}

} // namespace timeline
