// SPDX-License-Identifier: MIT
#include "cli/campaign/observation.h"

#include "protocol/commands.h"

#include <algorithm>
#include <cmath>

namespace campaign {

namespace {

using protocol::Field;

constexpr qlonglong kLargestPlain = 0xFFFF; // larger ones are addresses and checksums

const Field *fieldNamed(const QVector<Field> &fields, const QString &name)
{
    const auto found = std::ranges::find_if(fields, [&name](const Field &field) { return field.name == name; });
    return found == fields.end() ? nullptr : &*found;
}

// Of the report, else of its newest record. The fields outlive the pointer's use.
const Field *fieldOf(const QVector<Field> &fields, const QString &name)
{
    if (const Field *field = fieldNamed(fields, name))
        return field;
    for (const Field &field : fields) {
        if (!field.records.isEmpty())
            return fieldNamed(field.records.last(), name);
    }
    return nullptr;
}

bool isSame(const QVariant &value, const QVariant &wanted)
{
    if (value.type() == QVariant::ByteArray)
        return value.toByteArray() == QByteArray::fromHex(wanted.toString().toLatin1());
    if (value.type() == QVariant::List || wanted.type() == QVariant::List)
        return value.type() == wanted.type()
            && std::ranges::equal(value.toList(), wanted.toList(), [](const QVariant &a, const QVariant &b) {
                   return a.toLongLong() == b.toLongLong();
               });
    if (value.type() == QVariant::Bool || wanted.type() == QVariant::Bool)
        return value.toBool() == wanted.toBool();
    if (value.type() != QVariant::Double && value.userType() != QMetaType::Float && wanted.type() == QVariant::LongLong)
        return value.toLongLong() == wanted.toLongLong();
    // A float of the board is as precise as its own type.
    return static_cast<float>(value.toDouble()) == static_cast<float>(wanted.toDouble());
}

// A text is meant in words where the field has any.
bool isAsWanted(const Field &field, const QVariant &wanted)
{
    if (wanted.type() == QVariant::String && field.value.type() != QVariant::ByteArray)
        return wanted.toString() == (field.text.isEmpty() ? field.value.toString() : field.text);
    return isSame(field.value, wanted);
}

QString textOfValue(const QVariant &value)
{
    const bool isWhole = value.type() == QVariant::LongLong || value.type() == QVariant::UInt;
    if (isWhole && value.toLongLong() > kLargestPlain)
        return QStringLiteral("0x%1").arg(QString::number(value.toLongLong(), 16).toUpper());
    if (value.type() == QVariant::ByteArray)
        return QString::fromLatin1(value.toByteArray().toHex());
    if (value.type() != QVariant::List)
        return value.toString();
    QStringList numbers;
    for (const QVariant &number : value.toList())
        numbers.append(number.toString());
    return numbers.isEmpty() ? QStringLiteral("none") : numbers.join(QLatin1Char(' '));
}

} // namespace

std::vector<const Seen *> Observation::named(const QString &name) const
{
    std::vector<const Seen *> found;
    for (const Seen &seen : reports) {
        if (seen.name == name)
            found.push_back(&seen);
    }
    return found;
}

bool matches(const Seen &seen, const Wanted &wanted)
{
    if (seen.name != wanted.report)
        return false;
    const QVector<Field> fields = protocol::fields(seen.report);
    return std::ranges::all_of(wanted.fields, [&fields](const auto &one) {
        const Field *field = fieldOf(fields, one.first);
        return field && isAsWanted(*field, one.second);
    });
}

const Seen *find(const Observation &observation, const Wanted &wanted)
{
    const auto found =
        std::ranges::find_if(observation.reports, [&wanted](const Seen &seen) { return matches(seen, wanted); });
    return found == observation.reports.end() ? nullptr : &*found;
}

const Seen *findChange(const Observation &observation, const Expectation &expect)
{
    std::optional<QVariant> last;
    const auto changes = [&](const Seen &seen) {
        if (!matches(seen, expect.changed))
            return false;
        const QVector<Field> fields = protocol::fields(seen.report);
        const Field *field = fieldOf(fields, expect.changedField);
        const QVariant value = field ? field->value : QVariant();
        return std::exchange(last, value).value_or(value) != value;
    };
    std::ranges::for_each(observation.before, changes);
    const auto found = std::ranges::find_if(observation.reports, changes);
    return found == observation.reports.end() ? nullptr : &*found;
}

const Seen *findState(const Observation &observation, const QString &state)
{
    return find(observation, {QStringLiteral("fault_state"), {{QStringLiteral("state"), state}}});
}

const Seen *findReset(const Observation &observation, const Expectation &expect)
{
    Wanted reasons{QStringLiteral("reset"), {{QStringLiteral("reasons"), QVariantList{expect.reset.value_or(0)}}}};
    if (expect.resetSource)
        reasons.fields.emplace_back(QStringLiteral("sources"), QVariantList{*expect.resetSource});
    return find(observation, reasons);
}

QString faultText(const protocol::fccu::FaultEvent &fault)
{
    return QStringLiteral("%1 %2").arg(fault.id).arg(fault.source().trimmed());
}

QString wantedText(const Wanted &wanted)
{
    QStringList parts;
    for (const auto &[name, value] : wanted.fields)
        parts.append(QStringLiteral("%1 %2").arg(name, textOfValue(value)));
    return parts.isEmpty() ? wanted.report
                           : QStringLiteral("%1: %2").arg(wanted.report, parts.join(QLatin1String(", ")));
}

QString insteadText(const Observation &observation, const Wanted &wanted)
{
    const auto came = observation.named(wanted.report);
    if (came.empty())
        return {};
    const QVector<Field> fields = protocol::fields(came.back()->report);
    QStringList parts;
    for (const auto &[name, value] : wanted.fields) {
        const Field *field = fieldOf(fields, name);
        if (!field)
            return QStringLiteral("that there is none"); // a record without entries
        if (!isAsWanted(*field, value))
            parts.append(QStringLiteral("%1 %2").arg(name, textOfValue(field->value)));
    }
    return parts.join(QLatin1String(", "));
}

QString answerOf(const QString &command)
{
    const protocol::CommandInfo *info = protocol::commandOf(command);
    return info ? QString(info->answer).section(QLatin1Char(' '), -1) : QString();
}

} // namespace campaign
