// SPDX-License-Identifier: MIT
#include "cli/comparison.h"

#include "cli/modules.h"
#include "protocol/report.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace {

using protocol::Field;

// Fields that differ from run to run on a good board: times, measurements, chance, its version.
struct Volatile {
    const char *report;
    const char *field;
};

// clang-format off
constexpr Volatile volatiles[] = {
    {"firmware", "version"}, {"firmware", "year"}, {"firmware", "month"}, {"firmware", "day"},
    {"cmu", "value"},
    {"clock_status", "irc_frequency"},
    {"xbic_record", "syndrome"}, {"xbic_record", "address"},
    {"crc", "time"},
    {"intcm", "timer"}, {"intcm_record", "timer"},
    {"fault", "time"},
    {"cse_result", "time"},
};
// clang-format on

constexpr char kMasked[] = "*";
// So far apart may two answers stand and still be each other's.
constexpr std::size_t kLookAhead = 64;

bool isVolatile(QLatin1String report, QLatin1String field)
{
    return std::any_of(std::begin(volatiles), std::end(volatiles), [&](const Volatile &row) {
        return report == QLatin1String(row.report) && field == QLatin1String(row.field);
    });
}

// Numbers in the board's texts count and measure.
QString withoutNumbers(QString text)
{
    static const QRegularExpression number(QStringLiteral("\\d+"));
    return text.replace(number, QStringLiteral("#"));
}

QString masked(const protocol::ReportInfo &info, const Field &field)
{
    if (isVolatile(info.name, field.name))
        return QLatin1String(kMasked);
    const QString text = valueText(field);
    return info.module == protocol::ModuleId::Text ? withoutNumbers(text) : text;
}

void append(Answer &answer, const protocol::ReportInfo &info, const QVector<Field> &fields, const QString &prefix)
{
    for (const Field &field : fields) {
        const QString name = prefix + field.name;
        if (!field.isRecords)
            answer.fields.emplace_back(name, masked(info, field));
        for (int i = 0; i < field.records.size(); ++i)
            append(answer, info, field.records[i], QStringLiteral("%1[%2].").arg(name).arg(i));
    }
}

// Bytes by chance: an engine's random numbers.
void maskChance(Answer &answer, const protocol::Report &report)
{
    const auto *result = std::get_if<protocol::cse::Result>(&report);
    if (!result || result->operation < protocol::cse::PseudoRandom)
        return;
    for (auto &[name, value] : answer.fields) {
        if (name == QLatin1String("bytes"))
            value = QLatin1String(kMasked);
    }
}

QString textOf(const Answer &answer)
{
    QStringList pairs;
    for (const auto &[name, value] : answer.fields)
        pairs.append(name + QLatin1Char(' ') + value);
    return pairs.join(QLatin1String(", "));
}

Difference whole(Difference::Kind kind, const Answer &answer)
{
    const QString text = textOf(answer);
    return {kind,
            answer.command,
            answer.report,
            {},
            kind == Difference::Missing ? text : QString(),
            kind == Difference::Extra ? text : QString()};
}

void compareFields(const Answer &expected, const Answer &received, std::vector<Difference> &found)
{
    const std::size_t common = std::min(expected.fields.size(), received.fields.size());
    for (std::size_t i = 0; i < std::max(expected.fields.size(), received.fields.size()); ++i) {
        const auto left = i < expected.fields.size() ? expected.fields[i] : std::pair<QString, QString>();
        const auto right = i < received.fields.size() ? received.fields[i] : std::pair<QString, QString>();
        if (left != right)
            found.push_back({Difference::Changed, expected.command, expected.report,
                             i < common || !left.first.isEmpty() ? left.first : right.first, left.second,
                             right.second});
    }
}

// Distance to the next answer that matches, none within reach: kLookAhead.
std::size_t distance(const std::vector<Answer> &in, std::size_t from, const Answer &wanted)
{
    std::size_t steps = 0;
    while (steps < kLookAhead && from + steps < in.size() && !in[from + steps].matches(wanted))
        ++steps;
    return from + steps < in.size() ? steps : kLookAhead;
}

void compare(const std::vector<Answer> &expected, const std::vector<Answer> &received, std::vector<Difference> &found)
{
    std::size_t i = 0, j = 0;
    while (i < expected.size() && j < received.size()) {
        if (expected[i].matches(received[j])) {
            ++i, ++j;
            continue;
        }
        const std::size_t extra = distance(received, j, expected[i]);
        const std::size_t missing = distance(expected, i, received[j]);
        if (extra == kLookAhead && missing == kLookAhead && expected[i].report == received[j].report)
            compareFields(expected[i++], received[j++], found);
        else if (extra <= missing && extra < kLookAhead)
            found.push_back(whole(Difference::Extra, received[j++]));
        else
            found.push_back(whole(Difference::Missing, expected[i++]));
    }
    for (; i < expected.size(); ++i)
        found.push_back(whole(Difference::Missing, expected[i]));
    for (; j < received.size(); ++j)
        found.push_back(whole(Difference::Extra, received[j]));
}

const std::vector<Answer> &of(const std::map<int, std::vector<Answer>> &answers, int module)
{
    static const std::vector<Answer> none;
    const auto found = answers.find(module);
    return found == answers.end() ? none : found->second;
}

} // namespace

std::optional<Answer> answerOf(const frameData &frame, int command)
{
    if (comesUnasked(frame))
        return std::nullopt;
    Answer answer{command, frame.moduleId, {}, {}};
    const auto report = protocol::decode(frame.moduleId, frame.dataType, frame.data);
    if (!report) {
        answer.report = QStringLiteral("module %1 type %2").arg(frame.moduleId).arg(frame.dataType);
        answer.fields.emplace_back(QStringLiteral("payload"), QString::fromLatin1(frame.data.toHex()));
        return answer;
    }
    const protocol::ReportInfo &info = protocol::infoOf(*report);
    answer.report = info.name;
    append(answer, info, protocol::fields(*report), {});
    maskChance(answer, *report);
    return answer;
}

void Comparison::expect(const Answer &answer)
{
    m_expected[answer.module].push_back(answer);
    ++m_expectedByCommand[answer.command];
    ++m_expectedCount;
}

void Comparison::receive(const Answer &answer)
{
    m_received[answer.module].push_back(answer);
    ++m_receivedCount;
}

int Comparison::expectedBefore(int command) const
{
    int count = 0;
    for (auto row = m_expectedByCommand.begin(); row != m_expectedByCommand.lower_bound(command); ++row)
        count += row->second;
    return count;
}

std::vector<Difference> Comparison::differences() const
{
    std::vector<Difference> found;
    for (int module = 0; module < 256; ++module)
        compare(of(m_expected, module), of(m_received, module), found);
    std::stable_sort(found.begin(), found.end(),
                     [](const Difference &a, const Difference &b) { return a.command < b.command; });
    return found;
}
