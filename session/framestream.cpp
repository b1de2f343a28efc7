// SPDX-License-Identifier: MIT
#include "session/framestream.h"

namespace session {

namespace {

constexpr int kRoom = 4096; // for most arrivals

} // namespace

FrameStream::FrameStream()
{
    m_remainder.reserve(kRoom); // kept also when it is emptied
}

const QList<frameData> &FrameStream::take(const QByteArray &bytes)
{
    if (!m_remainder.startsWith(protocol::kSync0)) {
        m_remainder.resize(0);
        m_scan.reset();
    }
    m_remainder.append(bytes);
    m_remainder.remove(0, m_scan.advance(m_remainder, m_frames, m_partialCount));
    return m_frames;
}

void FrameStream::clear()
{
    m_remainder.resize(0);
}

} // namespace session
