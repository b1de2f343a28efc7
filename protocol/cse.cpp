// SPDX-License-Identifier: MIT
#include "protocol/cse.h"

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
    return decode<Status>(payload).error;
}

Result decodeResult(const QByteArray &payload)
{
    return decode<Result>(payload);
}

QString errorText(quint8 code)
{
    return code < errorTexts.size() ? QString::fromLatin1(errorTexts[code]) : QString::number(code);
}

QString operationName(quint8 operation)
{
    constexpr std::array names = {"encrypt AES-128-ECB",  "encrypt AES-128-CBC",   "decrypt AES-128-ECB",
                                  "decrypt AES-128-CBC",  "generate AES-128-CMAC", "verify AES-128-CMAC",
                                  "pseudo random number", "true random number"};
    return operation < names.size() ? QString::fromLatin1(names[operation]) : QString();
}

} // namespace protocol::cse
