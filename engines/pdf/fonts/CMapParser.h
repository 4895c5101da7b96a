// Reads the sections of a CMap (ISO 32000-2, 9.7.5.4 and 9.10.3; Adobe Technical Notes 5014, section 3, and 5411).
#pragma once

#include "engines/pdf/fonts/CMap.h"
#include "engines/pdf/fonts/CMapLexer.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillow::pdf {

/// The counts before `begin...` and the ends of sections are often wrong or missing: a section ends where an operator
/// is found instead of an operand.
class CMapParser {
public:
    CMapParser(std::string_view bytes, CMap& map)
        : lexer_(bytes)
        , map_(map) {}

    void parse();

private:
    struct Codes {
        CMapToken low;
        CMapToken high;
    };

    void readSection(std::string_view word);
    void readDefinition(std::string_view name);
    void readCodespace();
    void readCharacters();
    void readCharacterRanges();
    void readArray(const Codes& codes);
    void readCids();
    void readCidRanges();

    void advance() { token_ = lexer_.next(); }
    [[nodiscard]] bool inSection() const;
    [[nodiscard]] std::optional<CMapToken> takeCode();
    [[nodiscard]] std::optional<Codes> takeCodes();
    [[nodiscard]] std::optional<std::uint32_t> takeInteger();
    [[nodiscard]] bool takeDestination();

    CMapLexer lexer_;
    CMap& map_;
    CMapToken token_;           ///< the next one
    std::u32string characters_; ///< of the destination that was taken last; empty if none was
};

/// Replaces `out` by the characters of a destination in UTF-16 (9.10.3). Halves of pairs without the other half are
/// left out. Also reads what producers write by mistake: a character of fewer than four digits, and the number of a
/// supplementary character.
void readUtf16(const CMapToken& code, std::u32string& out);

} // namespace quillow::pdf
