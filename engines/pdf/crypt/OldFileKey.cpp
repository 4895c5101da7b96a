// The document's key for revisions 2 to 4: MD5 and RC4.
#include "engines/pdf/crypt/Ciphers.h"
#include "engines/pdf/crypt/FileKey.h"

#include <algorithm>
#include <cstring>

namespace quillow::pdf {

namespace {

constexpr std::size_t kPasswordSize = 32;
constexpr int kHashRounds = 50;
constexpr unsigned kCipherRounds = 20;

using Password = std::array<char, kPasswordSize>;

/// 7.6.4.3.2, step a).
constexpr std::string_view kPadding{"\x28\xBF\x4E\x5E\x4E\x75\x8A\x41\x64\x00\x4E\x56\xFF\xFA\x01\x08"
                                    "\x2E\x2E\x00\xB6\xD0\x68\x3E\x80\x2F\x0C\xA9\xFE\x64\x53\x69\x7A",
                                    kPasswordSize};

Password padded(std::string_view password) {
    Password result{};
    const std::size_t size = std::min(password.size(), kPasswordSize);
    std::copy_n(password.begin(), size, result.begin());
    std::copy_n(kPadding.begin(), kPasswordSize - size, result.begin() + static_cast<std::ptrdiff_t>(size));
    return result;
}

FileKey firstBytes(const Md5& digest, std::size_t size) {
    FileKey key;
    key.size = size;
    std::copy_n(digest.begin(), size, key.bytes.begin());
    return key;
}

FileKey hashedAgain(Md5 digest, int revision, std::size_t keyLength) {
    for (int round = 0; revision >= 3 && round < kHashRounds; ++round)
        digest = md5({viewOf(digest).substr(0, keyLength)});
    return firstBytes(digest, keyLength);
}

/// 7.6.4.3.2, algorithm 2.
FileKey keyOf(const EncryptionValues& values, const Password& password, std::size_t keyLength) {
    const auto permissions = static_cast<std::uint32_t>(values.permissions);
    const std::array<char, 4> permissionBytes{static_cast<char>(permissions), static_cast<char>(permissions >> 8),
                                              static_cast<char>(permissions >> 16),
                                              static_cast<char>(permissions >> 24)};
    const bool isMarked = values.revision >= 4 && !values.encryptsMetadata;
    const Md5 digest = md5({viewOf(password), values.owner.substr(0, kPasswordSize), viewOf(permissionBytes),
                            values.documentId, isMarked ? "\xFF\xFF\xFF\xFF" : ""});
    return hashedAgain(digest, values.revision, keyLength);
}

/// Applies RC4 with the key and with 19 variants of it, from the variant `first` on, upwards or downwards.
void cipherRounds(const FileKey& key, unsigned first, int step, char* bytes, std::size_t size) {
    for (unsigned round = 0, variant = first; round < kCipherRounds; ++round, variant += static_cast<unsigned>(step)) {
        FileKey changed = key;
        for (std::size_t i = 0; i < key.size; ++i)
            changed.bytes[i] = static_cast<char>(key.bytes[i] ^ static_cast<char>(variant));
        rc4(changed.view(), {bytes, size}, bytes);
    }
}

/// Algorithm 6: whether the key makes the value of /U.
bool opens(const FileKey& key, const EncryptionValues& values) {
    if (values.revision == 2) { // algorithm 4
        Password expected{};
        rc4(key.view(), kPadding, expected.data());
        return values.user.substr(0, kPasswordSize) == viewOf(expected);
    }
    Md5 expected = md5({kPadding, values.documentId}); // algorithm 5
    cipherRounds(key, 0, 1, expected.data(), expected.size());
    return values.user.substr(0, kMd5Size) == viewOf(expected);
}

std::optional<FileKey> keyOfUser(const EncryptionValues& values, const Password& password, std::size_t keyLength) {
    const FileKey key = keyOf(values, password, keyLength);
    return opens(key, values) ? std::optional(key) : std::nullopt;
}

/// Algorithm 7: the user's password, from the owner's.
Password userPassword(const EncryptionValues& values, std::string_view owner, std::size_t keyLength) {
    const FileKey key = hashedAgain(md5({viewOf(padded(owner))}), values.revision, keyLength);
    Password user{};
    std::copy_n(values.owner.begin(), std::min(values.owner.size(), user.size()), user.begin());
    if (values.revision == 2)
        rc4(key.view(), viewOf(user), user.data());
    else
        cipherRounds(key, kCipherRounds - 1, -1, user.data(), user.size());
    return user;
}

} // namespace

std::optional<FileKey> keyOfOldRevision(const EncryptionValues& values, std::string_view password,
                                        std::size_t keyLength) {
    if (const std::optional<FileKey> key = keyOfUser(values, padded(password), keyLength)) return key;
    return keyOfUser(values, userPassword(values, password, keyLength), keyLength);
}

} // namespace quillow::pdf
