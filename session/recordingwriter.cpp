// SPDX-License-Identifier: MIT
#include "session/recordingwriter.h"

#include "session/pcapng.h"

#include <cstdio>

namespace session {

namespace {

// So much is handed over without waiting for the timer.
constexpr int kAtOnce = 256 * 1024;

} // namespace

RecordingWriter::RecordingWriter(QObject *parent) : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(kWriteThroughMs);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &RecordingWriter::flush);
}

RecordingWriter::~RecordingWriter()
{
    flush();
}

bool RecordingWriter::open(const QString &path, const QString &program, const QString &port)
{
    const bool toPipe = path == QLatin1String("-");
    m_name = toPipe ? QStringLiteral("standard output") : path;
    m_file.setFileName(path);
    const bool opened = toPipe ? m_file.open(stdout, QIODevice::WriteOnly | QIODevice::Unbuffered)
                               : m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
    if (!opened) {
        fail();
        return false;
    }
    m_waiting = encodeStart(program, {port});
    flush();
    return m_trouble.isEmpty();
}

void RecordingWriter::add(const Packet &packet)
{
    if (!m_file.isOpen())
        return;
    appendPacket(m_waiting, packet);
    if (m_waiting.size() >= kAtOnce)
        flush();
    else if (!m_timer.isActive())
        m_timer.start();
}

void RecordingWriter::flush()
{
    m_timer.stop();
    while (m_file.isOpen() && !m_waiting.isEmpty()) {
        const qint64 count = m_file.write(m_waiting);
        if (count <= 0)
            fail();
        else
            m_waiting.remove(0, static_cast<int>(count));
    }
}

void RecordingWriter::fail()
{
    m_trouble = QStringLiteral("%1: %2").arg(m_name, m_file.errorString());
    m_file.close();
    m_waiting.clear();
    emit failed(m_trouble);
}

} // namespace session
