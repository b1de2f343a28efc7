// SPDX-License-Identifier: MIT
// Records the display with ffmpeg.
#pragma once

#include <QProcess>
#include <QSize>
#include <QString>

class Recorder
{
public:
    /// Starts to record the display's top left part of this size in `file`; isRunning() tells whether that worked.
    Recorder(const QString &file, const QSize &size);

    bool isRunning() const { return m_process.state() == QProcess::Running; }
    /// Ends the recording. False where it did not succeed; what ffmpeg has to say goes to standard error.
    bool finish();

private:
    QProcess m_process;
};
