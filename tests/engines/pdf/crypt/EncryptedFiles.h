// What small PDFs hold that other programs encrypted: the encryption dictionary, and a string and a stream with it.
#pragma once

#include "engines/pdf/crypt/Decryption.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace quillow::pdf {

inline constexpr std::string_view kPlainString = "the string of an object";
inline constexpr std::string_view kPlainStream = "BT (the stream of an object) Tj ET";

struct EncryptedFile {
    std::string_view name;
    std::string_view userPassword;
    std::string_view ownerPassword;
    int version;
    int revision;
    int lengthInBits;
    std::int64_t permissions;
    bool encryptsMetadata;
    std::string_view method; ///< of the crypt filter StdCF; empty if the file has none
    int filterLength;
    std::string_view owner;
    std::string_view user;
    std::string_view ownerKey;
    std::string_view userKey;
    std::string_view documentId;
    std::uint32_t stringNumber; ///< of the object that has the string
    std::string_view string;
    std::uint32_t streamNumber;
    std::string_view stream;
};

[[nodiscard]] std::span<const EncryptedFile> encryptedFiles();

/// The one with that name, which must be there.
[[nodiscard]] inline const EncryptedFile& encryptedFile(std::string_view name) {
    for (const EncryptedFile& file : encryptedFiles())
        if (file.name == name) return file;
    std::abort();
}

[[nodiscard]] inline EncryptionValues valuesOf(const EncryptedFile& file) {
    EncryptionValues values;
    values.filter = "Standard";
    values.version = file.version;
    values.revision = file.revision;
    values.lengthInBits = file.lengthInBits;
    values.permissions = file.permissions;
    values.encryptsMetadata = file.encryptsMetadata;
    values.owner = file.owner;
    values.user = file.user;
    values.ownerKey = file.ownerKey;
    values.userKey = file.userKey;
    values.documentId = file.documentId;
    if (file.method.empty()) return values;
    values.cryptFilters = {{"StdCF", file.method, file.filterLength}};
    values.streamFilter = "StdCF";
    values.stringFilter = "StdCF";
    return values;
}

} // namespace quillow::pdf
