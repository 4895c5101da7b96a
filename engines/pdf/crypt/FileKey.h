// The key of an encrypted document from a password.
#pragma once

#include "engines/pdf/crypt/Decryption.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace quillow::pdf {

struct FileKey {
    std::array<char, 32> bytes{};
    std::size_t size = 0;

    [[nodiscard]] std::string_view view() const { return {bytes.data(), size}; }
};

/// Revisions 2 to 4 (7.6.4.3.2, algorithm 2). The password is in the bytes that were hashed; it is tried as the user's
/// (algorithm 6) and as the owner's (algorithm 7).
[[nodiscard]] std::optional<FileKey> keyOfOldRevision(const EncryptionValues& values, std::string_view password,
                                                      std::size_t keyLength);

/// Revisions 5 and 6 (7.6.4.3.3, algorithm 2.A). The password is in UTF-8.
[[nodiscard]] std::optional<FileKey> keyOfNewRevision(const EncryptionValues& values, std::string_view password);

} // namespace quillow::pdf
