// SPDX-License-Identifier: MIT
#include "link/commandlines.h"

QByteArrayList CommandLines::take(const QByteArray &bytes)
{
    QByteArrayList lines;
    m_unfinished.append(bytes);
    for (int end; (end = m_unfinished.indexOf('\n')) >= 0; m_unfinished.remove(0, end + 1))
        lines.append(m_unfinished.left(end).trimmed());
    m_unfinished.truncate(kLongest);
    return lines;
}
