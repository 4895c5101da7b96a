// What marked content says about the text in it (ISO 32000-2, 14.6 to 14.9, 8.11.3.2).
#pragma once

#include "engines/pdf/content/Page.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quillow::pdf {

/// Of the sequences around an operator together.
struct Marks {
    std::int32_t id = Run::kNoMark; ///< the innermost MCID
    std::uint32_t actualText = 0;   ///< number of the span whose ActualText replaces the glyphs; 0 outside
    std::uint8_t flags = 0;         ///< kRunning, kActualText
    bool isHidden = false;          ///< in optional content that is off

    friend bool operator==(const Marks&, const Marks&) = default;
};

/// The nested sequences of marked content. The outermost ActualText counts, because it replaces all that is inside.
class MarkedContent {
public:
    /// Deeper sequences change nothing. Tagged PDF nests some ten deep.
    static constexpr std::size_t kMaximumDepth = 256;

    /// A sequence as its operator describes it.
    struct Sequence {
        std::int32_t id = Run::kNoMark;
        bool isRunning = false; ///< a running head, a foot or a page number
        bool isHidden = false;
        const std::u32string* actualText = nullptr; ///< null if it has none; may be empty
    };

    void clear();
    void begin(const Sequence& sequence);
    /// Ends the innermost sequence. Nothing if none was begun since the floor was set.
    void end();

    [[nodiscard]] const Marks& current() const { return current_; }
    /// The characters of the ActualText around, for the first glyph in it only: empty afterwards.
    [[nodiscard]] std::u32string takeActualText();

    /// Sequences begin and end in one content stream (14.6.1): one that a form has not ended ends with the form.
    [[nodiscard]] std::size_t depth() const { return outer_.size() + ignored_; }
    void setFloor(std::size_t depth) { floor_ = depth; }
    [[nodiscard]] std::size_t floor() const { return floor_; }
    void endTo(std::size_t depth);

private:
    Marks current_;
    std::vector<Marks> outer_;
    std::size_t ignored_ = 0; ///< sequences past kMaximumDepth
    std::size_t floor_ = 0;
    std::u32string actualText_;
    std::uint32_t actualTexts_ = 0; ///< spans so far
};

} // namespace quillow::pdf
