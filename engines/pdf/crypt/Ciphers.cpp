#include "engines/pdf/crypt/Ciphers.h"

#include <nettle/aes.h>
#include <nettle/arcfour.h>
#include <nettle/cbc.h>
#include <nettle/md5.h>
#include <nettle/sha2.h>

#include <algorithm>
#include <cassert>

namespace quillow::pdf {

namespace {

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

void decryptAes128(std::string_view key, Vector vector, std::string_view blocks, char* out) {
    aes128_ctx aes{};
    aes128_set_decrypt_key(&aes, bytesOf(key));
    cbc_decrypt(
        &aes,
        [](const void* context, std::size_t size, std::uint8_t* to, const std::uint8_t* from) {
            aes128_decrypt(static_cast<const aes128_ctx*>(context), size, to, from);
        },
        kAesBlock, vector.data(), blocks.size(), bytesOf(out), bytesOf(blocks));
}

void decryptAes256(std::string_view key, Vector vector, std::string_view blocks, char* out) {
    aes256_ctx aes{};
    aes256_set_decrypt_key(&aes, bytesOf(key));
    cbc_decrypt(
        &aes,
        [](const void* context, std::size_t size, std::uint8_t* to, const std::uint8_t* from) {
            aes256_decrypt(static_cast<const aes256_ctx*>(context), size, to, from);
        },
        kAesBlock, vector.data(), blocks.size(), bytesOf(out), bytesOf(blocks));
}

} // namespace

Md5 md5(std::initializer_list<std::string_view> parts) {
    md5_ctx context;
    md5_init(&context);
    for (const std::string_view part : parts)
        md5_update(&context, part.size(), bytesOf(part));
    Md5 digest{};
    md5_digest(&context, digest.size(), bytesOf(digest.data()));
    return digest;
}

Sha2 sha256(std::initializer_list<std::string_view> parts) {
    sha256_ctx context;
    sha256_init(&context);
    for (const std::string_view part : parts)
        sha256_update(&context, part.size(), bytesOf(part));
    Sha2 digest;
    digest.size = SHA256_DIGEST_SIZE;
    sha256_digest(&context, digest.size, bytesOf(digest.bytes.data()));
    return digest;
}

Sha2 sha384(std::string_view bytes) {
    sha384_ctx context;
    sha384_init(&context);
    sha384_update(&context, bytes.size(), bytesOf(bytes));
    Sha2 digest;
    digest.size = SHA384_DIGEST_SIZE;
    sha384_digest(&context, digest.size, bytesOf(digest.bytes.data()));
    return digest;
}

Sha2 sha512(std::string_view bytes) {
    sha512_ctx context;
    sha512_init(&context);
    sha512_update(&context, bytes.size(), bytesOf(bytes));
    Sha2 digest;
    digest.size = SHA512_DIGEST_SIZE;
    sha512_digest(&context, digest.size, bytesOf(digest.bytes.data()));
    return digest;
}

void rc4(std::string_view key, std::string_view bytes, char* out) {
    assert(key.size() >= ARCFOUR_MIN_KEY_SIZE && key.size() <= ARCFOUR_MAX_KEY_SIZE);
    arcfour_ctx context;
    arcfour_set_key(&context, key.size(), bytesOf(key));
    arcfour_crypt(&context, bytes.size(), bytesOf(out), bytesOf(bytes));
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
    aes128_set_encrypt_key(&aes, bytesOf(key));
    Vector chained = copyOf(vector);
    cbc_aes128_encrypt(&aes, chained.data(), blocks.size(), bytesOf(out), bytesOf(blocks));
}

} // namespace quillow::pdf
