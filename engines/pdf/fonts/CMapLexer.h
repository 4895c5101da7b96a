// The tokens of a CMap: CMaps use strings, names, integers, arrays and operators of PostScript (Adobe
// Technical Note 5014, section 4.1).
#pragma once

#include <cstdint>
#include <string_view>

namespace quillow::pdf {

struct CMapToken {
    enum class Kind : std::uint8_t { end, code, string, integer, name, word, arrayStart, arrayEnd };
    Kind kind = Kind::end;
    int digits = 0;          ///< of a code: hexadecimal digits
    std::uint32_t value = 0; ///< of a code: its last eight digits as a number; of an integer: itself, cut to the range
    std::string_view text;   ///< of a code: between the brackets; of a string too; of a name: behind the slash; a word
};

class CMapLexer {
public:
    explicit CMapLexer(std::string_view bytes)
        : p_(bytes.data())
        , end_(bytes.data() + bytes.size()) {}

    [[nodiscard]] CMapToken next();

private:
    [[nodiscard]] CMapToken code();
    [[nodiscard]] CMapToken string();
    [[nodiscard]] CMapToken name();
    [[nodiscard]] CMapToken numberOrWord();
    void skipBlanks();

    const char* p_;
    const char* end_;
};

} // namespace quillow::pdf
