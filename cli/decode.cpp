// SPDX-License-Identifier: MIT
// decode: a recording as reports, commands and notes.
#include "cli/complain.h"
#include "cli/exitcode.h"
#include "cli/printer.h"
#include "cli/recordingfile.h"
#include "cli/settings.h"
#include "cli/verbs.h"
#include "session/framestream.h"
#include "session/pcapng.h"
#include "session/recordingwriter.h"

namespace {

class Decoding
{
public:
    explicit Decoding(Printer &printer) : m_printer(printer) {}

    void take(const session::PacketView &packet)
    {
        for (const std::string_view comment : packet.comments)
            take(session::noteOf(QString::fromUtf8(comment.data(), static_cast<int>(comment.size()))), packet.time);
        const auto bytes = QByteArray::fromRawData(packet.bytes.data(), static_cast<int>(packet.bytes.size()));
        if (packet.direction == session::Direction::Sent)
            m_printer.sent(bytes, packet.time);
        else if (packet.direction == session::Direction::Received)
            for (const frameData &frame : m_frames.take(bytes))
                m_printer.frame(frame, packet.time);
    }

private:
    void take(const session::Note &note, qint64 time)
    {
        if (note.kind == session::NoteKind::Opened)
            m_frames.clear();
        m_printer.note(note, time);
    }

    Printer &m_printer;
    session::FrameStream m_frames;
};

} // namespace

int verbs::decode(const Settings &settings)
{
    RecordingFile file;
    if (!file.open(settings))
        return kUsageOrFile;
    session::Reader &reader = file.reader();
    session::RecordingWriter copy;
    QObject::connect(&copy, &session::RecordingWriter::failed, &copy, &complain);
    Printer printer(settings);
    Decoding decoding(printer);
    bool copied = settings.record.isEmpty();
    for (session::PacketView packet; reader.next(packet);) {
        decoding.take(packet);
        if (settings.record.isEmpty())
            continue;
        if (!copied)
            copied = copy.open(settings.record, QStringLiteral("safety-workbench-cli " WORKBENCH_VERSION),
                               reader.ports().join(QLatin1String(", ")));
        copy.add(packet.copied());
    }
    copy.flush();
    const bool whole = file.isWhole();
    const bool good = printer.flush() && whole && copy.trouble().isEmpty();
    return good ? kAsAsked : kUsageOrFile;
}
