// SPDX-License-Identifier: MIT
#include "cli/campaign/planfile.h"

#include "cli/campaign/observation.h"
#include "cli/conversation.h"
#include "cli/nearest.h"
#include "protocol/fccu.h"
#include "protocol/report.h"
#include "protocol/reset.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#define TOML_HEADER_ONLY 1
#define TOML_ENABLE_FORMATTERS 0
#include <toml++/toml.h>

#include <algorithm>

namespace campaign {

namespace {

constexpr int kUsualReactionMs = 1000; // a busy computer is late too
constexpr int kLongestMs = 600'000;
constexpr int kMostRepeats = 100'000;
constexpr double kLongestUs = 1e9;

QString textOf(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/// The first trouble, with its place.
class Complaints
{
public:
    explicit Complaints(QString file) : m_file(std::move(file)) {}

    void add(const toml::source_position &at, const QString &what)
    {
        if (m_first.isEmpty())
            m_first = QStringLiteral("%1:%2:%3: %4").arg(m_file).arg(at.line).arg(at.column).arg(what);
    }
    const QString &first() const { return m_first; }

private:
    QString m_file;
    QString m_first;
};

/// Takes the members of one table by name; what nobody has asked for is unknown.
class Members
{
public:
    Members(const toml::table &table, Complaints &complaints) : m_table(table), m_complaints(complaints) {}
    Members(const Members &) = delete;
    Members &operator=(const Members &) = delete;
    ~Members()
    {
        for (const auto &[key, node] : m_table) {
            if (!m_known.contains(textOf(key.str())))
                m_complaints.add(key.source().begin, unknownText(QStringLiteral("key"), textOf(key.str()), m_known));
        }
    }

    void wrong(const char *key, const QString &what)
    {
        const toml::node *node = m_table.get(key);
        m_complaints.add(node ? node->source().begin : m_table.source().begin, what);
    }
    bool has(const char *key) const { return m_table.contains(key); }

    QString text(const char *key)
    {
        const toml::node *node = get(key);
        if (!node)
            return {};
        const auto value = node->value_exact<std::string_view>();
        if (!value)
            wrong(key, QStringLiteral("%1 is a text in quotes").arg(QLatin1String(key)));
        return value ? textOf(*value) : QString();
    }
    QString needed(const char *key)
    {
        QString value = text(key);
        if (value.isEmpty())
            wrong(key, QStringLiteral("%1 is missing").arg(QLatin1String(key)));
        return value;
    }
    QString command(const char *key)
    {
        QString line = text(key);
        if (!isCommandLine(line))
            wrong(key, QStringLiteral("a command is one line of Latin-1"));
        return line;
    }
    QStringList commands(const char *key)
    {
        QStringList lines;
        const toml::node *node = get(key);
        const toml::array *array = node ? node->as_array() : nullptr;
        for (std::size_t i = 0; array && i < array->size(); ++i) {
            const auto value = (*array)[i].value_exact<std::string_view>();
            if (!value || !isCommandLine(textOf(*value)))
                wrong(key, QStringLiteral("%1 is a list of commands").arg(QLatin1String(key)));
            else
                lines.append(textOf(*value));
        }
        if (node && !array)
            wrong(key, QStringLiteral("%1 is a list of commands").arg(QLatin1String(key)));
        return lines;
    }
    std::optional<double> number(const char *key, double least, double most)
    {
        const toml::node *node = get(key);
        if (!node)
            return std::nullopt;
        const auto value = node->is_number() ? node->value<double>() : std::nullopt;
        if (value && *value >= least && *value <= most)
            return value;
        wrong(key, QStringLiteral("%1 is a number from %2 to %3").arg(QLatin1String(key)).arg(least).arg(most));
        return std::nullopt;
    }
    std::optional<int> integer(const char *key, int least, int most)
    {
        const toml::node *node = get(key);
        if (!node)
            return std::nullopt;
        const auto value = node->value_exact<int64_t>();
        if (value && *value >= least && *value <= most)
            return static_cast<int>(*value);
        wrong(key, QStringLiteral("%1 is a whole number from %2 to %3").arg(QLatin1String(key)).arg(least).arg(most));
        return std::nullopt;
    }
    const toml::table *table(const char *key)
    {
        const toml::node *node = get(key);
        if (node && !node->is_table())
            wrong(key, QStringLiteral("%1 is a table").arg(QLatin1String(key)));
        return node ? node->as_table() : nullptr;
    }
    std::vector<const toml::table *> tables(const char *key)
    {
        std::vector<const toml::table *> found;
        const toml::node *node = get(key);
        const toml::array *array = node ? node->as_array() : nullptr;
        for (std::size_t i = 0; array && i < array->size(); ++i)
            found.push_back((*array)[i].as_table());
        if (node && (!array || std::ranges::find(found, nullptr) != found.end())) {
            wrong(key, QStringLiteral("%1 is a list of tables").arg(QLatin1String(key)));
            return {};
        }
        return found;
    }

private:
    const toml::node *get(const char *key)
    {
        m_known.append(QLatin1String(key));
        return m_table.get(key);
    }

    const toml::table &m_table;
    Complaints &m_complaints;
    QStringList m_known;
};

// A text, a number, true or false, or a list of numbers: the flags that are set.
QVariant valueOf(const toml::node &node)
{
    if (const auto text = node.value_exact<std::string_view>())
        return textOf(*text);
    if (const auto flag = node.value_exact<bool>())
        return *flag;
    if (const auto whole = node.value_exact<int64_t>())
        return static_cast<qlonglong>(*whole);
    if (const auto real = node.value_exact<double>())
        return *real;
    if (!node.is_array())
        return {};
    QVariantList list;
    for (const toml::node &element : *node.as_array()) {
        const auto number = element.value_exact<int64_t>();
        if (!number)
            return {};
        list.append(static_cast<qlonglong>(*number));
    }
    return list;
}

class PlanReader
{
public:
    explicit PlanReader(Complaints &complaints) : m_complaints(complaints) {}

    Plan read(const toml::table &file);

private:
    void readMechanism(const toml::table &table);
    void readCase(const toml::table &table, const Case &usual, const QString &record);
    void readBudget(Members &members, Case &to);
    void readExpectation(const toml::table &table, Case &to, const QString &record);
    void readFault(Members &members, Expectation &to);
    void checkCase(Members &members, const Case &read);
    Wanted wanted(const toml::table &table, const QString &report = {}, const QStringList &besides = {});
    void checkField(const toml::key &key, const protocol::ReportInfo &info);

    Complaints &m_complaints;
    Plan m_plan;
    QSet<QString> m_ids;
};

QStringList reportNames()
{
    QStringList names;
    for (const protocol::ReportInfo &info : protocol::reportInfos())
        names.append(info.name);
    return names;
}

Plan PlanReader::read(const toml::table &file)
{
    Members members(file, m_complaints);
    m_plan.title = members.needed("title");
    m_plan.text = members.text("text");
    m_plan.setup = members.commands("setup");
    m_plan.recover = members.commands("recover");
    m_plan.patienceMs = members.integer("patience_ms", 1, kLongestMs).value_or(m_plan.patienceMs);
    const auto mechanisms = members.tables("mechanism");
    for (const toml::table *mechanism : mechanisms)
        readMechanism(*mechanism);
    if (m_plan.cases.empty())
        members.wrong("mechanism", QStringLiteral("there is no case"));
    return std::move(m_plan);
}

void PlanReader::readMechanism(const toml::table &table)
{
    Members members(table, m_complaints);
    m_plan.mechanisms.push_back({members.needed("name"), members.text("title")});
    Case usual;
    usual.mechanism = m_plan.mechanisms.size() - 1;
    usual.before = members.commands("before");
    usual.ask = members.commands("ask");
    usual.after = members.commands("after");
    usual.reactionMs = kUsualReactionMs;
    readBudget(members, usual);
    const QString record = members.command("record");
    const auto cases = members.tables("case");
    for (const toml::table *read : cases)
        readCase(*read, usual, record);
}

void PlanReader::readBudget(Members &members, Case &to)
{
    if (const auto deadline = members.number("deadline_us", 0, kLongestUs))
        to.deadlineUs = deadline;
    to.reactionMs = members.integer("reaction_ms", 1, kLongestMs).value_or(to.reactionMs);
    to.repeat = members.integer("repeat", 1, kMostRepeats).value_or(to.repeat);
}

void PlanReader::readCase(const toml::table &table, const Case &usual, const QString &record)
{
    Members members(table, m_complaints);
    Case read = usual;
    read.id = members.needed("id");
    read.title = members.needed("title");
    read.text = members.text("text");
    read.inject = members.command("inject");
    read.before = usual.before + members.commands("before");
    read.ask = usual.ask + members.commands("ask");
    read.after = members.commands("after") + usual.after;
    readBudget(members, read);
    const QString control = members.text("control");
    read.control = control == QLatin1String("off");
    if (members.has("control") && !read.control)
        members.wrong("control", QStringLiteral("control is \"off\""));
    if (const toml::table *effect = members.table("effect"))
        read.effect = wanted(*effect);
    if (const toml::table *expect = members.table("expect"))
        readExpectation(*expect, read, record);
    checkCase(members, read);
    m_ids.insert(read.id);
    m_plan.cases.push_back(std::move(read));
}

void PlanReader::checkCase(Members &members, const Case &read)
{
    const bool expects = read.expect.fault || !read.expect.state.isEmpty() || read.expect.reset
        || !read.expect.reports.empty() || read.expect.changed;
    if (m_ids.contains(read.id))
        members.wrong("id", QStringLiteral("there are two cases %1").arg(read.id));
    if (read.inject.isEmpty())
        members.wrong("inject", QStringLiteral("inject is missing"));
    if (!read.control && !expects)
        members.wrong("expect", QStringLiteral("expect is missing: a fault, a state, a reset, reports or a change"));
    if (read.control && members.has("expect"))
        members.wrong("expect", QStringLiteral("a control expects nothing"));
}

void PlanReader::readFault(Members &members, Expectation &to)
{
    to.fault = members.integer("fault", 0, protocol::fccu::kLastListed - 1);
    to.source = members.text("source");
    if (!to.source.isEmpty()
        && (!to.fault || protocol::fccu::sourceOf(static_cast<quint8>(*to.fault)).trimmed() != to.source))
        members.wrong("source", QStringLiteral("fault %1 has another source").arg(to.fault.value_or(-1)));
    to.state = members.text("state");
    QStringList states;
    for (quint8 state = protocol::fccu::Config; state <= protocol::fccu::Fault; ++state)
        states.append(protocol::fccu::stateName(state));
    if (!to.state.isEmpty() && !states.contains(to.state))
        members.wrong("state", unknownText(QStringLiteral("state"), to.state, states));
    to.reset = members.integer("reset", 0, protocol::reset::kReasonCount - 1);
    to.resetSource = members.integer("reset_source", 0, protocol::reset::kSourceFlagCount - 1);
}

void PlanReader::readExpectation(const toml::table &table, Case &to, const QString &record)
{
    Members members(table, m_complaints);
    readFault(members, to.expect);
    if (const toml::table *entry = members.table("record")) {
        const QString report = answerOf(record);
        if (report.isEmpty())
            members.wrong("record", QStringLiteral("the mechanism names no command that asks for its record"));
        else
            to.expect.record = wanted(*entry, report);
        to.askRecord = record;
    }
    const auto reports = members.tables("reports");
    for (const toml::table *report : reports)
        to.expect.reports.push_back(wanted(*report));
    if (const toml::table *changed = members.table("changed")) {
        to.expect.changed = wanted(*changed, {}, {QStringLiteral("field")});
        if (const auto field = (*changed)["field"].value_exact<std::string_view>())
            to.expect.changedField = textOf(*field);
        else
            members.wrong("changed", QStringLiteral("changed names a field"));
    }
}

void PlanReader::checkField(const toml::key &key, const protocol::ReportInfo &info)
{
    QStringList names;
    for (const protocol::FieldInfo &field : info.fields()) {
        names.append(field.name);
        for (const protocol::FieldInfo &element : field.elements)
            names.append(element.name);
    }
    if (!names.contains(textOf(key.str())))
        m_complaints.add(key.source().begin,
                         unknownText(QStringLiteral("field of %1").arg(info.name), textOf(key.str()), names));
}

// `besides` are keys that are no fields.
Wanted PlanReader::wanted(const toml::table &table, const QString &report, const QStringList &besides)
{
    Wanted read{report, {}};
    if (report.isEmpty()) {
        const auto named = table["report"].value_exact<std::string_view>();
        read.report = named ? textOf(*named) : QString();
    }
    const auto &infos = protocol::reportInfos();
    const auto info = std::ranges::find_if(infos, [&read](const auto &known) { return read.report == known.name; });
    if (info == infos.end()) {
        const toml::node *named = table.get("report");
        m_complaints.add(named ? named->source().begin : table.source().begin,
                         named ? unknownText(QStringLiteral("report"), read.report, reportNames())
                               : QStringLiteral("report is missing"));
        return {};
    }
    for (const auto &[key, node] : table) {
        const QString name = textOf(key.str());
        if ((report.isEmpty() && name == QLatin1String("report")) || besides.contains(name))
            continue;
        checkField(key, *info);
        read.fields.emplace_back(name, valueOf(node));
        if (!read.fields.back().second.isValid())
            m_complaints.add(node.source().begin,
                             QStringLiteral("a value is a text, a number, true or false, or a list of whole numbers"));
    }
    return read;
}

} // namespace

Plan readPlan(const QString &path, QString &trouble)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        trouble = QStringLiteral("%1: %2").arg(path, file.errorString());
        return {};
    }
    const QByteArray bytes = file.readAll();
    Complaints complaints(path);
    Plan plan;
    try {
        const toml::table table =
            toml::parse(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
        plan = PlanReader(complaints).read(table);
    } catch (const toml::parse_error &error) {
        complaints.add(error.source().begin, textOf(error.description()));
    }
    plan.file = QFileInfo(path).fileName();
    plan.sha256 = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
    trouble = complaints.first();
    return plan;
}

} // namespace campaign
