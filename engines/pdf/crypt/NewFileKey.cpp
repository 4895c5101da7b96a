// The document's key for revisions 5 and 6: SHA-2 and AES.
#include "engines/pdf/crypt/Ciphers.h"
#include "engines/pdf/crypt/FileKey.h"

#include <algorithm>
#include <numeric>
#include <string>

namespace quillow::pdf {

namespace {

constexpr std::size_t kLongestPassword = 127; // 7.6.4.3.3, step b)
constexpr std::size_t kKeySize = 32;

/// /O and /U: a digest and two salts. Producers write further bytes behind them.
struct Entry {
    static constexpr std::size_t kSize = 48;

    std::string_view digest;
    std::string_view validationSalt;
    std::string_view keySalt;
};

Entry entryOf(std::string_view value) {
    return {value.substr(0, 32), value.substr(32, 8), value.substr(40, 8)};
}

/// The remainder by 3 of the first 16 bytes as one number; 256 leaves 1.
unsigned remainderByThree(std::string_view bytes) {
    const std::string_view number = bytes.substr(0, 16);
    return std::accumulate(number.begin(), number.end(), 0U,
                           [](unsigned sum, char byte) { return sum + static_cast<std::uint8_t>(byte); }) %
           3;
}

Sha2 digestByRemainder(std::string_view bytes) {
    switch (remainderByThree(bytes)) {
    case 0: return sha256({bytes});
    case 1: return sha384(bytes);
    default: return sha512(bytes);
    }
}

/// 7.6.4.3.4, algorithm 2.B. A byte decides when it ends: after 64 to 287 rounds.
Sha2 hardenedHash(std::string_view password, std::string_view salt, std::string_view user) {
    constexpr unsigned kLeastRounds = 64;
    constexpr unsigned kLastByteOffset = 32;
    constexpr std::size_t kCopies = 64;
    Sha2 digest = sha256({password, salt, user});
    std::string block;
    unsigned lastByte = 0;
    for (unsigned round = 0; round < kLeastRounds || lastByte + kLastByteOffset > round; ++round) {
        block.clear(); // a)
        for (std::size_t copy = 0; copy < kCopies; ++copy)
            block.append(password).append(digest.view()).append(user);
        encryptAes128(digest.view().substr(0, 16), digest.view().substr(16, 16), block, block.data()); // b)
        digest = digestByRemainder(block);                                                             // c), d)
        lastByte = static_cast<std::uint8_t>(block.back());                                            // e), f)
    }
    digest.size = kKeySize;
    return digest;
}

Sha2 hashOf(int revision, std::string_view password, std::string_view salt, std::string_view user) {
    return revision == 5 ? sha256({password, salt, user}) : hardenedHash(password, salt, user);
}

/// The key in `encrypted`, if the password makes the digest of the entry. `user` is empty, or /U for the owner's entry.
std::optional<FileKey> keyFrom(const Entry& entry, std::string_view encrypted, int revision, std::string_view password,
                               std::string_view user) {
    if (hashOf(revision, password, entry.validationSalt, user).view() != entry.digest) return std::nullopt;
    constexpr std::array<char, kAesBlock> kZeroVector{};
    FileKey key;
    key.size = kKeySize;
    decryptAes(hashOf(revision, password, entry.keySalt, user).view(), viewOf(kZeroVector),
               encrypted.substr(0, kKeySize), key.bytes.data());
    return key;
}

} // namespace

std::optional<FileKey> keyOfNewRevision(const EncryptionValues& values, std::string_view password) {
    const std::string_view user = values.user.substr(0, Entry::kSize);
    const std::string_view owner = values.owner.substr(0, Entry::kSize);
    const std::string_view used = password.substr(0, kLongestPassword);
    if (user.size() == Entry::kSize && values.userKey.size() >= kKeySize)
        if (const auto key = keyFrom(entryOf(user), values.userKey, values.revision, used, {})) return key;
    if (owner.size() == Entry::kSize && values.ownerKey.size() >= kKeySize)
        return keyFrom(entryOf(owner), values.ownerKey, values.revision, used, user);
    return std::nullopt;
}

} // namespace quillow::pdf
