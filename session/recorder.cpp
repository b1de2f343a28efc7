// SPDX-License-Identifier: MIT
#include "session/recorder.h"

#include "protocol/sys.h"
#include "session/pcapng.h"

namespace session {

namespace {

bool isFirmwareVersion(const frameData &frame)
{
    return frame.moduleId == static_cast<quint8>(protocol::ModuleId::Sys)
        && frame.dataType == protocol::sys::FirmwareVersionReport;
}

QString versionText(const QByteArray &payload)
{
    const auto firmware = protocol::sys::decodeFirmwareVersion(payload);
    return QStringLiteral("%1 of %2/%3/%4")
        .arg(static_cast<double>(firmware.version), 0, 'f', 2)
        .arg(firmware.year)
        .arg(firmware.month)
        .arg(firmware.day);
}

} // namespace

void Recorder::opened(const QString &port)
{
    auto index = m_ports.indexOf(port);
    if (index < 0) {
        index = m_ports.size();
        m_ports.append(port);
    }
    m_port = static_cast<quint32>(index);
    m_frames.clear();
    note(NoteKind::Opened, port, now());
}

void Recorder::received(const QByteArray &bytes)
{
    QStringList comments;
    for (const frameData &frame : m_frames.take(bytes)) {
        if (!isFirmwareVersion(frame))
            continue;
        m_firmware = versionText(frame.data);
        comments = QStringList(commentOf({NoteKind::Firmware, m_firmware}));
    }
    put(Direction::Received, bytes, comments);
}

void Recorder::sent(const QByteArray &bytes)
{
    put(Direction::Sent, bytes);
}

void Recorder::closed()
{
    note(NoteKind::Closed, {}, now());
}

void Recorder::lost(const QString &reason)
{
    note(NoteKind::Lost, reason, now());
}

void Recorder::mark(const QString &word, qint64 at)
{
    note(NoteKind::Mark, word, at);
}

void Recorder::note(NoteKind kind, const QString &text, qint64 time)
{
    m_sink({time, Direction::None, {}, QStringList(commentOf({kind, text})), m_port});
}

void Recorder::put(Direction direction, const QByteArray &bytes, const QStringList &comments)
{
    const qint64 time = now();
    if (bytes.size() <= kLargestPacket) {
        m_sink({time, direction, bytes, comments, m_port});
        return;
    }
    for (int at = 0; at < bytes.size(); at += kLargestPacket)
        m_sink({time, direction, bytes.mid(at, kLargestPacket), at == 0 ? comments : QStringList(), m_port});
}

} // namespace session
