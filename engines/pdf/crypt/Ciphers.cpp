#include "engines/pdf/crypt/Ciphers.h"

#include <dlfcn.h>
#include <nettle/aes.h>
#include <nettle/arcfour.h>
#include <nettle/cbc.h>
#include <nettle/md5.h>
#include <nettle/sha2.h>
#include <nettle/version.h>

#include <algorithm>
#include <cassert>

namespace quillow::pdf {

namespace {

/// The name of the shared object for all releases with the headers' layout of contexts.
constexpr const char* kLibrary = "libnettle.so.8";
static_assert(NETTLE_VERSION_MAJOR == 3);

/// The functions of the library, by the names that its headers define.
class Library {
public:
    Library() {
        if (object_ == nullptr) return;
        isWhole_ = find(md5Init, "nettle_md5_init") && find(md5Update, "nettle_md5_update") &&
                   find(md5Digest, "nettle_md5_digest") && find(sha256Init, "nettle_sha256_init") &&
                   find(sha256Update, "nettle_sha256_update") && find(sha256Digest, "nettle_sha256_digest") &&
                   find(sha384Init, "nettle_sha384_init") && find(sha384Digest, "nettle_sha384_digest") &&
                   find(sha512Init, "nettle_sha512_init") && find(sha512Update, "nettle_sha512_update") &&
                   find(sha512Digest, "nettle_sha512_digest") && find(arcfourSetKey, "nettle_arcfour_set_key") &&
                   find(arcfourCrypt, "nettle_arcfour_crypt") &&
                   find(aes128SetEncryptKey, "nettle_aes128_set_encrypt_key") &&
                   find(aes128SetDecryptKey, "nettle_aes128_set_decrypt_key") &&
                   find(aes128Decrypt, "nettle_aes128_decrypt") &&
                   find(aes256SetDecryptKey, "nettle_aes256_set_decrypt_key") &&
                   find(aes256Decrypt, "nettle_aes256_decrypt") && find(cbcDecrypt, "nettle_cbc_decrypt") &&
                   find(cbcEncryptAes128, "nettle_cbc_aes128_encrypt");
    }
    [[nodiscard]] bool isWhole() const { return isWhole_; }

    decltype(&md5_init) md5Init = nullptr;
    decltype(&md5_update) md5Update = nullptr;
    decltype(&md5_digest) md5Digest = nullptr;
    decltype(&sha256_init) sha256Init = nullptr;
    decltype(&sha256_update) sha256Update = nullptr;
    decltype(&sha256_digest) sha256Digest = nullptr;
    decltype(&sha384_init) sha384Init = nullptr;
    decltype(&sha384_digest) sha384Digest = nullptr;
    decltype(&sha512_init) sha512Init = nullptr;
    decltype(&sha512_update) sha512Update = nullptr;
    decltype(&sha512_digest) sha512Digest = nullptr;
    decltype(&arcfour_set_key) arcfourSetKey = nullptr;
    decltype(&arcfour_crypt) arcfourCrypt = nullptr;
    decltype(&aes128_set_encrypt_key) aes128SetEncryptKey = nullptr;
    decltype(&aes128_set_decrypt_key) aes128SetDecryptKey = nullptr;
    decltype(&aes128_decrypt) aes128Decrypt = nullptr;
    decltype(&aes256_set_decrypt_key) aes256SetDecryptKey = nullptr;
    decltype(&aes256_decrypt) aes256Decrypt = nullptr;
    decltype(&cbc_decrypt) cbcDecrypt = nullptr;
    decltype(&cbc_aes128_encrypt) cbcEncryptAes128 = nullptr;

private:
    template <class Function>
    bool find(Function& function, const char* name) {
        function = reinterpret_cast<Function>(::dlsym(object_, name));
        return function != nullptr;
    }

