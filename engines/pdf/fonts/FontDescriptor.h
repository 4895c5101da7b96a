// What a font descriptor says of a font as a whole (ISO 32000-2, 9.8).
#pragma once

#include "engines/pdf/syntax/Document.h"

#include <cstdint>
#include <optional>

namespace quillow::pdf {

/// How far glyphs reach above and below the baseline for a font size of 1; both positive as a rule.
struct VerticalExtent {
    float ascent = 0.75F;
    float descent = 0.25F;
};

class FontDescriptor {
public:
    FontDescriptor(Document& document, const Dictionary& font);

    [[nodiscard]] bool isEmbedded() const { return !program_.isNull(); }
    /// The entry of the embedded font program, null if there is none.
    [[nodiscard]] const Object& program() const { return program_; }
    [[nodiscard]] bool isFixedPitch() const { return hasFlag(1); }
    [[nodiscard]] bool isSerif() const { return hasFlag(2); }
    [[nodiscard]] bool isSymbolic() const { return hasFlag(3); }
    [[nodiscard]] bool isNonsymbolic() const { return hasFlag(6); }
    [[nodiscard]] bool isItalic() const { return hasFlag(7); }
    [[nodiscard]] bool isBold() const { return hasFlag(19); }
    /// For a font size of 1000.
    [[nodiscard]] double missingWidth() const { return missingWidth_; }
    /// Of a sane height; nothing if the descriptor does not say it.
    [[nodiscard]] std::optional<VerticalExtent> extent() const { return extent_; }

private:
    /// Flags are numbered from 1 (table 121).
    [[nodiscard]] bool hasFlag(int number) const { return (flags_ >> (number - 1) & 1) != 0; }
    void readExtent(Document& document, const Dictionary& descriptor);

    std::int64_t flags_ = 0;
    Object program_;
    double missingWidth_ = 0;
    std::optional<VerticalExtent> extent_;
};

/// The extent of a font from two numbers of a file, in units of an em: with the usual wrong signs mended. Nothing if no
/// font has such an extent.
[[nodiscard]] std::optional<VerticalExtent> saneExtent(double ascent, double descent);

} // namespace quillow::pdf
