// SPDX-License-Identifier: MIT
#include "cli/jsonline.h"

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
    int plain = 0; // where the bytes begin that stand as they are
    for (int i = 0; i < utf8.size(); ++i) {
        const char character = utf8.at(i);
        const bool isControl = static_cast<unsigned char>(character) < ' ';
        if (!isControl && character != '"' && character != '\\')
            continue;
        to.append(utf8.constData() + plain, i - plain);
        if (isControl)
            to.append("\\u00", 4).append(QByteArray(1, character).toHex());
        else
            to.append('\\').append(character);
        plain = i + 1;
    }
    to.append(utf8.constData() + plain, utf8.size() - plain).append('"');
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

QByteArray &JsonLine::member(const char *name)
{
    return m_json.append(",\"", 2).append(name).append("\":", 2);
}

JsonLine &JsonLine::raw(const char *name, const QByteArray &json)
{
    member(name).append(json);
    return *this;
}

JsonLine &JsonLine::add(const char *name, const QString &text)
{
    appendJson(member(name), text);
    return *this;
}

JsonLine &JsonLine::add(const char *name, QLatin1String plain)
{
    member(name).append('"').append(plain.data(), plain.size()).append('"');
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
