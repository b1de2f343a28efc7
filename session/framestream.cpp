// SPDX-License-Identifier: MIT
#include "session/framestream.h"

#include <utility>

namespace session {

const QList<frameData> &FrameStream::take(const QByteArray &bytes)
{
    QByteArray data = std::exchange(m_remainder, {});
    if (!data.startsWith(protocol::kSync0)) {
        data.clear();
        m_scan.reset();
    }
    m_scan.extract(data.append(bytes), m_frames, m_remainder, m_partialCount);
    return m_frames;
}

void FrameStream::clear()
{
    m_remainder.clear();
}

} // namespace session
