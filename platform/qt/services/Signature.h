// Ed25519 signatures (RFC 8032), checked by OpenSSL. Its library is loaded by the first check: a start of the program
// pays nothing, and an encrypted connection has loaded it anyway.
#pragma once

#include <QByteArray>

namespace quillow {

inline constexpr qsizetype kPublicKeySize = 32;
inline constexpr qsizetype kSignatureSize = 64;

/// True if `signature` is that of `bytes` by the owner of `publicKey`. False also if the library cannot be loaded.
/// Callable from any thread.
[[nodiscard]] bool isSignatureOf(const QByteArray& signature, const QByteArray& bytes, const QByteArray& publicKey);

} // namespace quillow
