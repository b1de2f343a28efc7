// SPDX-License-Identifier: MIT
// One JSON object as one line, its members in the order in which they are added.
#pragma once

#include <QByteArray>
#include <QString>

#include <type_traits>

class JsonLine
{
public:
    /// {"v":1,"kind":...
    explicit JsonLine(const char *kind);

    JsonLine &add(const char *name, const QString &text);
    JsonLine &add(const char *name, const char *text) { return add(name, QString::fromUtf8(text)); }
    JsonLine &add(const char *name, bool value) { return raw(name, value ? "true" : "false"); }
    /// Not a number: null.
    JsonLine &add(const char *name, double value);
    template <class Integer, class = std::enable_if_t<std::is_integral_v<Integer> && !std::is_same_v<Integer, bool>>>
    JsonLine &add(const char *name, Integer value)
    {
        if constexpr (std::is_signed_v<Integer>)
            return raw(name, QByteArray::number(static_cast<qlonglong>(value)));
        else
            return raw(name, QByteArray::number(static_cast<qulonglong>(value)));
    }
    JsonLine &addNull(const char *name) { return raw(name, "null"); }
    /// `json` stands as it is.
    JsonLine &raw(const char *name, const QByteArray &json);

    /// The object, closed.
    QByteArray take();

private:
    QByteArray m_json;
};

/// Appends `text` in quotes, escaped.
void appendJson(QByteArray &to, const QString &text);
/// As few digits as bring the number back; null where it is none.
QByteArray jsonNumber(double value);
QByteArray jsonNumber(float value);
