// The language models of the encoding detector.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillow::text {

enum class Script : std::uint8_t { latin, cyrillic, greek, hebrew, arabic, thai };

/// How improbable it is that one letter follows another in a word of a language.
struct LanguageModel {
    const char* language;
    Script script;
    /// In lower case, sorted. The class of a letter is its index here plus kFirstLetter.
    std::u16string_view letters;
    /// Indexed by the classes of the first and the second letter: minus the binary logarithm of the probability
    /// that the second follows the first, in units of 1/kStepsPerBit.
    const std::uint8_t* bits;

    static constexpr std::uint8_t kBoundary = 0;    ///< the boundary before and after a word
    static constexpr std::uint8_t kOtherLetter = 1; ///< a letter that the language does not have
    static constexpr std::uint8_t kFirstLetter = 2;

    [[nodiscard]] std::size_t classes() const { return letters.size() + kFirstLetter; }
};

inline constexpr int kStepsPerBit = 8;

extern const LanguageModel kLanguageModels[];
extern const std::size_t kLanguageModelCount;

/// The common characters of a language without an alphabet, grouped by minus the binary logarithm of their share,
/// rounded up. The first group holds kFirstLevel and less.
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
