// SPDX-License-Identifier: MIT
// Frames out of received bytes, however they are cut.
#pragma once

#include "protocol/frame.h"

#include <QByteArray>
#include <QList>

namespace session {

class FrameStream
{
public:
    /// The frames that `bytes` complete, valid until the next call.
    const QList<frameData> &take(const QByteArray &bytes);
    /// Bytes of a frame that has not ended yet.
    int pending() const { return m_pending ? static_cast<int>(m_remainder.size()) : 0; }
    /// Forgets them: the line was opened anew.
    void clear();

private:
    QList<frameData> m_frames;
    QByteArray m_remainder;
    bool m_pending = false;
    quint32 m_partialCount = 0;
};

} // namespace session
