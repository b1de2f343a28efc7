// SPDX-License-Identifier: MIT
#include "console/textframes.h"

#include "protocol/extraction.h"

#include <QtEndian>

#include <algorithm>
#include <bit>

using namespace protocol;

namespace {

// Skipped of another module's frame, whose payload is searched as well: sync pair, tag and module identifier.
constexpr int kSkipped = 5;

} // namespace

QStringList TextFrames::take(const QByteArray &read)
{
    m_bytes += read;
    QStringList texts;
    if (size() - firstUnread() < kMinParsedSize)
        return texts;
    if (completesOpen()) {
        const auto open = m_open;
        forgetOpen();
        for (const Frame &frame : open)
            settle(frame, texts);
    }
    dropOverdue();
    for (Frame frame; findFrame(frame);)
        settle(frame, texts);
    dropRead();
    return texts;
}

bool TextFrames::endsWell(qint64 end) const
{
    return bytesAt(end)[-2] == kEnd0 && bytesAt(end)[-1] == kEnd1;
}

bool TextFrames::completesOpen()
{
    bool completes = false;
    for (qint64 end = m_checked + 1; !m_open.empty() && !completes && end <= size(); ++end)
        completes = endsAt(end) > 0 && endsWell(end);
    m_checked = size();
    return completes;
}

quint16 &TextFrames::endsAt(qint64 end)
{
    return m_endsAt[static_cast<std::size_t>(end) & (m_endsAt.size() - 1)];
}

void TextFrames::open(Frame frame)
{
    m_open.push_back(frame);
    const auto ahead = static_cast<std::size_t>(frame.end - size());
    if (ahead < m_endsAt.size()) {
        ++endsAt(frame.end);
        return;
    }
    m_endsAt.assign(std::bit_ceil(ahead + 1), 0);
    for (const Frame &open : m_open)
        ++endsAt(open.end);
}

void TextFrames::forgetOpen()
{
    for (const Frame &frame : m_open)
        endsAt(frame.end) = 0;
    m_open.clear();
}

// Frames that turned out to be none. Only the first ones keep bytes from being dropped; the others wait behind them.
void TextFrames::dropOverdue()
{
    for (; !m_open.empty() && m_open.front().end <= size(); m_open.pop_front())
        --endsAt(m_open.front().end);
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

// Takes a complete frame, keeps an incomplete one, ignores other bytes.
void TextFrames::settle(Frame frame, QStringList &texts)
{
    const bool insideText = frame.at < m_textEnd;
    const bool acrossEnd = frame.at < m_otherEnd && frame.end > m_otherEnd;
    if (insideText || acrossEnd)
        return;
    if (frame.end > size()) {
        open(frame);
    } else if (endsWell(frame.end)) {
        accept(frame, texts);
    }
}

void TextFrames::accept(Frame frame, QStringList &texts)
{
    forgetOpen();
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
