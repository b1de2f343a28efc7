#include "simulator/commandline.h"

QStringList CommandLine::take(const QByteArray &bytes)
{
    QStringList lines;
    for (const char byte : bytes) {
        if (byte == '\r' || byte == '\n')
            finish(lines);
        else if (m_line.size() < kLongest)
            m_line.append(byte);
        else
            m_tooLong = true;
    }
    return lines;
}

void CommandLine::finish(QStringList &lines)
{
    if (m_tooLong)
        ++m_dropped;
    else if (!m_line.isEmpty())
        lines.append(QString::fromLatin1(m_line));
    m_line.clear();
    m_tooLong = false;
}