    void* object_ = ::dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL); ///< never closed
    bool isWhole_ = false;
};

const Library& library() {
    static const Library loaded;
    return loaded;
}

const std::uint8_t* bytesOf(std::string_view view) {
    return reinterpret_cast<const std::uint8_t*>(view.data());
}

std::uint8_t* bytesOf(char* place) {
    return reinterpret_cast<std::uint8_t*>(place);
}

using Vector = std::array<std::uint8_t, kAesBlock>;

/// A copy, because the library leaves the next vector in it.
Vector copyOf(std::string_view vector) {
    assert(vector.size() == kAesBlock);
    Vector copy{};
    std::copy_n(bytesOf(vector), kAesBlock, copy.begin());
    return copy;
}

/// The library takes any cipher's function with a context of no type.
template <class Context>
void decryptChained(const Context& aes, void (*cipher)(const Context*, std::size_t, std::uint8_t*, const std::uint8_t*),
                    Vector vector, std::string_view blocks, char* out) {
    library().cbcDecrypt(&aes, reinterpret_cast<nettle_cipher_func*>(cipher), kAesBlock, vector.data(), blocks.size(),
                         bytesOf(out), bytesOf(blocks));
}

void decryptAes128(std::string_view key, const Vector& vector, std::string_view blocks, char* out) {
    aes128_ctx aes{};
    library().aes128SetDecryptKey(&aes, bytesOf(key));
    decryptChained(aes, library().aes128Decrypt, vector, blocks, out);
}

void decryptAes256(std::string_view key, const Vector& vector, std::string_view blocks, char* out) {
    aes256_ctx aes{};
    library().aes256SetDecryptKey(&aes, bytesOf(key));
    decryptChained(aes, library().aes256Decrypt, vector, blocks, out);
}

} // namespace

bool hasCiphers() {
    return library().isWhole();
}

Md5 md5(std::initializer_list<std::string_view> parts) {
    md5_ctx context;
    library().md5Init(&context);
    for (const std::string_view part : parts)
        library().md5Update(&context, part.size(), bytesOf(part));
    Md5 digest{};
    library().md5Digest(&context, digest.size(), bytesOf(digest.data()));
    return digest;
}

Sha2 sha256(std::initializer_list<std::string_view> parts) {
    sha256_ctx context;
    library().sha256Init(&context);
    for (const std::string_view part : parts)
        library().sha256Update(&context, part.size(), bytesOf(part));
    Sha2 digest;
    digest.size = SHA256_DIGEST_SIZE;
    library().sha256Digest(&context, digest.size, bytesOf(digest.bytes.data()));
    return digest;
}

Sha2 sha384(std::string_view bytes) {
    sha384_ctx context;
    library().sha384Init(&context);
    library().sha512Update(&context, bytes.size(), bytesOf(bytes));
    Sha2 digest;
    digest.size = SHA384_DIGEST_SIZE;
    library().sha384Digest(&context, digest.size, bytesOf(digest.bytes.data()));
    return digest;
}

Sha2 sha512(std::string_view bytes) {
    sha512_ctx context;
    library().sha512Init(&context);
    library().sha512Update(&context, bytes.size(), bytesOf(bytes));
    Sha2 digest;
    digest.size = SHA512_DIGEST_SIZE;
    library().sha512Digest(&context, digest.size, bytesOf(digest.bytes.data()));
    return digest;
}

void rc4(std::string_view key, std::string_view bytes, char* out) {
    assert(key.size() >= ARCFOUR_MIN_KEY_SIZE && key.size() <= ARCFOUR_MAX_KEY_SIZE);
    arcfour_ctx context;
    library().arcfourSetKey(&context, key.size(), bytesOf(key));
    library().arcfourCrypt(&context, bytes.size(), bytesOf(out), bytesOf(bytes));
}

void decryptAes(std::string_view key, std::string_view vector, std::string_view blocks, char* out) {
    assert(blocks.size() % kAesBlock == 0);
    if (key.size() == AES128_KEY_SIZE) return decryptAes128(key, copyOf(vector), blocks, out);
    assert(key.size() == AES256_KEY_SIZE);
    decryptAes256(key, copyOf(vector), blocks, out);
}

void encryptAes128(std::string_view key, std::string_view vector, std::string_view blocks, char* out) {
    assert(key.size() == AES128_KEY_SIZE && blocks.size() % kAesBlock == 0);
    aes128_ctx aes{};
    library().aes128SetEncryptKey(&aes, bytesOf(key));
    Vector chained = copyOf(vector);
    library().cbcEncryptAes128(&aes, chained.data(), blocks.size(), bytesOf(out), bytesOf(blocks));
}

} // namespace quillow::pdf
