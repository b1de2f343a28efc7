// SPDX-License-Identifier: MIT
#include "cli/jsonline.h"

#include <charconv>
#include <cmath>

namespace {

constexpr int kUsualLength = 384; // bytes of most lines

template <class Float> QByteArray shortest(Float value)
{
    if (!std::isfinite(value))
        return "null";
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    return QByteArray(digits, static_cast<int>(end - digits));
}

} // namespace

void appendJson(QByteArray &to, const QString &text)
{
    to.append('"');
    const QByteArray utf8 = text.toUtf8();
    for (const char character : utf8) {
        if (character == '"' || character == '\\')
            to.append('\\').append(character);
        else if (static_cast<unsigned char>(character) < ' ')
            to.append("\\u00").append(QByteArray(1, character).toHex());
        else
            to.append(character);
    }
    to.append('"');
}

QByteArray jsonNumber(double value)
{
    return shortest(value);
}

QByteArray jsonNumber(float value)
{
    return shortest(value);
}

JsonLine::JsonLine(const char *kind)
{
    m_json.reserve(kUsualLength);
    m_json.append("{\"v\":1,\"kind\":\"").append(kind).append('"');
}

JsonLine &JsonLine::raw(const char *name, const QByteArray &json)
{
    m_json.append(",\"").append(name).append("\":").append(json);
    return *this;
}

JsonLine &JsonLine::add(const char *name, const QString &text)
{
    m_json.append(",\"").append(name).append("\":");
    appendJson(m_json, text);
    return *this;
}

JsonLine &JsonLine::add(const char *name, double value)
{
    return raw(name, jsonNumber(value));
}

QByteArray JsonLine::take()
{
    return m_json.append('}');
}
