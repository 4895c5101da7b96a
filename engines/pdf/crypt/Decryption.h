// Decryption of strings and streams with the standard security handler (ISO 32000-2, 7.6).
#pragma once

#include "text/ByteBuffer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// How the bytes of one kind (strings, streams) are encrypted (7.6.6, table 25: /CFM).
enum class CipherMethod : std::uint8_t { identity, rc4, aes128, aes256 };

/// The values of the encryption dictionary (7.6.2, table 20; 7.6.4.2, table 21) as whoever reads it found them; nothing
/// in them has been checked. The views must outlive the call they are passed to.
struct EncryptionValues {
    std::string_view filter;      ///< /Filter, "Standard" as a rule
    int version = 0;              ///< /V
    int revision = 0;             ///< /R
    int lengthInBits = 40;        ///< /Length; some producers write bytes
    std::string_view owner;       ///< /O; producers write 32 to 127 bytes
    std::string_view user;        ///< /U
    std::string_view ownerKey;    ///< /OE
    std::string_view userKey;     ///< /UE
    std::int64_t permissions = 0; ///< /P; producers write it with and without a sign
    bool encryptsMetadata = true;
    std::string_view documentId; ///< the first string of the trailer's /ID
    struct CryptFilter {
        std::string_view name;
        std::string_view method; ///< /CFM: "None", "V2", "AESV2", "AESV3"
        int length = 0;          ///< /Length, in bytes or in bits; 0 if absent
    };
    std::vector<CryptFilter> cryptFilters;      ///< /CF
    std::string_view streamFilter = "Identity"; ///< /StmF
    std::string_view stringFilter = "Identity"; ///< /StrF
};

class Decryption {
public:
    /// Whether the cryptographic library is installed; without it no document opens. The first call loads it.
    [[nodiscard]] static bool isAvailable();

    /// Opens the document with the empty password, else with the given one in UTF-8; each is tried as the user's and as
    /// the owner's (7.6.4.3, 7.6.4.4). Null if neither opens it or the handler is not known.
    [[nodiscard]] static std::unique_ptr<Decryption> open(const EncryptionValues& values, std::string_view password);

    /// Appends the plain bytes of a string of the object with that number (7.6.3). Damaged data gives what can be
    /// decrypted of it.
    void decryptString(std::uint32_t number, std::uint16_t generation, std::string_view bytes,
                       text::ByteBuffer& out) const;
    /// The same for a stream. `cryptFilter` is the name from a Crypt filter of the stream itself (7.4.10); empty if it
    /// has none.
    void decryptStream(std::uint32_t number, std::uint16_t generation, std::string_view cryptFilter,
                       std::string_view bytes, text::ByteBuffer& out) const;
    [[nodiscard]] bool encryptsMetadata() const { return encryptsMetadata_; }

private:
    struct NamedMethod {
        std::string name;
        CipherMethod method = CipherMethod::identity;
    };

    Decryption() = default;
    void readFilters(const EncryptionValues& values);
    [[nodiscard]] CipherMethod usable(CipherMethod method) const;
    [[nodiscard]] CipherMethod methodOf(std::string_view cryptFilter) const;
    void decrypt(CipherMethod method, std::uint32_t number, std::uint16_t generation, std::string_view bytes,
                 text::ByteBuffer& out) const;

    std::string key_;
    std::vector<NamedMethod> filters_;
    CipherMethod methodOfVersion_ = CipherMethod::identity; ///< where the crypt filters say nothing
    CipherMethod strings_ = CipherMethod::identity;
    CipherMethod streams_ = CipherMethod::identity;
    bool encryptsMetadata_ = true;
};

} // namespace quillow::pdf
