// SPDX-License-Identifier: MIT
#include "protocol/cse.h"

#include "protocol/payload.h"

#include <array>

namespace protocol::cse {

namespace {

// 1 and 13 to 15 are codes that the engine does not assign.
constexpr std::array errorTexts = {
    "No error",
    "Invalid fault code",
    "Command sequence error",
    "Key not available",
    "Invalid key",
    "Empty key",
    "No secure boot",
    "Key write protected",
    "Key update error",
    "Random number seed not initialized",
    "Internal debug not allowed",
    "Command issued while busy",
    "System memory error",
    "Invalid fault code",
    "Invalid fault code",
    "Invalid fault code",
    "Internal memory error",
    "Invalid command",
    "TRNG error",
    "CSE flash block error",
    "Internal command processor error",
    "Length error",
};
static_assert(errorTexts.size() == LengthError + 1);

} // namespace

quint8 decodeStatus(const QByteArray &payload)
{
    return PayloadReader(payload).u8(0);
}

Result decodeResult(const QByteArray &payload)
{
    const PayloadReader read(payload);
    return {read.u8(0), read.f32be(1), read.u8(7) != 0, payload.right(read.u16be(5))};
}

QString errorText(quint8 code)
{
    return code < errorTexts.size() ? QString::fromLatin1(errorTexts[code]) : QString::number(code);
}

} // namespace protocol::cse
