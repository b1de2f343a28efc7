// SPDX-License-Identifier: MIT
#include "console/textcolours.h"

#include <QColor>
#include <QStringList>
#include <QTextCharFormat>

#include <algorithm>

namespace {

// The eight colours of a terminal, then the eight bright ones.
constexpr QRgb colours[] = {
    0xFF000000, 0xFFCD3131, 0xFF0DBC79, 0xFFE5E510, 0xFF2472C8, 0xFFBC3FBC, 0xFF11A8CD, 0xFFE5E5E5,
    0xFF767676, 0xFFF14C4C, 0xFF23D18B, 0xFFF5F543, 0xFF3B8EEA, 0xFFD670D6, 0xFF29B8DB, 0xFFFFFFFF,
};
constexpr int kBright = 8;
constexpr int kCube = 16;  // 6 x 6 x 6 colours, blue changing fastest
constexpr int kGrey = 232; // 24 shades from dark to light, without black and white
constexpr int kNumbered = 256;

int cubeLevel(int step)
{
    return step == 0 ? 0 : 55 + 40 * step;
}

QColor numberedColour(int number)
{
    if (number < kCube)
        return QColor(colours[number]);
    if (number >= kGrey) {
        const int level = 8 + 10 * (number - kGrey);
        return QColor(level, level, level);
    }
    const int place = number - kCube;
    return QColor(cubeLevel(place / 36), cubeLevel(place / 6 % 6), cubeLevel(place % 6));
}

/// Numbers read one by one; 0 behind the last.
class Numbers
{
public:
    explicit Numbers(const QString &parameters) : m_texts(parameters.split(QLatin1Char(';'))) {}

    bool atEnd() const { return m_texts.isEmpty(); }
    int next() { return m_texts.isEmpty() ? 0 : m_texts.takeFirst().toInt(); }

private:
    QStringList m_texts;
};

/// What follows 38 or 48; an invalid colour where that is no colour.
QColor extendedColour(Numbers &numbers)
{
    const int kind = numbers.next();
    if (kind == 5) {
        const int number = numbers.next();
        return number >= 0 && number < kNumbered ? numberedColour(number) : QColor();
    }
    if (kind != 2)
        return {};
    int levels[3] = {};
    for (int &level : levels)
        level = std::clamp(numbers.next(), 0, 255);
    return QColor(levels[0], levels[1], levels[2]);
}

bool isBetween(int code, int first)
{
    return code >= first && code < first + kBright;
}

QColor colourOf(int code, int plain, int bright, Numbers &numbers)
{
    if (isBetween(code, plain))
        return QColor(colours[code - plain]);
    if (isBetween(code, bright))
        return QColor(colours[kBright + code - bright]);
    return code == plain + 8 ? extendedColour(numbers) : QColor();
}

void select(QTextCharFormat &format, int code, Numbers &numbers)
{
    if (code == 0)
        format = QTextCharFormat();
    else if (code == 1 || code == 22)
        format.setFontWeight(code == 1 ? QFont::Bold : QFont::Normal);
    else if (code == 39)
        format.clearForeground();
    else if (code == 49)
        format.clearBackground();
    else if (const QColor text = colourOf(code, 30, 90, numbers); text.isValid())
        format.setForeground(text);
    else if (const QColor background = colourOf(code, 40, 100, numbers); background.isValid())
        format.setBackground(background);
}

} // namespace

void selectColours(QTextCharFormat &format, const QString &parameters)
{
    for (Numbers numbers(parameters); !numbers.atEnd();)
        select(format, numbers.next(), numbers);
}
