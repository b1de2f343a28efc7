// SPDX-License-Identifier: MIT
// inject: a fault, the monitor that caught it, the time that took, and the reaction.
#include "cli/conversation.h"
#include "cli/complain.h"
#include "cli/exitcode.h"
#include "cli/modules.h"
#include "cli/nearest.h"
#include "cli/printer.h"
#include "cli/settings.h"
#include "cli/times.h"
#include "cli/verbs.h"
#include "protocol/report.h"

#include <QElapsedTimer>

#include <optional>

namespace {

constexpr int kTimeoutMs = 3000;
// The reaction is over when the board has been silent for so long: longer than a restart.
constexpr int kSilenceMs = 400;
constexpr int kRecordSilenceMs = 30;
constexpr int kProbeMs = 500;

bool canBeInjected(const Module &module)
{
    return module.cases > 0;
}

/// An injection as asked for.
struct Injection {
    const Module *module = nullptr;
    int number = 0;
    QString command;
    QString trouble; // why there is none, for people
};

Injection injectionOf(const QStringList &words)
{
    const Module *module = moduleOf(words[0]);
    if (!module || !canBeInjected(*module))
        return {nullptr,
                0,
                {},
                module ? QStringLiteral("nothing can be injected into %1; modules: %2")
                             .arg(nameOf(*module), moduleNames(&canBeInjected).join(QLatin1String(", ")))
                       : unknownText(QStringLiteral("module"), words[0], moduleNames(&canBeInjected))};
    bool isNumber = false;
    const int number = words[1].toInt(&isNumber);
    if (!isNumber || number < 1 || number > module->cases)
        return {
            nullptr,
            0,
            {},
            QStringLiteral("%1 has cases 1 to %2, not \"%3\"").arg(nameOf(*module)).arg(module->cases).arg(words[1])};
    const QString command = injectCommand(*module, number, words.mid(2));
    if (!isCommandLine(command))
        return {nullptr, 0, {}, QStringLiteral("arguments are Latin-1 without control characters")};
    return {module, number, command, {}};
}

/// The board's reports on one injection.
class Course
{
public:
    Course(Conversation &board, const Injection &injection) : m_board(board), m_injection(injection)
    {
        board.onFrame = [this](const frameData &frame, qint64 time) { take(frame, time); };
        board.onPacket = [this](const session::Packet &packet) {
            if (packet.direction == session::Direction::Sent && m_sent == 0)
                m_sent = packet.time;
        };
    }

    /// Injects, and waits until the reaction is over and the record is there.
    Conversation::Waited run(int timeoutMs)
    {
        m_board.send(m_injection.command);
        auto ended = m_board.wait(timeoutMs, [this] { return isCaught(); });
        if (ended == Conversation::Waited::Done)
            ended = m_board.waitForSilence(kSilenceMs, timeoutMs);
        if (ended == Conversation::Waited::Done && isCaught() && *m_injection.module->record)
            ended = askForRecord(timeoutMs);
        return ended;
    }
    /// After no fault was reported: does the board live?
    Conversation::Waited probe()
    {
        m_alive = false;
        m_board.send(QStringLiteral("get 1"));
        return m_board.wait(kProbeMs, [this] { return m_alive; });
    }

    bool isCaught() const { return m_fault || (m_restarted && isReset()); }
    void print(Printer &printer) const;

private:
    bool isReset() const { return m_injection.module->injection == 0; }

    Conversation::Waited askForRecord(int timeoutMs)
    {
        m_recordWanted = true;
        m_board.send(QString::fromLatin1(m_injection.module->record));
        const auto ended = m_board.wait(std::min(timeoutMs, kProbeMs), [this] { return !m_record.isEmpty(); });
        return ended == Conversation::Waited::Done ? m_board.waitForSilence(kRecordSilenceMs, timeoutMs) : ended;
    }

    void take(const frameData &frame, qint64 time)
    {
        m_alive = true;
        const auto report = protocol::decode(frame.moduleId, frame.dataType, frame.data);
        if (!report)
            return;
        if (const auto *fault = std::get_if<protocol::fccu::FaultEvent>(&*report); fault && !m_fault) {
            m_fault = *fault;
            m_faultTime = time;
        } else if (std::holds_alternative<protocol::fccu::UnitState>(*report)) {
            addState(protocol::fields(*report).first().text);
        } else if (std::holds_alternative<protocol::sys::RestartNotice>(*report)) {
            m_restarted = true;
        } else if (std::holds_alternative<protocol::reset::Reasons>(*report)) {
            m_reasons = protocol::fields(*report);
        } else if (m_recordWanted && frame.moduleId == static_cast<quint8>(m_injection.module->id)) {
            m_record.append(*report);
        }
    }
    void addState(const QString &state)
    {
        if (!state.isEmpty() && (m_states.isEmpty() || m_states.last() != state))
            m_states.append(state);
    }
    QString reaction() const;
    JsonLine json() const;
    QString words() const;

