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
    /// How many names in /Differences only repeat codes ("a65"); 0 if any other is there, but for spaces.
    [[nodiscard]] int codeNames() const;

private:
    using Names = std::array<std::string_view, 256>;

    void readDifferences(Document& document, std::span<const Object> items);

    std::optional<Encoding> base_;
    std::unique_ptr<Names> differences_;
};

} // namespace quillow::pdf
