// SPDX-License-Identifier: MIT
// AES-128 in its modes, and CMAC, by OpenSSL's libcrypto.
#pragma once

#include <QByteArray>

namespace simulator::crypto {

inline constexpr int kBlockSize = 16;

/// Encrypts or decrypts whole blocks without padding. `key` has 16 bytes; `iv` has 16 for CBC and none for ECB. Empty
/// where the library refuses.
QByteArray encrypt(const QByteArray &key, const QByteArray &iv, const QByteArray &data);
QByteArray decrypt(const QByteArray &key, const QByteArray &iv, const QByteArray &data);

/// AES-CMAC (RFC 4493), 16 bytes.
QByteArray cmac(const QByteArray &key, const QByteArray &message);

} // namespace simulator::crypto
