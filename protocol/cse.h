// SPDX-License-Identifier: MIT
// Cryptographic services engine.
#pragma once

#include "protocol/latin1.h"
#include "protocol/layout.h"

#include <QByteArray>
#include <QString>

namespace protocol::cse {

enum ReportType : quint8 { StatusReport = 1, ResultReport = 4 };

/// Error codes of the engine.
enum Error : quint8 {
    NoError = 0,
    SequenceError = 2,
    KeyNotAvailable = 3,
    InvalidKey = 4,
    EmptyKey = 5,
    SeedNotInitialized = 9,
    Busy = 11,
    InvalidCommand = 17,
    LengthError = 21,
};

/// Operations in the order of their codes.
enum Operation : quint8 {
    EncryptEcb = 0,
    EncryptCbc = 1,
    DecryptEcb = 2,
    DecryptCbc = 3,
    GenerateCmac = 4,
    VerifyCmac = 5,
    PseudoRandom = 6,
    TrueRandom = 7,
};

struct Status {
    quint8 error = 0; // Error; other codes have a text too

    bool operator==(const Status &) const = default;
};

struct Result {
    quint8 operation = 0;
    float time = 0;     // microseconds
    quint16 length = 0; // announced number of result bytes
    bool passed = false;
    QByteArray bytes;

    bool operator==(const Result &) const = default;
};

/// Error code; none is no error.
quint8 decodeStatus(const QByteArray &payload);
Result decodeResult(const QByteArray &payload);

/// "Key not available"; the number for codes beyond the table.
QString errorText(quint8 code);
/// "encrypt AES-128-ECB"; no text beyond the operations
QString operationName(quint8 operation);

// clang-format off
inline constexpr auto kStatusFields = rowsOf<Status>({
    {"error", u8(0), into<&Status::error>, {.meaning = "error of the engine; 0: it works on a command", .words = errorText}},
});
inline constexpr auto kResultFields = rowsOf<Result>({
    {"operation", u8(0), into<&Result::operation>, {.meaning = "what was done", .words = operationName}},
    {"time", f32be(1), into<&Result::time>, {.meaning = "time of the operation", .unit = "us"}},
    {"length", u16be(5), into<&Result::length>, {.meaning = "number of result bytes", .unit = "bytes"}},
    {"passed", u8(7), into<&Result::passed>, {.meaning = "verdict of a verification: not 0", .onlyWhen = VerifyCmac}},
    {"bytes", coded(Coding::Tail, 5, 0), into<&Result::bytes>, {.meaning = "the result"}},
});
// clang-format on
constexpr const auto &layoutOf(const Status *)
{
    return kStatusFields;
}
constexpr const auto &layoutOf(const Result *)
{
    return kResultFields;
}

/// Characters of one 128-bit block in hexadecimal.
inline constexpr int kBlockDigits = 32;

/// Commands; texts as typed.
inline constexpr QLatin1String kLoadKeys = "cse 1"_l1;
inline constexpr QLatin1String kEncryptEcb = "cse 2 1 "_l1;
inline constexpr QLatin1String kEncryptCbc = "cse 2 2 "_l1;
inline constexpr QLatin1String kDecryptEcb = "cse 3 1 "_l1;
inline constexpr QLatin1String kDecryptCbc = "cse 3 2 "_l1;
inline constexpr QLatin1String kGenerateCmac = "cse 4 "_l1;
inline constexpr QLatin1String kVerifyCmac = "cse 5 "_l1;
inline constexpr QLatin1String kPseudoRandom = "cse 6 1"_l1;
inline constexpr QLatin1String kTrueRandom = "cse 6 2"_l1;
inline constexpr QLatin1String kExtendSeed = "cse 7 "_l1;

} // namespace protocol::cse
