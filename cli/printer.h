// SPDX-License-Identifier: MIT
// Reports, commands and notes, for people or as JSON lines.
#pragma once

#include "cli/jsonline.h"
#include "cli/output.h"
#include "protocol/field.h"
#include "protocol/frame.h"
#include "session/notes.h"
#include "session/packet.h"

struct Settings;

class Printer
{
public:
    enum class Times { Shown, Hidden };

    explicit Printer(const Settings &settings, Times times = Times::Shown);

    bool isJson() const { return m_json; }

    /// A report, or a frame that no module is known for. `time` in nanoseconds since 1970.
    void frame(const frameData &frame, qint64 time);
    /// A command line that was sent.
    void sent(const QByteArray &bytes, qint64 time);
    void note(const session::Note &note, qint64 time);
    /// A finding of the tool's own: the object, or the words for people.
    void finding(JsonLine &json, const QString &words);

    /// Flushes the output. False once standard output has failed.
    bool flush();

private:
    enum class Ink { Plain, Module, Fault, Command, Note };

    QByteArray head(qint64 time, char direction) const;
    QByteArray inked(const QByteArray &text, Ink ink) const;
    void plainFrame(const frameData &frame, qint64 time);
    void jsonFrame(const frameData &frame, qint64 time);

    Output m_output;
    bool m_json;
    bool m_times;
    bool m_colour;
};

/// {"id":3,"enabled":true,...}: a value that has words is followed by them under its name and "_text".
QByteArray fieldsJson(const QVector<protocol::Field> &fields);

/// "id 3, enabled true": the fields that are no records.
QString pairsText(const QVector<protocol::Field> &fields);

/// Text of the board in one line, safe to show: control characters become blanks or "\x1B".
QString shownText(const QString &text);