    Conversation &m_board;
    const Injection &m_injection;
    qint64 m_sent = 0;
    std::optional<protocol::fccu::FaultEvent> m_fault;
    qint64 m_faultTime = 0;
    QStringList m_states;
    bool m_restarted = false;
    QVector<protocol::Field> m_reasons;
    bool m_recordWanted = false;
    QList<protocol::Report> m_record;
    bool m_alive = false;
};

JsonLine Course::json() const
{
    JsonLine json("injection");
    json.add("module", nameOf(*m_injection.module))
        .add("case", m_injection.number)
        .add("command", m_injection.command)
        .add("caught", isCaught());
    if (m_fault)
        json.raw("fault", fieldsJson(protocol::fields(*m_fault)))
            .add("reported_us", static_cast<double>(m_faultTime - m_sent) / 1000);
    QByteArray states;
    for (const QString &state : m_states) {
        states.append(states.isEmpty() ? "" : ",");
        appendJson(states, state);
    }
    json.raw("states", '[' + states + ']').add("restarted", m_restarted);
    if (!m_reasons.isEmpty())
        json.raw("reset", fieldsJson(m_reasons));
    QByteArrayList records;
    for (const protocol::Report &report : m_record)
        records.append(fieldsJson(protocol::fields(report)));
    return json.raw("record", '[' + records.join(',') + ']');
}

QString Course::reaction() const
{
    QStringList parts = m_states;
    if (m_restarted)
        parts.append(QStringLiteral("restart"));
    if (!m_reasons.isEmpty())
        parts.append(pairsText(m_reasons));
    return parts.isEmpty() ? QStringLiteral("none told") : parts.join(QLatin1String(", "));
}

QString Course::words() const
{
    QStringList lines;
    const auto add = [&lines](const char *head, const QString &text) {
        lines.append(QStringLiteral("%1 %2").arg(QLatin1String(head), -9).arg(text));
    };
    add("injected",
        QStringLiteral("%1 case %2 (%3)")
            .arg(nameOf(*m_injection.module))
            .arg(m_injection.number)
            .arg(m_injection.command));
    if (m_fault) {
        add("fault",
            QStringLiteral("%1 %2: %3").arg(m_fault->id).arg(m_fault->source().trimmed(), m_fault->description()));
        add("time",
            QStringLiteral("detected after %1 us, reported after %2 ms")
                .arg(static_cast<double>(m_fault->time), 0, 'f', 2)
                .arg(static_cast<double>(m_faultTime - m_sent) / 1e6, 0, 'f', 1));
    } else {
        add("fault", QStringLiteral("none reported"));
    }
    add("reaction", reaction());
    for (const protocol::Report &report : m_record) {
        for (const QString &line : protocol::describe(report))
            if (!shownText(line).isEmpty())
                add("record", shownText(line));
    }
    return lines.join(QLatin1Char('\n'));
}

void Course::print(Printer &printer) const
{
    JsonLine line = json();
    printer.finding(line, words());
}

} // namespace

int verbs::inject(const Settings &settings)
{
    const Injection injection = injectionOf(settings.arguments);
    if (!injection.module) {
        complain(injection.trouble);
        return kUsageOrFile;
    }
    Conversation board(settings);
    Printer printer(settings);
    Course course(board, injection);
    if (const int code = board.open())
        return code;
    const int timeoutMs = settings.timeoutMs.value_or(kTimeoutMs);
    auto ended = course.run(timeoutMs);
    if (ended == Conversation::Waited::TimedOut && !course.isCaught()) {
        ended = course.probe();
        if (ended == Conversation::Waited::TimedOut) {
            complain(QStringLiteral("the board does not answer"));
            return board.finish(kLineOrBoard);
        }
    }
    if (const int code = board.codeOf(ended))
        return board.finish(code);
    course.print(printer);
    const bool shown = printer.flush();
    return board.finish(!shown ? kUsageOrFile : course.isCaught() ? kAsAsked : kNotAsExpected);
}
