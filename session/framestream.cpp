// SPDX-License-Identifier: MIT
#include "session/framestream.h"

#include <utility>

namespace session {

const QList<frameData> &FrameStream::take(const QByteArray &bytes)
{
    const QByteArray data = m_pending ? std::exchange(m_remainder, {}).append(bytes) : bytes;
    m_pending = protocol::extractFrames(data, m_frames, m_remainder, m_partialCount);
    return m_frames;
}

void FrameStream::clear()
{
    m_remainder.clear();
    m_pending = false;
}

} // namespace session
