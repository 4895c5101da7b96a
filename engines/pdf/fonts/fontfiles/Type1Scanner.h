// Tokens of the PostScript text of Type 1 fonts (Adobe Type 1 Font Format 1.1, 2.2; PostScript Language Reference,
// 3.3).
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace quillow::pdf {

class Type1Scanner {
public:
    explicit Type1Scanner(std::string_view text)
        : text_(text) {}

    /// Goes behind the next place of a name, with its slash, wherever it is. False, and at the end, if there is none.
    bool skipBehind(std::string_view name);

    /// The next token: a name with its slash, a number, a word, or one character of `()<>[]{}`. Empty at the end.
    std::string_view next();

    /// The bytes of a binary string: a blank and `count` bytes. Empty, and at the end, if they are missing.
    std::string_view takeBinary(std::size_t count);

private:
    void skipBlanksAndComments();

    std::string_view text_;
};

/// An integer, also one with a radix (8#101). Nothing if it is none, or does not fit.
[[nodiscard]] std::optional<int> type1Integer(std::string_view token);
/// A number, or 0.
[[nodiscard]] double type1Number(std::string_view token);

} // namespace quillow::pdf
