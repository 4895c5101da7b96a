// The /Encoding of a simple font: a base encoding and the names of glyphs that differ from it (ISO 32000-2, 9.6.5).
#pragma once

#include "engines/pdf/fonts/Encodings.h"
#include "engines/pdf/syntax/Document.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace quillow::pdf {

class SimpleEncoding {
public:
    /// `entry` is the value of /Encoding: a name, a dictionary or, in damaged files, anything.
    SimpleEncoding(Document& document, const Object& entry);

    /// The base encoding that the document names, if it names one.
    [[nodiscard]] std::optional<Encoding> base() const { return base_; }
    /// The name in /Differences; empty if the code is not there.
    [[nodiscard]] std::string_view differenceOf(std::uint8_t code) const {
        return differences_ ? (*differences_)[code] : std::string_view();
    }
    /// The names in /Differences, if all of them but spaces only repeat codes: "a65", "C41".
    struct CodeNames {
        int count = 0;       ///< 0 if any name says more
        bool isHigh = false; ///< some codes are over 127
    };
    [[nodiscard]] CodeNames codeNames() const;
    /// The code that a name repeats: the one at which it is, or another one.
    [[nodiscard]] static std::optional<std::uint32_t> codeOf(std::string_view name, std::uint8_t code);

private:
    using Names = std::array<std::string_view, 256>;

    void readDifferences(Document& document, std::span<const Object> items);

    std::optional<Encoding> base_;
    std::unique_ptr<Names> differences_;
};

} // namespace quillow::pdf
