// SPDX-License-Identifier: MIT
// A recording in a file or a pipe, written while it goes on.
#pragma once

#include "session/packet.h"

#include <QFile>
#include <QObject>
#include <QTimer>

namespace session {

/// Packets are handed to the system every 100 ms at the latest, so that a killed program loses no more.
class RecordingWriter : public QObject
{
    Q_OBJECT

public:
    static constexpr int kWriteThroughMs = 100;

    explicit RecordingWriter(QObject *parent = nullptr);
    ~RecordingWriter() override;

    /// Begins a recording of `port` in the file, "-" for standard output. False on failure: see trouble().
    bool open(const QString &path, const QString &program, const QString &port);
    void add(const Packet &packet);
    /// Writes the packets that are still queued.
    void flush();
    /// Why no more is written, for people; empty while all is well.
    QString trouble() const { return m_trouble; }

signals:
    /// Once: from now on nothing is written.
    void failed(const QString &trouble);

private:
    void fail();

    QFile m_file;
    QByteArray m_waiting;
    QTimer m_timer;
    QString m_name;
    QString m_trouble;
};

} // namespace session
