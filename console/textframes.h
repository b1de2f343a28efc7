// SPDX-License-Identifier: MIT
// The board's text messages, cut out of the stream for the console.
#pragma once

#include <QByteArray>
#include <QStringList>

/// Takes the bytes of one read and returns the complete text messages, a byte a character. Frames of other modules and
/// what is no frame are passed over. What a read leaves incomplete, from its first sync byte on, is kept for the next.
class TextFrames
{
public:
    QStringList take(const QByteArray &read);

private:
    QByteArray m_carry;
};
