// An embedded CMap: how long codes are, which CIDs they select, and, in a ToUnicode CMap, which characters they show
// (ISO 32000-2, 9.7.5 and 9.10.3; Adobe Technical Notes 5014 and 5411).
#pragma once

#include "engines/pdf/fonts/CodeRanges.h"
#include "engines/pdf/fonts/Codespace.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::pdf {

class CMap {
public:
    /// Characters of all codes that show several. Those over the limit are left out.
    static constexpr std::size_t kMaximumSeveral = std::size_t{1} << 20;
    /// Codespace ranges; the longest predefined CMaps have about ten.
    static constexpr std::size_t kMaximumCodespaceRanges = 100;

    /// Any bytes are accepted: what is no CMap gives an empty one.
    [[nodiscard]] static CMap parse(std::string_view bytes);

    /// The CMap on which this one is based (usecmap), by its name.
    [[nodiscard]] std::string_view base() const { return base_; }
    [[nodiscard]] bool isVertical() const { return isVertical_; }
    [[nodiscard]] std::span<const CodespaceRange> codespace() const { return codespace_; }

    [[nodiscard]] bool hasCids() const { return !cids_.empty(); }
    [[nodiscard]] std::optional<std::uint32_t> cidOf(std::uint32_t code) const { return cids_.find(code); }

    [[nodiscard]] bool hasCharacters() const { return !characters_.empty(); }
    /// Replaces `out` by the characters of a code as the CMap has them: see `keepUsable`. Empty if the CMap has none,
    /// or if so many codes have the same that it cannot be true.
    void charactersOf(std::uint32_t code, std::u32string& out) const;
    /// Whether other evidence is better, because the producer did not look at the font. Either nearly all codes are
    /// their own characters: that is so for a true ASCII font, and it is what some producers write for any font. Or
    /// half of the codes have no characters and others those of a whole line.
    [[nodiscard]] bool isDoubtful() const { return isDoubtful_; }

private:
    friend class CMapParser;

    void addCharacters(std::uint32_t low, std::uint32_t high, std::u32string_view characters);
    void addSeveral(std::uint32_t code, std::u32string_view characters);
    void close();
    void judge();
    [[nodiscard]] std::optional<std::uint32_t> mostRepeatedValue() const;

    std::string base_;
    bool isVertical_ = false;
    std::vector<CodespaceRange> codespace_;
    CodeRanges cids_;
    CodeRanges characters_;                        ///< values are characters, or kSeveral and an offset in `several_`
    std::u32string several_;                       ///< at each offset the number of characters and then these
    std::optional<std::uint32_t> distrustedValue_; ///< what so many codes show that it cannot be true
    std::uint64_t emptyDestinations_ = 0;
    bool isNonsense_ = false;
    bool isDoubtful_ = false;
};

} // namespace quillow::pdf
