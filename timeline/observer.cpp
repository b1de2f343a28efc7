// SPDX-License-Identifier: MIT
#include "timeline/observer.h"

#include "app/reportfeed.h"
#include "link/linetraffic.h"

namespace timeline {

Observer::Observer(QObject *parent) : QObject(parent)
{
    connect(&reportFeed(), &ReportFeed::reported, this, [this](const protocol::Report &report) {
        const auto *fault = std::get_if<protocol::fccu::FaultEvent>(&report);
        const auto *notice = std::get_if<protocol::sys::RestartNotice>(&report);
        if (fault)
            m_chronicle.addFault(now(), *fault);
        if (notice && notice->restarted)
            m_chronicle.addRestart(now());
        if (!fault && !(notice && notice->restarted))
            return;
        emit grown();
    });
    const LineTraffic &line = lineTraffic();
    connect(&line, &LineTraffic::sent, this, &Observer::take);
    connect(&line, &LineTraffic::recalled, this, &Observer::take);
    connect(&line, &LineTraffic::opened, this, [this] {
        m_lines.clear();
        m_chronicle.endGap(now());
        emit grown();
    });
    connect(&line, &LineTraffic::closed, this, [this] {
        m_chronicle.beginGap(now(), QStringLiteral("closed"));
        emit grown();
    });
    connect(&line, &LineTraffic::lost, this, [this](const QString &reason) {
        m_chronicle.beginGap(now(), QStringLiteral("lost: ") + reason);
        emit grown();
    });
}

void Observer::take(const QByteArray &sent)
{
    const QByteArrayList lines = m_lines.take(sent);
    for (const QByteArray &line : lines)
        m_chronicle.addCommand(now(), QString::fromLatin1(line));
    if (!lines.isEmpty())
        emit grown();
}

} // namespace timeline
