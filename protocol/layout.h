// SPDX-License-Identifier: MIT
// Tables that tie the fields of a report's struct to their places in the payload. One table beside each struct decodes
// it, lists its fields, and is what the documents and other dissectors are checked against.
#pragma once

#include "protocol/field.h"
#include "protocol/payload.h"

#include <QBitArray>

#include <array>
#include <optional>
#include <span>
#include <type_traits>
#include <vector>

namespace protocol {

/// The bytes of one field.
struct Source {
    const PayloadReader &payload;
    int start; // of the payload or of the record
    const Place &place;

    quint32 number() const;
    float real() const { return payload.f32be(at()); }
    QBitArray flags() const;
    QByteArray bytes() const;
    QString text() const;
    int recordCount() const;
    /// Of an optional byte.
    bool isSent() const { return payload.u8(0) > 0 || payload.size() > at(); }

private:
    int at() const;
};

/// How a struct's member is read and told. `read` is null for a value that another field's bytes hold.
template <class S> struct Access {
    void (*read)(S &, const Source &) = nullptr;
    QVariant (*value)(const S &, const Place &) = nullptr;
    QVector<QVector<Field>> (*records)(const S &) = nullptr;
    QVector<FieldInfo> (*elements)() = nullptr;
};

template <class S> struct Row {
    const char *name = nullptr;
    Place place;
    Access<S> access;
    Notes notes = {};
};

/// A value in words, by its field's notes.
QString wordsOf(const QVariant &value, const Notes &notes);

template <class S, std::size_t N> constexpr std::array<Row<S>, N> rowsOf(const Row<S> (&rows)[N])
{
    return std::to_array(rows);
}

/// The struct that a payload holds, by its table.
template <class S> S decode(const QByteArray &payload)
{
    S report;
    const PayloadReader read(payload);
    for (const Row<S> &row : layoutOf(&report)) {
        if (row.access.read)
            row.access.read(report, {read, 0, row.place});
    }
    return report;
}

template <class S> QVector<Field> fieldsOf(const S &report)
{
    const auto &layout = layoutOf(&report);
    QVector<Field> fields;
    fields.reserve(static_cast<int>(std::size(layout)));
    for (const Row<S> &row : layout) {
        if (row.notes.onlyWhen >= 0 && fields.first().value.toInt() != row.notes.onlyWhen)
            continue;
        Field field{QLatin1String(row.name), {}, QLatin1String(row.notes.unit), {}, {}, row.access.records != nullptr};
        if (field.isRecords) {
            field.records = row.access.records(report);
        } else {
            field.value = row.access.value(report, row.place);
            if (!field.value.isValid())
                continue;
            field.text = wordsOf(field.value, row.notes);
        }
        fields.append(std::move(field));
    }
    return fields;
}

template <class S> bool isFlag(const Row<S> &row)
{
    return row.access.value && row.access.value(S(), row.place).userType() == QMetaType::Bool;
}

template <class S> QVector<FieldInfo> infoOf()
{
    QVector<FieldInfo> infos;
    for (const Row<S> &row : layoutOf(static_cast<const S *>(nullptr)))
        infos.append({QLatin1String(row.name), row.place, row.notes, isFlag(row),
                      row.access.elements ? row.access.elements() : QVector<FieldInfo>()});
    return infos;
}

namespace detail {

template <class S, class T> S structOf(T S::*);
template <class S, class T> T typeOf(T S::*);
template <auto member> using Struct = decltype(structOf(member));
template <auto member> using Type = decltype(typeOf(member));

template <class T> void read(T &target, const Source &from)
{
    if constexpr (std::is_same_v<T, bool>)
        target = from.number() != 0;
    else if constexpr (std::is_same_v<T, float>)
        target = from.real();
    else if constexpr (std::is_same_v<T, QBitArray>)
        target = from.flags();
    else if constexpr (std::is_same_v<T, QByteArray>)
        target = from.bytes();
    else if constexpr (std::is_same_v<T, QString>)
        target = from.text();
    else if constexpr (std::is_same_v<T, std::optional<quint8>>)
        target = from.isSent() ? T(static_cast<quint8>(from.number())) : std::nullopt;
    else
        target = static_cast<T>(from.number());
}

QVariantList setElements(const QBitArray &flags);
QBitArray reversed(const QBitArray &flags);
/// What `place` takes of a byte that is kept whole.
QVariant partOf(quint8 byte, const Place &place);

template <class T> QVariant variant(const T &value)
{
    if constexpr (std::is_same_v<T, QBitArray>)
        return setElements(value);
    else if constexpr (std::is_same_v<T, std::optional<quint8>>)
        return value ? QVariant(static_cast<uint>(*value)) : QVariant();
    else if constexpr (std::is_same_v<T, bool> || std::is_floating_point_v<T> || !std::is_integral_v<T>)
        return QVariant::fromValue(value);
    else if constexpr (std::is_signed_v<T>)
        return static_cast<int>(value);
    else
        return static_cast<uint>(value);
}

} // namespace detail

/// The member holds the field's value.
template <auto member>
inline constexpr Access<detail::Struct<member>> into = {
    [](auto &report, const Source &from) { detail::read(report.*member, from); },
    [](const auto &report, const Place &) { return detail::variant(report.*member); },
};

/// The member's element `index` holds the field's value.
template <auto member, std::size_t index>
inline constexpr Access<detail::Struct<member>> element = {
    [](auto &report, const Source &from) { detail::read((report.*member)[index], from); },
    [](const auto &report, const Place &) { return detail::variant((report.*member)[index]); },
};

/// The member holds a byte of which the field is a part, or which it sees in another way.
template <auto member>
inline constexpr Access<detail::Struct<member>> partOf = {
    nullptr,
    [](const auto &report, const Place &place) { return detail::partOf(report.*member, place); },
};

/// The member holds the field's value divided by `divisor`.
template <auto member, int divisor>
inline constexpr Access<detail::Struct<member>> divided = {
    [](auto &report, const Source &from) {
        report.*member = static_cast<float>(from.number()) / static_cast<float>(divisor);
    },
    [](const auto &report, const Place &) { return detail::variant(report.*member); },
};

/// The member's flags in reverse order are the elements.
template <auto member>
inline constexpr Access<detail::Struct<member>> reversed = {
    [](auto &report, const Source &from) { report.*member = detail::reversed(from.flags()); },
    [](const auto &report, const Place &) { return detail::variant(detail::reversed(report.*member)); },
};

/// A member function works the value out.
template <auto function>
inline constexpr Access<detail::Struct<function>> computed = {
    nullptr,
    [](const auto &report, const Place &) { return detail::variant((report.*function)()); },
};

/// The size of the member.
template <auto member>
inline constexpr Access<detail::Struct<member>> sizeOf = {
    nullptr,
    [](const auto &report, const Place &) { return QVariant(static_cast<uint>((report.*member).size())); },
};

/// The member is a vector of records.
template <auto member>
inline constexpr Access<detail::Struct<member>> listOf = {
    [](auto &report, const Source &from) {
        using Element = typename detail::Type<member>::value_type;
        auto &list = report.*member;
        list.resize(static_cast<std::size_t>(from.recordCount()));
        int start = from.place.at;
        for (Element &record : list) {
            for (const Row<Element> &row : layoutOf(&record))
                row.access.read(record, {from.payload, start, row.place});
            start += from.place.size;
        }
    },
    nullptr,
    [](const auto &report) {
        QVector<QVector<Field>> records;
        for (const auto &record : report.*member)
            records.append(fieldsOf(record));
        return records;
    },
    [] { return infoOf<typename detail::Type<member>::value_type>(); },
};

} // namespace protocol
