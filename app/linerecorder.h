// SPDX-License-Identifier: MIT
// The flight recorder: the last that passed the line is always in memory, and nothing is written unasked.
#pragma once

#include "session/flightrecorder.h"
#include "session/recorder.h"

#include <QObject>
#include <QWidget>

/// Records the program's line from now on. Ctrl+S in `window` saves, Ctrl+M sets a mark.
class LineRecorder : public QObject
{
    Q_OBJECT

public:
    explicit LineRecorder(QWidget &window);

    /// Writes the packets in memory; returns why that failed, for people, or nothing.
    QString save(const QString &path) const;

    /// Bytes of memory that the packets take.
    qint64 heldBytes() const { return m_packets.size(); }

    /// Asks for a file and saves there. Returns at once; what went wrong is shown in a box.
    void askAndSave();
    /// Asks for a word and keeps it with the moment of the question. Returns at once.
    void askAndMark();

signals:
    void saved(const QString &path);

private:
    void saveOrTell(const QString &path);

    QWidget &m_window;
    session::FlightRecorder m_packets;
    session::Recorder m_recorder;
};
