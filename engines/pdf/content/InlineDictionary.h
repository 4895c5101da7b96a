// Dictionaries in a content stream itself: the properties of marked content, the header of an inline image
// (ISO 32000-2, 8.9.7, 14.6.2). They are small and rarely used, so nothing is kept: each look-up reads them again.
#pragma once

#include "engines/pdf/content/Operands.h"
#include "text/ByteBuffer.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillow::pdf {

class InlineDictionary {
public:
    /// The bytes between "<<" and ">>".
    explicit InlineDictionary(std::string_view bytes)
        : bytes_(bytes) {}

    [[nodiscard]] std::optional<std::int32_t> integer(std::string_view key) const;
    /// As it is written, without its escapes decoded; empty if the key has no name.
    [[nodiscard]] std::string_view name(std::string_view key) const;
    /// Appends the string's own bytes to `out`; false if the key has no string.
    [[nodiscard]] bool string(std::string_view key, text::ByteBuffer& out) const;

private:
    /// Where the value of a key of the dictionary itself begins; null if there is none.
    [[nodiscard]] const char* find(std::string_view key) const;

    std::string_view bytes_;
};

/// Appends the own bytes of a string to `out`.
void appendString(const Operand& string, text::ByteBuffer& out);

} // namespace quillow::pdf
