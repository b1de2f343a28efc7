// SPDX-License-Identifier: MIT
#include "session/tape.h"

#include "protocol/fccu.h"
#include "session/framestream.h"
#include "session/notes.h"
#include "session/pcapng.h"

#include <algorithm>

namespace session {

constexpr int kLongestCommand = 256;         // bytes kept of a command without an end
constexpr qint64 kShortestGap = 100'000'000; // of a line that was gone

/// Numbers of the faults that arrive.
class FaultFinder
{
public:
    QStringList take(const QByteArray &bytes)
    {
        QStringList found;
        for (const frameData &frame : m_frames.take(bytes)) {
            if (frame.moduleId == static_cast<quint8>(protocol::ModuleId::Fccu)
                && frame.dataType == protocol::fccu::FaultReport)
                found.append(QString::number(protocol::fccu::decodeFault(frame.data).id));
        }
        return found;
    }

private:
    FrameStream m_frames;
};

void Tape::load(Reader &reader)
{
    FaultFinder finder;
    bool first = true;
    for (PacketView packet; reader.next(packet);) {
        if (first)
            m_start = packet.time;
        first = false;
        add(packet, finder);
    }
    if (!m_turns.empty() && !m_turns.back().there && m_closed)
        m_turns.pop_back();
}

// A tape's times only grow: a mark may stand behind packets that arrived while its word was typed.
void Tape::add(const PacketView &packet, FaultFinder &finder)
{
    const qint64 time = std::max<qint64>(packet.time - m_start, 0);
    for (const std::string_view comment : packet.comments) {
        addNote(time, noteOf(QString::fromUtf8(comment.data(), static_cast<int>(comment.size()))));
    }
    m_length = std::max(m_length, time);
    if (packet.direction == Direction::Sent)
        addCommands(time, packet.copied().bytes);
    if (packet.direction != Direction::Received || packet.bytes.empty())
        return;
    const qint64 after = m_arrivals.empty() ? time : std::max(time, m_arrivals.back().time);
    m_arrivals.push_back({after, m_bytes.size()});
    m_bytes.insert(m_bytes.end(), packet.bytes.begin(), packet.bytes.end());
    const QStringList faults = finder.take(packet.copied().bytes);
    for (const QString &fault : faults)
        m_faults.push_back({after, fault});
}

void Tape::addNote(qint64 time, const Note &note)
{
    if (note.kind == NoteKind::Mark)
        m_marks.push_back({time, note.text});
    const bool opens = note.kind == NoteKind::Opened;
    const bool closes = note.kind == NoteKind::Closed;
    const bool isThere = m_turns.empty() || m_turns.back().there;
    if (opens == isThere || (!opens && !closes && note.kind != NoteKind::Lost))
        return;
    m_closed = closes;
    const qint64 after = m_turns.empty() ? time : std::max(time, m_turns.back().time);
    if (opens && after - m_turns.back().time < kShortestGap)
        m_turns.pop_back(); // handed over, to the console or back
    else
        m_turns.push_back({after, opens});
}

// A console's commands come key by key.
void Tape::addCommands(qint64 time, const QByteArray &bytes)
{
    m_unfinished.append(bytes);
    for (int end; (end = m_unfinished.indexOf('\n')) >= 0; m_unfinished.remove(0, end + 1))
        m_commands.push_back({time, QString::fromLatin1(m_unfinished.left(end).trimmed())});
    m_unfinished.truncate(kLongestCommand);
}

std::string_view Tape::bytes(std::size_t first, std::size_t count) const
{
    const auto start = [this](std::size_t index) {
        return index < m_arrivals.size() ? m_arrivals[index].at : m_bytes.size();
    };
    return {m_bytes.data() + start(first), start(first + count) - start(first)};
}

} // namespace session
