// SPDX-License-Identifier: MIT
#include "cli/times.h"

#include <QDateTime>

namespace {

constexpr qint64 kPerSecond = 1'000'000'000;

// The date and time of a whole second, kept: packets come many to the second.
class Seconds
{
public:
    Seconds(Qt::TimeSpec spec, const char *format) : m_spec(spec), m_format(QLatin1String(format)) {}

    const QByteArray &text(qint64 second)
    {
        if (second != m_second || m_text.isEmpty()) {
            m_second = second;
            m_text = QDateTime::fromSecsSinceEpoch(second, m_spec).toString(m_format).toLatin1();
        }
        return m_text;
    }

private:
    Qt::TimeSpec m_spec;
    QString m_format;
    qint64 m_second = 0;
    QByteArray m_text;
};

void appendWithFraction(QByteArray &to, Seconds &seconds, qint64 time, int digits)
{
    qint64 second = time / kPerSecond;
    qint64 rest = time % kPerSecond;
    if (rest < 0) {
        rest += kPerSecond;
        --second;
    }
    char fraction[10] = {'.'};
    for (int digit = 9; digit > 0; --digit, rest /= 10)
        fraction[digit] = static_cast<char>('0' + rest % 10);
    to.append(seconds.text(second)).append(fraction, 1 + digits);
}

} // namespace

void appendIsoTime(QByteArray &to, qint64 time)
{
    static Seconds seconds(Qt::UTC, "yyyy-MM-ddTHH:mm:ss");
    appendWithFraction(to, seconds, time, 9);
    to.append('Z');
}

QByteArray isoTime(qint64 time)
{
    QByteArray text;
    appendIsoTime(text, time);
    return text;
}

QByteArray clockTime(qint64 time)
{
    static Seconds seconds(Qt::LocalTime, "HH:mm:ss");
    QByteArray text;
    appendWithFraction(text, seconds, time, 6);
    return text;
}
