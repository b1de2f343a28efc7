// SPDX-License-Identifier: MIT
// Frames out of received bytes, however they are cut.
#pragma once

#include "protocol/extraction.h"

#include <QByteArray>
#include <QList>

namespace session {

class FrameStream
{
public:
    FrameStream();
    /// The frames that `bytes` complete, valid until the next call.
    const QList<frameData> &take(const QByteArray &bytes);
    /// Bytes of a frame that has not ended yet.
    int pending() const { return m_remainder.size(); }
    /// Forgets them: the line was opened anew.
    void clear();

private:
    QList<frameData> m_frames;
    QByteArray m_remainder;
    quint32 m_partialCount = 0;
    protocol::FrameScan m_scan;
};

} // namespace session
