// SPDX-License-Identifier: MIT
// Cryptographic services engine: AES-128, CMAC and random numbers with the keys of the published examples.
#include "protocol/cse.h"

#include "protocol/payload.h"
#include "simulator/arguments.h"
#include "simulator/board.h"
#include "simulator/crypto.h"
#include "simulator/unit.h"
#include "simulator/units.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace simulator {

namespace {

using protocol::ModuleId;
using protocol::PayloadWriter;
namespace cse = protocol::cse;

// FIPS 197, appendix C.1; SP 800-38A, appendix F.2; RFC 4493, section 4.
const QByteArray kEcbKey = QByteArray::fromHex("000102030405060708090A0B0C0D0E0F");
const QByteArray kCbcKey = QByteArray::fromHex("2B7E151628AED2A6ABF7158809CF4F3C");
const QByteArray kCbcIv = QByteArray::fromHex("000102030405060708090A0B0C0D0E0F");
const QByteArray kCmacKey = kCbcKey;

constexpr int kWorkMs = 3;         // the firmware's own share
constexpr float kCommandUs = 21.5; // to fetch a command and its key
constexpr float kBlockUs = 1.9F;
constexpr int kMaxResult = 32768;

// Operations that take data, by the words behind "cse".
constexpr const char *dataOperations[] = {"2 1 ", "2 2 ", "3 1 ", "3 2 ", "4 ", "5 ", "7 "};

bool isHexDigit(QChar character)
{
    const char16_t c = character.unicode();
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// Bytes of a hexadecimal text; nothing for any other text.
std::optional<QByteArray> bytesOf(const QString &text)
{
    if (text.size() % 2 != 0 || !std::all_of(text.begin(), text.end(), isHexDigit))
        return std::nullopt;
    return QByteArray::fromHex(text.toLatin1());
}

// Time for data of so many hexadecimal digits: a started block counts, and one more for the start value.
float timeFor(int digits)
{
    const int blocks = 1 + (digits + cse::kBlockDigits - 1) / cse::kBlockDigits;
    return kCommandUs + kBlockUs * static_cast<float>(blocks);
}

class CryptoEngine : public Unit
{
public:
    explicit CryptoEngine(Board &board) : m_board(board)
    {
        const auto run = [this](void (CryptoEngine::*work)(const QStringList &)) {
            return [this, work](const QStringList &arguments) { begin(work, arguments); };
        };
        board.addCommands({
            {"cse 1", "", "load the demonstration keys", run(&CryptoEngine::loadKeys)},
            {"cse 2 1", "[<hex>]", "encrypt AES-128-ECB", run(&CryptoEngine::encryptEcb)},
            {"cse 2 2", "[<hex>]", "encrypt AES-128-CBC", run(&CryptoEngine::encryptCbc)},
            {"cse 3 1", "[<hex>]", "decrypt AES-128-ECB", run(&CryptoEngine::decryptEcb)},
            {"cse 3 2", "[<hex>]", "decrypt AES-128-CBC", run(&CryptoEngine::decryptCbc)},
            {"cse 4", "[<hex>]", "generate AES-128-CMAC", run(&CryptoEngine::generateCmac)},
            {"cse 5", "[<hex>] <cmac>", "verify AES-128-CMAC", run(&CryptoEngine::verifyCmac)},
            {"cse 6 1", "", "pseudo random number", run(&CryptoEngine::pseudoRandom)},
            {"cse 6 2", "", "true random number; initialises the pseudo random generator",
             run(&CryptoEngine::trueRandom)},
            {"cse 7", "[<hex>]", "extend the pseudo random seed", run(&CryptoEngine::extendSeed)},
            {"cse", "...", "", run(&CryptoEngine::refuse)},
            {"sick cse", "<0-255>", "the engine's next operation ends with this error",
             [this](const auto &a) { setError(a[0]); }},
        });
    }

    QString name() const override { return QStringLiteral("cse"); }
    // Keys are in flash and stay; the generator's state is lost.
    void reset(ResetKind) override
    {
        m_busy = false;
        m_seed.clear();
        m_generatorKey = m_board.drawnBytes(crypto::kBlockSize);
    }
    void heal() override { m_error = cse::NoError; }
    QString status() const override
    {
        return QStringLiteral("keys %1, seed %2")
            .arg(m_keys ? QStringLiteral("loaded") : QStringLiteral("empty"),
                 m_seed.isEmpty() ? QStringLiteral("not initialised") : QStringLiteral("initialised"));
    }

private:
    // The engine takes a while; a command that comes meanwhile is refused.
    void begin(void (CryptoEngine::*run)(const QStringList &), const QStringList &arguments)
    {
        if (m_busy) {
            sendStatus(cse::Busy);
            return;
        }
        m_busy = true;
        m_timeUs = timeFor(arguments.join(QString()).size()) + static_cast<float>(m_board.drawn(0, 100)) / 100;
        m_board.after(kWorkMs + static_cast<int>(m_timeUs / 1000), [this, run, arguments] {
            m_busy = false;
            if (const quint8 error = std::exchange(m_error, cse::NoError); error != cse::NoError)
                sendStatus(error);
            else
                (this->*run)(arguments);
        });
    }

    // A line that is no operation, or has a blank in its data.
    void refuse(const QStringList &words)
    {
        const QString line = words.join(QLatin1Char(' ')) + QLatin1Char(' ');
        const bool takesData = std::ranges::any_of(
            dataOperations, [&line](const char *operation) { return line.startsWith(QLatin1String(operation)); });
        sendStatus(takesData ? cse::LengthError : cse::InvalidCommand);
    }

    void setError(const QString &text)
    {
        if (const auto code = decimal(text, 255))
            m_error = static_cast<quint8>(*code);
        else
            m_board.say(QStringLiteral("an error is a number from 0 to 255"));
    }

    void sendStatus(quint8 code) { m_board.send(ModuleId::Cse, cse::StatusReport, PayloadWriter().u8(code).take()); }

    void sendResult(cse::Operation operation, const QByteArray &result, bool passed = true)
    {
        sendStatus(cse::NoError);
        PayloadWriter payload;
        payload.u8(operation).f32be(m_timeUs).u16be(static_cast<unsigned>(result.size()));
        if (operation == cse::VerifyCmac)
            payload.u8(passed);
        m_board.send(ModuleId::Cse, cse::ResultReport, payload.bytes(result).take());
    }

    void loadKeys(const QStringList &)
    {
        m_keys = true;
        sendStatus(cse::NoError);
    }

    // Whole blocks to work on; an error is reported where there are none.
    std::optional<QByteArray> blocks(const QStringList &arguments)
    {
        auto data = bytesOf(arguments.value(0));
        if (!m_keys)
            sendStatus(cse::EmptyKey);
        else if (!data || data->isEmpty() || data->size() % crypto::kBlockSize != 0 || data->size() > kMaxResult)
            sendStatus(cse::LengthError);
        else
            return data;
        return std::nullopt;
    }

    void encryptEcb(const QStringList &arguments)
    {
        if (const auto data = blocks(arguments))
            sendResult(cse::EncryptEcb, crypto::encrypt(kEcbKey, {}, *data));
    }
    void encryptCbc(const QStringList &arguments)
    {
        if (const auto data = blocks(arguments))
            sendResult(cse::EncryptCbc, crypto::encrypt(kCbcKey, kCbcIv, *data));
    }
    void decryptEcb(const QStringList &arguments)
    {
        if (const auto data = blocks(arguments))
            sendResult(cse::DecryptEcb, crypto::decrypt(kEcbKey, {}, *data));
    }
    void decryptCbc(const QStringList &arguments)
    {
        if (const auto data = blocks(arguments))
            sendResult(cse::DecryptCbc, crypto::decrypt(kCbcKey, kCbcIv, *data));
    }

    std::optional<QByteArray> cmacOf(const QString &message)
    {
        const auto bytes = bytesOf(message);
        if (!m_keys)
            sendStatus(cse::KeyNotAvailable);
        else if (!bytes)
            sendStatus(cse::LengthError);
        else
            return crypto::cmac(kCmacKey, *bytes);
        return std::nullopt;
    }

    void generateCmac(const QStringList &arguments)
    {
        if (const auto mac = cmacOf(arguments.value(0)))
            sendResult(cse::GenerateCmac, *mac);
    }

    // One argument alone is the CMAC of an empty message.
    void verifyCmac(const QStringList &arguments)
    {
        const auto mac = cmacOf(arguments.size() > 1 ? arguments.first() : QString());
        if (!mac)
            return;
        const auto given = bytesOf(arguments.last());
        if (given && given->size() == crypto::kBlockSize)
            sendResult(cse::VerifyCmac, {}, *given == *mac);
        else
            sendStatus(cse::LengthError);
    }

    void trueRandom(const QStringList &)
    {
        m_seed = m_board.drawnBytes(crypto::kBlockSize);
        sendResult(cse::TrueRandom, m_board.drawnBytes(crypto::kBlockSize));
    }

    void pseudoRandom(const QStringList &)
    {
        if (m_seed.isEmpty()) {
            sendStatus(cse::SeedNotInitialized);
            return;
        }
        // The number is another function of the state than the next state, so that it does not tell the state.
        m_seed = crypto::encrypt(m_generatorKey, {}, m_seed);
        sendResult(cse::PseudoRandom, crypto::cmac(m_generatorKey, m_seed));
    }

    void extendSeed(const QStringList &arguments)
    {
        const auto entropy = bytesOf(arguments.value(0));
        if (m_seed.isEmpty()) {
            sendStatus(cse::SeedNotInitialized);
        } else if (!entropy || entropy->size() != crypto::kBlockSize) {
            sendStatus(cse::LengthError);
        } else {
            m_seed = crypto::cmac(m_generatorKey, m_seed + *entropy);
            sendStatus(cse::NoError);
        }
    }

    Board &m_board;
    bool m_keys = false;
    bool m_busy = false;
    quint8 m_error = cse::NoError; // that the next operation ends with
    float m_timeUs = 0;            // of the operation under way
    QByteArray m_generatorKey;
    QByteArray m_seed; // state of the pseudo random generator; empty before it is initialised
};

} // namespace

std::unique_ptr<Unit> makeCryptoEngine(Board &board)
{
    return std::make_unique<CryptoEngine>(board);
}

} // namespace simulator
