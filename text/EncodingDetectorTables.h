// What the encoding detector knows of languages.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillow::text {

enum class Script : std::uint8_t { latin, cyrillic, greek, hebrew, arabic, thai };

/// How surprising it is, in a word of a language, that one letter follows another.
struct LanguageModel {
    const char* language;
    Script script;
    std::u16string_view letters; ///< in lower case, sorted; the class of a letter is its place here plus kFirstLetter
    /// By class of the first and of the second: minus the binary logarithm of the probability, in steps of kStepsPerBit.
    const std::uint8_t* bits;

    static constexpr std::uint8_t kBoundary = 0;    ///< what stands before and after a word
    static constexpr std::uint8_t kOtherLetter = 1; ///< a letter that the language does not have
    static constexpr std::uint8_t kFirstLetter = 2;

    [[nodiscard]] std::size_t classes() const { return letters.size() + kFirstLetter; }
};

inline constexpr int kStepsPerBit = 8;

extern const LanguageModel kLanguageModels[];
extern const std::size_t kLanguageModelCount;

/// The common characters of a language without alphabet, by minus the binary logarithm of their share, from kFirstLevel on.
struct CommonCharacters {
    static constexpr int kFirstLevel = 4;
    static constexpr std::size_t kLevels = 8;
    std::array<std::u16string_view, kLevels> levels;
};

extern const CommonCharacters kSimplifiedChinese;
extern const CommonCharacters kTraditionalChinese;
extern const CommonCharacters kJapanese;
extern const CommonCharacters kKorean;

} // namespace quillow::text
