// SPDX-License-Identifier: MIT
// Latin-1 texts that are constants in every compiler: QLatin1String itself measures a C string with strlen, which only GCC
// accepts in a constant expression.
#pragma once

#include <QLatin1String>

#include <cstddef>

namespace protocol {

constexpr QLatin1String operator""_l1(const char *text, std::size_t size)
{
    return QLatin1String(text, static_cast<int>(size));
}

} // namespace protocol
