// The hash of documents and texts that results files record.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillow::cli {

/// SHA-256 (FIPS 180-4), computed by libnettle. The library is loaded with the first object: most runs need no hash.
class Sha256 {
public:
    /// std::nullopt if the library is not installed.
    [[nodiscard]] static std::optional<Sha256> load();

    /// 64 hexadecimal digits in lower case. May be called from several threads at once.
    [[nodiscard]] std::string hexOf(std::span<const std::byte> bytes) const;
    [[nodiscard]] std::string hexOf(std::string_view bytes) const;

private:
    struct Functions;
    explicit Sha256(const Functions& functions)
        : functions_(&functions) {}

    const Functions* functions_; ///< lives as long as the program
};

} // namespace quillow::cli
