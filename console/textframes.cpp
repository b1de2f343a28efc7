// SPDX-License-Identifier: MIT
#include "console/textframes.h"

#include "protocol/extraction.h"

#include <QtEndian>

#include <algorithm>
#include <limits>
#include <utility>

using namespace protocol;

namespace {

// Skipped of another module's frame, whose payload is searched as well: sync pair, tag and module identifier.
constexpr int kSkipped = 5;

constexpr qint64 kNever = std::numeric_limits<qint64>::max();

} // namespace

QStringList TextFrames::take(const QByteArray &read)
{
    m_bytes += read;
    QStringList texts;
    if (size() - firstUnread() < kMinParsedSize)
        return texts;
    if (size() >= m_nextEnd) {
        m_nextEnd = kNever;
        const auto open = std::exchange(m_open, {});
        for (const Frame &frame : open)
            settle(frame, texts);
    }
    for (Frame frame; findFrame(frame);)
        settle(frame, texts);
    dropRead();
    return texts;
}

/// The next sync pair with a complete header. Without one the search stops where the next call goes on.
bool TextFrames::findFrame(Frame &found)
{
    for (;;) {
        const int at = m_bytes.indexOf(kSync0, static_cast<int>(m_searched - m_base));
        m_searched = at < 0 ? size() : m_base + at;
        if (size() - m_searched >= 2 && bytesAt(m_searched)[1] != kSync1) {
            ++m_searched;
            continue;
        }
        if (size() - m_searched < kHeaderSize)
            return false;
        found = {m_searched, m_searched + kFrameOverhead + qFromBigEndian<quint16>(bytesAt(m_searched) + 6)};
        m_searched += 2;
        return true;
    }
}

// Takes a complete frame, remembers an incomplete one and ignores what is none.
void TextFrames::settle(Frame frame, QStringList &texts)
{
    const bool insideText = frame.at < m_textEnd;
    const bool acrossEnd = frame.at < m_otherEnd && frame.end > m_otherEnd;
    if (insideText || acrossEnd)
        return;
    if (frame.end > size()) {
        m_open.push_back(frame);
        m_nextEnd = std::min(m_nextEnd, frame.end);
    } else if (bytesAt(frame.end)[-2] == kEnd0 && bytesAt(frame.end)[-1] == kEnd1) {
        accept(frame, texts);
    }
}

void TextFrames::accept(Frame frame, QStringList &texts)
{
    m_open.clear();
    if (static_cast<quint8>(bytesAt(frame.at)[4]) != static_cast<quint8>(ModuleId::Text)) {
        m_otherEnd = std::max(m_otherEnd, frame.end);
        m_searched = std::max(m_searched, frame.at + kSkipped);
        return;
    }
    m_textEnd = m_searched = frame.end;
    const auto length = static_cast<int>(frame.end - frame.at) - kFrameOverhead;
    texts.append(QString::fromLatin1(bytesAt(frame.at) + kHeaderSize, length));
}

// Only when that is more than half of the bytes, so that each byte is moved once on average.
void TextFrames::dropRead()
{
    const auto read = static_cast<int>(firstUnread() - m_base);
    if (read <= m_bytes.size() / 2)
        return;
    m_bytes.remove(0, read);
    m_base += read;
}
