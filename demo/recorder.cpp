// SPDX-License-Identifier: MIT
#include "demo/recorder.h"

namespace {

constexpr int kStartMs = 15000;
constexpr int kFinishMs = 60000;

} // namespace

Recorder::Recorder(const QString &file, const QSize &size)
{
    // Small enough as it is recorded, at a third of a core: nothing is left to compress afterwards.
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral("ffmpeg"),
                    {"-y",
                     "-loglevel",
                     "error",
                     "-progress",
                     "pipe:1",
                     "-f",
                     "x11grab",
                     "-framerate",
                     "20",
                     "-video_size",
                     QStringLiteral("%1x%2").arg(size.width()).arg(size.height()),
                     "-i",
                     qEnvironmentVariable("DISPLAY"),
                     "-c:v",
                     "libx264",
                     "-preset",
                     "veryfast",
                     "-tune",
                     "animation",
                     "-crf",
                     "24",
                     "-pix_fmt",
                     "yuv420p",
                     file});
    // Its first report of progress says that it records.
    while (!m_process.canReadLine() && m_process.waitForReadyRead(kStartMs)) {}
}

bool Recorder::finish()
{
    m_process.write("q");
    return m_process.waitForFinished(kFinishMs) && m_process.exitStatus() == QProcess::NormalExit
        && m_process.exitCode() == 0;
}
