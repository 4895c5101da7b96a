#include "engines/pdf/crypt/Decryption.h"

#include "engines/pdf/crypt/Ciphers.h"
#include "engines/pdf/crypt/FileKey.h"
#include "engines/pdf/crypt/PasswordBytes.h"

#include <algorithm>
#include <optional>

namespace quillow::pdf {

namespace {

using text::ByteBuffer;

constexpr std::size_t kShortestKey = 5;
constexpr std::size_t kLongestOldKey = 16;
constexpr int kFirstWithCryptFilters = 4;
constexpr int kFirstWithAes256 = 5;

/// Versions 1 to 4 go with revisions 2 to 4, version 5 goes with revisions 5 and 6 (7.6.2, 7.6.4.2).
bool isKnown(const EncryptionValues& values) {
    const bool isOld = values.version >= 1 && values.version <= 4 && values.revision >= 2 && values.revision <= 4;
    const bool isNew = values.version == kFirstWithAes256 && (values.revision == 5 || values.revision == 6);
    return values.filter == "Standard" && (isOld || isNew);
}

/// Lengths of keys that may be meant, without doubles.
class KeyLengths {
public:
    /// A length as a file states it: in bytes, if it is too small for bits.
    void addStated(int length) {
        constexpr int kFewestBits = 40;
        add(static_cast<std::size_t>(std::max(length < kFewestBits ? length : length / 8, 0)));
    }
    void add(std::size_t bytes) {
        const bool isKey = bytes >= kShortestKey && bytes <= kLongestOldKey;
        if (isKey && std::find(lengths_.begin(), lengths_.end(), bytes) == lengths_.end()) lengths_.push_back(bytes);
    }
    [[nodiscard]] auto begin() const { return lengths_.begin(); }
    [[nodiscard]] auto end() const { return lengths_.end(); }

private:
    std::vector<std::size_t> lengths_;
};

KeyLengths keyLengths(const EncryptionValues& values) {
    KeyLengths lengths;
    if (values.version == 1) lengths.add(kShortestKey);
    if (values.version >= kFirstWithCryptFilters) lengths.add(kLongestOldKey);
    lengths.addStated(values.lengthInBits);
    for (const EncryptionValues::CryptFilter& filter : values.cryptFilters)
        lengths.addStated(filter.length);
    lengths.add(kLongestOldKey);
    lengths.add(kShortestKey);
    return lengths;
}

std::optional<FileKey> keyFromBytes(const EncryptionValues& values, std::string_view password) {
    for (const std::size_t length : keyLengths(values))
        if (const std::optional<FileKey> key = keyOfOldRevision(values, password, length)) return key;
    return std::nullopt;
}

std::optional<FileKey> keyFromPassword(const EncryptionValues& values, std::string_view password) {
    if (values.revision >= 5) return keyOfNewRevision(values, password);
    if (const std::optional<std::string> bytes = pdfDocBytes(password))
        if (const std::optional<FileKey> key = keyFromBytes(values, *bytes)) return key;
    return keyFromBytes(values, password);
}

/// 7.6.6, table 25.
CipherMethod methodOfName(std::string_view name) {
    if (name == "V2") return CipherMethod::rc4;
    if (name == "AESV2") return CipherMethod::aes128;
    if (name == "AESV3") return CipherMethod::aes256;
    return CipherMethod::identity;
}

/// The method of a filter that the document does not describe.
CipherMethod methodOfVersion(int version) {
    if (version >= kFirstWithAes256) return CipherMethod::aes256;
    return version >= kFirstWithCryptFilters ? CipherMethod::aes128 : CipherMethod::rc4;
}

/// 7.6.3.2, algorithm 1, steps a) to d): the key of one object.
FileKey keyOfObject(std::string_view fileKey, CipherMethod method, std::uint32_t number, std::uint16_t generation) {
    const std::array<char, 5> reference{static_cast<char>(number), static_cast<char>(number >> 8),
                                        static_cast<char>(number >> 16), static_cast<char>(generation),
                                        static_cast<char>(generation >> 8)};
    const bool isAes = method == CipherMethod::aes128;
    const Md5 digest = md5({fileKey, viewOf(reference), isAes ? "sAlT" : ""});
    FileKey key;
    key.size = isAes ? digest.size() : std::min(fileKey.size() + reference.size(), digest.size());
    std::copy_n(digest.begin(), key.size, key.bytes.begin());
    return key;
}

/// Removes the padding, whose last byte is its length (7.6.3.1). Data without sound padding stays.
void removePadding(std::size_t begin, ByteBuffer& out) {
    if (out.size() == begin) return;
    const auto padding = static_cast<std::uint8_t>(out.view().back());
    if (padding >= 1 && padding <= kAesBlock) out.resize(out.size() - padding);
}

/// The vector is the first block. A last block that is not whole cannot be decrypted.
void appendAes(std::string_view key, std::string_view bytes, ByteBuffer& out) {
    if (bytes.size() < 2 * kAesBlock) return;
    const std::size_t size = (bytes.size() - kAesBlock) / kAesBlock * kAesBlock;
    const std::size_t begin = out.size();
    out.resize(begin + size);
    decryptAes(key, bytes.substr(0, kAesBlock), bytes.substr(kAesBlock, size), out.data() + begin);
    const bool isWhole = bytes.size() % kAesBlock == 0;
    if (isWhole) removePadding(begin, out);
}

void appendRc4(std::string_view key, std::string_view bytes, ByteBuffer& out) {
    if (bytes.empty()) return;
    const std::size_t begin = out.size();
    out.resize(begin + bytes.size());
    rc4(key, bytes, out.data() + begin);
}

} // namespace

bool Decryption::isAvailable() {
    return hasCiphers();
}

std::unique_ptr<Decryption> Decryption::open(const EncryptionValues& values, std::string_view password) {
    if (!isKnown(values) || !isAvailable()) return nullptr;
    std::optional<FileKey> key = keyFromPassword(values, {});
    if (!key && !password.empty()) key = keyFromPassword(values, password);
    if (!key) return nullptr;
    std::unique_ptr<Decryption> decryption(new Decryption);
    decryption->key_.assign(key->view());
    decryption->readFilters(values);
    return decryption;
}

void Decryption::readFilters(const EncryptionValues& values) {
    methodOfVersion_ = methodOfVersion(values.version);
    encryptsMetadata_ = values.encryptsMetadata;
    const bool hasFilters = values.version >= kFirstWithCryptFilters;
    if (hasFilters)
        for (const EncryptionValues::CryptFilter& filter : values.cryptFilters)
            filters_.push_back({std::string(filter.name), usable(methodOfName(filter.method))});
    strings_ = hasFilters ? methodOf(values.stringFilter) : methodOfVersion_;
    streams_ = hasFilters ? methodOf(values.streamFilter) : methodOfVersion_;
}

/// Only the method of version 5 can use the key of that version. A filter that names another one contradicts it.
CipherMethod Decryption::usable(CipherMethod method) const {
    const bool isOfOther = (method == CipherMethod::aes256) != (methodOfVersion_ == CipherMethod::aes256);
    return isOfOther && method != CipherMethod::identity ? methodOfVersion_ : method;
}

CipherMethod Decryption::methodOf(std::string_view cryptFilter) const {
    if (cryptFilter == "Identity") return CipherMethod::identity;
    for (const NamedMethod& filter : filters_)
        if (filter.name == cryptFilter) return filter.method;
    return methodOfVersion_;
}

void Decryption::decryptString(std::uint32_t number, std::uint16_t generation, std::string_view bytes,
                               ByteBuffer& out) const {
    decrypt(strings_, number, generation, bytes, out);
}

void Decryption::decryptStream(std::uint32_t number, std::uint16_t generation, std::string_view cryptFilter,
                               std::string_view bytes, ByteBuffer& out) const {
    decrypt(cryptFilter.empty() ? streams_ : methodOf(cryptFilter), number, generation, bytes, out);
}

void Decryption::decrypt(CipherMethod method, std::uint32_t number, std::uint16_t generation, std::string_view bytes,
                         ByteBuffer& out) const {
    switch (method) {
    case CipherMethod::identity: return out.append(bytes);
    case CipherMethod::rc4: return appendRc4(keyOfObject(key_, method, number, generation).view(), bytes, out);
    case CipherMethod::aes128: return appendAes(keyOfObject(key_, method, number, generation).view(), bytes, out);
    case CipherMethod::aes256: return appendAes(key_, bytes, out); // algorithm 1.A
    }
}

} // namespace quillow::pdf
