// SPDX-License-Identifier: MIT
// A recording in memory, to be played: the board's bytes, and the places of faults and marks.
#pragma once

#include "session/packet.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace session {

class Reader;

class Tape
{
public:
    /// One arrival. Times count in nanoseconds from the recording's first packet.
    struct Arrival {
        qint64 time = 0;
        std::size_t at = 0; // of its first byte among all
    };
    struct Event {
        qint64 time = 0;
        QString text; // the fault's number, the mark's word
    };

    /// The line goes, or is back.
    struct Turn {
        qint64 time = 0;
        bool there = false;
    };

    /// Reads a recording to its end, or to where it is cut or damaged: the reader tells.
    void load(Reader &reader);

    const std::vector<Arrival> &arrivals() const { return m_arrivals; }
    /// The bytes of the arrivals from `first` on, as many arrivals as `count`.
    std::string_view bytes(std::size_t first, std::size_t count = 1) const;
    const std::vector<Event> &faults() const { return m_faults; }
    const std::vector<Event> &marks() const { return m_marks; }
    /// Command lines that were sent.
    const std::vector<Event> &commands() const { return m_commands; }
    /// When the port was lost or closed, and opened again, by turns: first a loss. A close at the end is none.
    const std::vector<Turn> &turns() const { return m_turns; }
    /// From the first packet to the last.
    qint64 length() const { return m_length; }
    /// When the first packet passed, nanoseconds since 1970.
    qint64 start() const { return m_start; }

private:
    void add(const PacketView &packet, class FaultFinder &finder);
    void addNote(qint64 time, const struct Note &note);
    void addCommands(qint64 time, const QByteArray &bytes);

    std::vector<Arrival> m_arrivals;
    std::vector<char> m_bytes;
    std::vector<Event> m_faults;
    std::vector<Event> m_marks;
    std::vector<Event> m_commands;
    std::vector<Turn> m_turns;
    bool m_closed = false;   // by the last turn, and not lost
    QByteArray m_unfinished; // command
    qint64 m_start = 0;
    qint64 m_length = 0;
};

} // namespace session
