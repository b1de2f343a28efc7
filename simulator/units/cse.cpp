// SPDX-License-Identifier: MIT
// Cryptographic services engine: AES-128, CMAC and random numbers with the keys of the published examples.
#include "protocol/cse.h"

#include "protocol/payload.h"
#include "simulator/board.h"
#include "simulator/crypto.h"
#include "simulator/unit.h"
#include "simulator/units.h"

#include <optional>

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

constexpr int kWorkMs = 3;
constexpr int kMaxResult = 32768;

// Bytes of a hexadecimal text; nothing for any other text.
std::optional<QByteArray> bytesOf(const QString &text)
{
    const QByteArray bytes = QByteArray::fromHex(text.toLatin1());
    return bytes.size() * 2 == text.size() ? std::optional(bytes) : std::nullopt;
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
        });
    }

    QString name() const override { return QStringLiteral("cse"); }
    // Keys are in flash and stay; the generator's state is lost.
    void reset(ResetKind) override
    {
        m_busy = false;
        m_seed.clear();
    }
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
        m_board.after(kWorkMs, [this, run, arguments] {
            m_busy = false;
            (this->*run)(arguments);
        });
    }

    void sendStatus(quint8 code) { m_board.send(ModuleId::Cse, cse::StatusReport, PayloadWriter().u8(code).take()); }

    void sendResult(cse::Operation operation, const QByteArray &result, bool passed = true)
    {
        sendStatus(cse::NoError);
        const int blocks = 1 + result.size() / crypto::kBlockSize;
        const float time =
            21.5F + 1.9F * static_cast<float>(blocks) + static_cast<float>(m_board.drawn(0, 100)) / 100.0F;
        PayloadWriter payload;
        payload.u8(operation).f32be(time).u16be(static_cast<unsigned>(result.size()));
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
        m_seed = crypto::randomBytes(crypto::kBlockSize);
        sendResult(cse::TrueRandom, crypto::randomBytes(crypto::kBlockSize));
    }

    void pseudoRandom(const QStringList &)
    {
        if (m_seed.isEmpty()) {
            sendStatus(cse::SeedNotInitialized);
            return;
        }
        m_seed = crypto::encrypt(kEcbKey, {}, m_seed);
        sendResult(cse::PseudoRandom, m_seed);
    }

    void extendSeed(const QStringList &arguments)
    {
        const auto entropy = bytesOf(arguments.value(0));
        if (m_seed.isEmpty()) {
            sendStatus(cse::SeedNotInitialized);
        } else if (!entropy || entropy->size() != crypto::kBlockSize) {
            sendStatus(cse::LengthError);
        } else {
            m_seed = crypto::cmac(kCmacKey, m_seed + *entropy);
            sendStatus(cse::NoError);
        }
    }

    Board &m_board;
    bool m_keys = false;
    bool m_busy = false;
    QByteArray m_seed; // state of the pseudo random generator; empty before it is initialised
};

} // namespace

std::unique_ptr<Unit> makeCryptoEngine(Board &board)
{
    return std::make_unique<CryptoEngine>(board);
}

} // namespace simulator
