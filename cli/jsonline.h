// SPDX-License-Identifier: MIT
// One JSON object as one line, its members in the order in which they are added.
#pragma once

#include <QByteArray>
#include <QString>

#include <charconv>
#include <type_traits>

/// Appends `text` in quotes, escaped.
void appendJson(QByteArray &to, const QString &text);

template <class Integer> void appendNumber(QByteArray &to, Integer value)
{
    char digits[24];
    to.append(digits, static_cast<int>(std::to_chars(digits, digits + sizeof digits, value).ptr - digits));
}

class JsonLine
{
public:
    /// {"v":1,"kind":...
    explicit JsonLine(const char *kind);

    JsonLine &add(const char *name, const QString &text);
    /// `plain`: ASCII that needs no escapes.
    JsonLine &add(const char *name, QLatin1String plain);
    JsonLine &add(const char *name, const char *text) { return add(name, QString::fromUtf8(text)); }
    JsonLine &add(const char *name, bool value) { return raw(name, value ? "true" : "false"); }
    /// Not a number: null.
    JsonLine &add(const char *name, double value);
    template <class Integer, class = std::enable_if_t<std::is_integral_v<Integer> && !std::is_same_v<Integer, bool>>>
    JsonLine &add(const char *name, Integer value)
    {
        appendNumber(member(name), value);
        return *this;
    }
    JsonLine &addNull(const char *name) { return raw(name, "null"); }
    /// `json` stands as it is.
    JsonLine &raw(const char *name, const QByteArray &json);
    /// Begins a member; the caller appends its value.
    QByteArray &member(const char *name);

    /// The object, closed.
    QByteArray take();

private:
    QByteArray m_json;
};

/// As few digits as bring the number back; null where it is none.
QByteArray jsonNumber(double value);
QByteArray jsonNumber(float value);
