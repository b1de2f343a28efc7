// SPDX-License-Identifier: MIT
#include "presenter/story.h"

#include "app/reportfeed.h"
#include "link/linetraffic.h"
#include "presenter/words.h"
#include "protocol/commands.h"
#include "protocol/mechanism.h"

namespace presenter {

namespace {

enum Step { Injected, Detected, Reaction };

} // namespace

int Story::reached() const
{
    for (int step = kSteps; step > 0; --step) {
        if (!steps[static_cast<std::size_t>(step) - 1].isEmpty())
            return step;
    }
    return 0;
}

Teller::Teller(QObject *parent) : QObject(parent)
{
    connect(&reportFeed(), &ReportFeed::reported, this, &Teller::hear);
    connect(&lineTraffic(), &LineTraffic::sent, this, &Teller::take);
    connect(&lineTraffic(), &LineTraffic::recalled, this, &Teller::take);
    connect(&lineTraffic(), &LineTraffic::opened, this, [this] { m_lines.clear(); });
}

void Teller::forget()
{
    m_story = {};
    m_state = protocol::fccu::Normal;
    emit changed();
}

void Teller::take(const QByteArray &sent)
{
    const QByteArrayList lines = m_lines.take(sent);
    for (const QByteArray &line : lines)
        begin(QString::fromLatin1(line));
}

void Teller::begin(const QString &line)
{
    const protocol::CommandInfo *command = protocol::commandOf(line);
    const auto deed = command ? protocol::deedOf(*command) : protocol::Deed::None;
    if (deed != protocol::Deed::Inject && deed != protocol::Deed::Reset)
        return;
    m_story = {};
    m_state = protocol::fccu::Normal;
    set(Injected, deedInWords(line));
    if (deed == protocol::Deed::Reset)
        m_story.meaning = meaningOf(protocol::ModuleId::Reset);
}

void Teller::hear(const protocol::Report &report)
{
    if (const auto *fault = std::get_if<protocol::fccu::FaultEvent>(&report))
        tell(*fault);
    else if (const auto *unit = std::get_if<protocol::fccu::UnitState>(&report))
        tell(*unit);
    else if (const auto *notice = std::get_if<protocol::sys::RestartNotice>(&report))
        tell(*notice);
}

void Teller::tell(const protocol::fccu::FaultEvent &fault)
{
    if (m_story.reached() != 1) {
        m_story = {};
        m_story.steps[Injected] = QStringLiteral("A fault that nobody ordered");
    }
    const protocol::ModuleId module = protocol::mechanismOf(fault.id);
    m_story.meaning = meaningOf(module);
    set(Detected,
        QStringLiteral("%1 %2 after %3")
            .arg(monitorOf(module), fault.source().trimmed(), timeInWords(static_cast<double>(fault.time))));
    react();
}

// The state comes before the fault that has brought it about.
void Teller::tell(const protocol::fccu::UnitState &unit)
{
    m_state = unit.state;
    if (m_story.reached() >= 2)
        react();
}

void Teller::react()
{
    switch (m_state) {
    case protocol::fccu::Alarm:
        return set(Reaction, QStringLiteral("ALARM: the chip warns and goes on"));
    case protocol::fccu::Fault:
        return set(Reaction, QStringLiteral("FAULT: the chip stops trusting itself"));
    case protocol::fccu::Normal:
        if (m_story.reached() == 3)
            set(Reaction, QStringLiteral("NORMAL again: all is well"));
        return;
    default:
        return;
    }
}

void Teller::tell(const protocol::sys::RestartNotice &notice)
{
    if (!notice.restarted || m_story.reached() == 0)
        return;
    if (m_story.reached() == 1)
        m_story.steps[Detected] = QStringLiteral("The reset unit obeys at once");
    set(Reaction, QStringLiteral("Reset: the chip has started anew"));
}

void Teller::set(int step, const QString &text)
{
    QString &place = m_story.steps[static_cast<std::size_t>(step)];
    place = text;
    emit changed();
}

} // namespace presenter
