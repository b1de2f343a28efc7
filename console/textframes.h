// SPDX-License-Identifier: MIT
// The board's text messages, cut out of the byte stream for the console.
#pragma once

#include <QByteArray>
#include <QStringList>

#include <deque>
#include <vector>

/// Takes the bytes of one read and returns the text messages that are complete by now, one character per byte. An
/// undamaged stream gives the same messages however it is cut into reads; a frame whose payload holds a whole frame is
/// the exception. A frame that announces more than has arrived holds nothing back: the next whole frame replaces it.
/// Fewer than 13 unread bytes wait for more. Each byte is searched once, however small the reads are.
class TextFrames
{
public:
    QStringList take(const QByteArray &read);

private:
    // Positions count the bytes of the stream; a frame is [at, end).
    struct Frame {
        qint64 at = 0;
        qint64 end = 0;
    };

    qint64 size() const { return m_base + m_bytes.size(); }
    qint64 firstUnread() const { return m_open.empty() ? m_searched : m_open.front().at; }
    const char *bytesAt(qint64 at) const { return m_bytes.constData() + (at - m_base); }
    bool endsWell(qint64 end) const;
    bool completesOpen();
    quint16 &endsAt(qint64 end);
    void open(Frame frame);
    void forgetOpen();
    void dropOverdue();
    bool findFrame(Frame &found);
    void settle(Frame frame, QStringList &texts);
    void accept(Frame frame, QStringList &texts);
    void dropRead();

    QByteArray m_bytes; // the stream from m_base on
    qint64 m_base = 0;
    qint64 m_searched = 0;         // the search for sync pairs goes on here
    qint64 m_textEnd = 0;          // end of the last text frame
    qint64 m_otherEnd = 0;         // end of the last frame of another module; what begins inside it ends inside it
    std::deque<Frame> m_open;      // incomplete frames, by position
    std::vector<quint16> m_endsAt; // their number by the lower bits of their end
    qint64 m_checked = 0;          // their ends have been looked for up to here
};
