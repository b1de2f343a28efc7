// SPDX-License-Identifier: MIT
#include "simulator/crypto.h"

#include <openssl/evp.h>
#include <openssl/params.h>

#include <memory>

namespace simulator::crypto {

namespace {

const unsigned char *bytesOf(const QByteArray &data)
{
    return reinterpret_cast<const unsigned char *>(data.constData());
}

QByteArray cipher(const QByteArray &key, const QByteArray &iv, const QByteArray &data, bool forward)
{
    const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(EVP_CIPHER_CTX_new(),
                                                                                  EVP_CIPHER_CTX_free);
    QByteArray result(data.size() + kBlockSize, '\0');
    auto *out = reinterpret_cast<unsigned char *>(result.data());
    int length = 0;
    int rest = 0;
    const bool ok = EVP_CipherInit_ex(context.get(), iv.isEmpty() ? EVP_aes_128_ecb() : EVP_aes_128_cbc(), nullptr,
                                      bytesOf(key), iv.isEmpty() ? nullptr : bytesOf(iv), forward)
        && EVP_CIPHER_CTX_set_padding(context.get(), 0)
        && EVP_CipherUpdate(context.get(), out, &length, bytesOf(data), data.size())
        && EVP_CipherFinal_ex(context.get(), out + length, &rest);
    return ok ? result.left(length + rest) : QByteArray();
}

} // namespace

QByteArray encrypt(const QByteArray &key, const QByteArray &iv, const QByteArray &data)
{
    return cipher(key, iv, data, true);
}

QByteArray decrypt(const QByteArray &key, const QByteArray &iv, const QByteArray &data)
{
    return cipher(key, iv, data, false);
}

QByteArray cmac(const QByteArray &key, const QByteArray &message)
{
    const std::unique_ptr<EVP_MAC, decltype(&EVP_MAC_free)> mac(EVP_MAC_fetch(nullptr, "CMAC", nullptr), EVP_MAC_free);
    const std::unique_ptr<EVP_MAC_CTX, decltype(&EVP_MAC_CTX_free)> context(EVP_MAC_CTX_new(mac.get()),
                                                                            EVP_MAC_CTX_free);
    char name[] = "AES-128-CBC";
    const OSSL_PARAM parameters[] = {OSSL_PARAM_construct_utf8_string("cipher", name, 0), OSSL_PARAM_construct_end()};
    QByteArray result(kBlockSize, '\0');
    std::size_t length = 0;
    const bool ok = EVP_MAC_init(context.get(), bytesOf(key), static_cast<std::size_t>(key.size()), parameters)
        && EVP_MAC_update(context.get(), bytesOf(message), static_cast<std::size_t>(message.size()))
        && EVP_MAC_final(context.get(), reinterpret_cast<unsigned char *>(result.data()), &length, kBlockSize);
    return ok ? result : QByteArray();
}

} // namespace simulator::crypto
