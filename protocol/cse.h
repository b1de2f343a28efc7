// SPDX-License-Identifier: MIT
// Cryptographic services engine.
#pragma once

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

struct Result {
    quint8 operation = 0;
    float time = 0; // microseconds
    bool passed = false;
    QByteArray bytes;

    bool operator==(const Result &) const = default;
};

/// Error code, byte 0; none is no error.
quint8 decodeStatus(const QByteArray &payload);
/// Byte 0 operation, 1-4 time (float), 5-6 length N, 7 verdict of a verification; the last N bytes are the result.
Result decodeResult(const QByteArray &payload);

/// "Key not available"; the number for codes beyond the table.
QString errorText(quint8 code);

/// Characters of one 128-bit block in hexadecimal.
inline constexpr int kBlockDigits = 32;

/// Commands; texts as typed.
inline constexpr QLatin1String kLoadKeys("cse 1");
inline constexpr QLatin1String kEncryptEcb("cse 2 1 ");
inline constexpr QLatin1String kEncryptCbc("cse 2 2 ");
inline constexpr QLatin1String kDecryptEcb("cse 3 1 ");
inline constexpr QLatin1String kDecryptCbc("cse 3 2 ");
inline constexpr QLatin1String kGenerateCmac("cse 4 ");
inline constexpr QLatin1String kVerifyCmac("cse 5 ");
inline constexpr QLatin1String kPseudoRandom("cse 6 1");
inline constexpr QLatin1String kTrueRandom("cse 6 2");
inline constexpr QLatin1String kExtendSeed("cse 7 ");

} // namespace protocol::cse
