#include "platform/qt/services/Signature.h"

#include <QLibrary>

#include <openssl/evp.h>

#include <memory>

namespace quillow {
namespace {

/// The functions of libcrypto that a check needs.
struct Crypto {
    decltype(&EVP_PKEY_new_raw_public_key) newKey = nullptr;
    decltype(&EVP_PKEY_free) freeKey = nullptr;
    decltype(&EVP_MD_CTX_new) newContext = nullptr;
    decltype(&EVP_MD_CTX_free) freeContext = nullptr;
    decltype(&EVP_DigestVerifyInit) init = nullptr;
    decltype(&EVP_DigestVerify) verify = nullptr;
    bool isThere = false;
};

template <typename Function>
bool resolve(QLibrary& library, Function& function, const char* name) {
    function = reinterpret_cast<Function>(library.resolve(name));
    return function != nullptr;
}

Crypto loaded() {
    QLibrary library(QStringLiteral("crypto"), OPENSSL_VERSION_MAJOR);
    Crypto crypto;
    crypto.isThere =
        resolve(library, crypto.newKey, "EVP_PKEY_new_raw_public_key") &&
        resolve(library, crypto.freeKey, "EVP_PKEY_free") && resolve(library, crypto.newContext, "EVP_MD_CTX_new") &&
        resolve(library, crypto.freeContext, "EVP_MD_CTX_free") &&
        resolve(library, crypto.init, "EVP_DigestVerifyInit") && resolve(library, crypto.verify, "EVP_DigestVerify");
    return crypto;
}

const unsigned char* unsignedData(const QByteArray& bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.constData());
}

} // namespace

bool isSignatureOf(const QByteArray& signature, const QByteArray& bytes, const QByteArray& publicKey) {
    if (signature.size() != kSignatureSize || publicKey.size() != kPublicKeySize) return false;
    static const Crypto crypto = loaded();
    if (!crypto.isThere) return false;
    const std::unique_ptr<EVP_PKEY, decltype(crypto.freeKey)> key(
        crypto.newKey(EVP_PKEY_ED25519, nullptr, unsignedData(publicKey), kPublicKeySize), crypto.freeKey);
    const std::unique_ptr<EVP_MD_CTX, decltype(crypto.freeContext)> context(crypto.newContext(), crypto.freeContext);
    // Ed25519 has its own digest, so none is named.
    return key && context && crypto.init(context.get(), nullptr, nullptr, nullptr, key.get()) == 1 &&
           crypto.verify(context.get(), unsignedData(signature), static_cast<std::size_t>(signature.size()),
                         unsignedData(bytes), static_cast<std::size_t>(bytes.size())) == 1;
}

} // namespace quillow
