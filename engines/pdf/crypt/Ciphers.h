// The ciphers and digests that PDF encryption is made of, over a cryptographic library.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace quillow::pdf {

inline constexpr std::size_t kAesBlock = 16;
inline constexpr std::size_t kMd5Size = 16;

using Md5 = std::array<char, kMd5Size>;

/// Whether the cryptographic library is there. The first call loads it: at the start of the program it would take
/// longer than everything else. Without it nothing below may be called. From any thread.
[[nodiscard]] bool hasCiphers();

/// A digest of 32, 48 or 64 bytes.
struct Sha2 {
    std::array<char, 64> bytes{};
    std::size_t size = 0;

    [[nodiscard]] std::string_view view() const { return {bytes.data(), size}; }
};

/// The digest of all parts, one after another.
[[nodiscard]] Md5 md5(std::initializer_list<std::string_view> parts);
[[nodiscard]] Sha2 sha256(std::initializer_list<std::string_view> parts);
[[nodiscard]] Sha2 sha384(std::string_view bytes);
[[nodiscard]] Sha2 sha512(std::string_view bytes);

template <std::size_t size>
[[nodiscard]] std::string_view viewOf(const std::array<char, size>& bytes) {
    return {bytes.data(), bytes.size()};
}

/// Encrypts or decrypts; the key has 1 to 256 bytes. `out` has room for as many bytes and may be the same place.
void rc4(std::string_view key, std::string_view bytes, char* out);

/// Whole blocks in cipher block chaining mode without padding. The key has 16 bytes or 32, the vector 16. `out` has
/// room for as many bytes.
void decryptAes(std::string_view key, std::string_view vector, std::string_view blocks, char* out);
/// The same the other way round, with a key of 16 bytes. `out` may be the same place.
void encryptAes128(std::string_view key, std::string_view vector, std::string_view blocks, char* out);

} // namespace quillow::pdf
