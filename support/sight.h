// SPDX-License-Identifier: MIT
// How different two colours look: CIEDE2000 (CIE 142-2001), for normal sight and for the three kinds of colour blindness
// as Machado, Oliveira and Fernandes (2009) model them at full severity; contrast as WCAG 2.1 defines it.
#pragma once

#include <QColor>
#include <QHash>
#include <QImage>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace sight {

using Vector = std::array<double, 3>;
using Matrix = std::array<Vector, 3>;

inline Vector times(const Matrix &matrix, const Vector &vector)
{
    Vector result{};
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t k = 0; k < 3; ++k)
            result[i] += matrix[i][k] * vector[k];
    }
    return result;
}

// On linear red, green and blue.
// clang-format off
inline constexpr Matrix kinds[] = {
    {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
    {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}}, // protanopia
    {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}}, // deuteranopia
    {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}}, // tritanopia
};
inline constexpr Matrix xyzOfRgb =
    {{{0.4124564, 0.3575761, 0.1804375}, {0.2126729, 0.7151522, 0.0721750}, {0.0193339, 0.1191920, 0.9503041}}};
// clang-format on

inline Vector linear(QRgb colour)
{
    const auto part = [](int value) {
        const double share = value / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return {part(qRed(colour)), part(qGreen(colour)), part(qBlue(colour))};
}

inline double contrast(QRgb one, QRgb other)
{
    const auto [dark, light] = std::minmax({times(xyzOfRgb, linear(one))[1], times(xyzOfRgb, linear(other))[1]});
    return (light + 0.05) / (dark + 0.05);
}

/// L*, a*, b* under the standard illuminant D65.
inline Vector lab(QRgb colour, const Matrix &kind)
{
    Vector seen = times(kind, linear(colour));
    for (double &part : seen)
        part = std::clamp(part, 0.0, 1.0);
    const auto root = [](double t) { return t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116; };
    const Vector xyz = times(xyzOfRgb, seen);
    const double x = root(xyz[0] / 0.95047);
    const double y = root(xyz[1]);
    const double z = root(xyz[2] / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

inline double degrees(double radians)
{
    return radians * 180 / std::numbers::pi;
}

inline double cosine(double degree)
{
    return std::cos(degree * std::numbers::pi / 180);
}

inline double hue(double a, double b)
{
    const double angle = a == 0 && b == 0 ? 0 : degrees(std::atan2(b, a));
    return angle < 0 ? angle + 360 : angle;
}

inline double difference(const Vector &one, const Vector &other)
{
    const auto seventh = [](double c) { return std::sqrt(std::pow(c, 7) / (std::pow(c, 7) + std::pow(25.0, 7))); };
    const double stretch = 1.5 - 0.5 * seventh((std::hypot(one[1], one[2]) + std::hypot(other[1], other[2])) / 2);
    const double c1 = std::hypot(one[1] * stretch, one[2]);
    const double c2 = std::hypot(other[1] * stretch, other[2]);
    const double h1 = hue(one[1] * stretch, one[2]);
    const double h2 = hue(other[1] * stretch, other[2]);
    const bool grey = c1 * c2 == 0;

    double turn = grey ? 0 : h2 - h1;
    turn += turn > 180 ? -360 : turn < -180 ? 360 : 0;
    double mean = h1 + h2;
    if (!grey)
        mean = (std::abs(h1 - h2) <= 180 ? mean : mean < 360 ? mean + 360 : mean - 360) / 2;

    const double dL = other[0] - one[0];
    const double dC = c2 - c1;
    const double dH = 2 * std::sqrt(c1 * c2) * std::sin(turn / 2 * std::numbers::pi / 180);
    const double l = std::pow((one[0] + other[0]) / 2 - 50, 2);
    const double c = (c1 + c2) / 2;
    const double t = 1 - 0.17 * cosine(mean - 30) + 0.24 * cosine(2 * mean) + 0.32 * cosine(3 * mean + 6)
        - 0.20 * cosine(4 * mean - 63);
    const double sl = 1 + 0.015 * l / std::sqrt(20 + l);
    const double sc = 1 + 0.045 * c;
    const double sh = 1 + 0.015 * c * t;
    const double rotation = 60 * std::exp(-std::pow((mean - 275) / 25, 2));
    const double rt = -2 * seventh(c) * std::sin(rotation * std::numbers::pi / 180);
    return std::sqrt(std::pow(dL / sl, 2) + std::pow(dC / sc, 2) + std::pow(dH / sh, 2) + rt * (dC / sc) * (dH / sh));
}

/// The smallest difference of the two colours in the four kinds of sight.
inline double difference(QRgb one, QRgb other)
{
    double least = 1000;
    for (const Matrix &kind : kinds)
        least = std::min(least, difference(lab(one, kind), lab(other, kind)));
    return least;
}

/// The colour that fills most of a picture, so many pixels within its edge.
inline QRgb backgroundOf(const QImage &image, int edge = 4)
{
    QHash<QRgb, int> counts;
    for (int y = edge; y < image.height() - edge; ++y) {
        for (int x = edge; x < image.width() - edge; ++x)
            ++counts[image.pixel(x, y)];
    }
    QRgb most = 0;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        if (it.value() > counts.value(most))
            most = it.key();
    }
    return most;
}

} // namespace sight
