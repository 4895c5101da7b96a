// Pages that no file has, for tests of the layout.
#pragma once

#include "engines/pdf/content/Page.h"

#include <string_view>

namespace quillow::pdf {

/// Places text on a page. Every letter is half an em wide unless another width is set.
class PageBuilder {
public:
    static constexpr float kLetter = 0.5F;

    PageBuilder& size(float size) {
        size_ = size;
        return *this;
    }
    /// The width of the letters that follow, in ems.
    PageBuilder& letter(float width) {
        letter_ = width;
        return *this;
    }
    PageBuilder& direction(Point direction) {
        direction_ = direction;
        return *this;
    }
    PageBuilder& font(std::uint32_t font) {
        font_ = font;
        return *this;
    }
    PageBuilder& flags(std::uint8_t flags) {
        flags_ = flags;
        return *this;
    }

    /// The runs that follow are in that cell of the structure tree's table.
    PageBuilder& cell(std::uint32_t row, std::uint32_t column) {
        mark_ = static_cast<std::int32_t>(page_.cells.size());
        page_.cells.push_back({0, row, column});
        return *this;
    }
    /// The runs that follow are in no marked content.
    PageBuilder& unmarked() {
        mark_ = Run::kNoMark;
        return *this;
    }

    /// A run; `spacing` is added between letters, in ems.
    PageBuilder& text(float x, float y, std::u32string_view text, float spacing = 0) {
        Run run;
        run.firstGlyph = static_cast<std::uint32_t>(page_.glyphs.size());
        run.glyphCount = static_cast<std::uint32_t>(text.size());
        run.origin = {x, y};
        run.direction = direction_;
        run.fontSize = size_;
        run.ascent = 0.75F * size_;
        run.descent = 0.25F * size_;
        run.flags = flags_;
        run.markedContent = mark_;
        run.font = font_;
        float offset = 0;
        for (const char32_t c : text) {
            page_.glyphs.push_back({static_cast<std::uint32_t>(page_.text.size()), offset, letter_ * size_});
            page_.text.push_back(c);
            offset += (letter_ + spacing) * size_;
        }
        page_.runs.push_back(run);
        return *this;
    }

    /// A run of one glyph with all those characters, or none.
    PageBuilder& cluster(float x, float y, std::u32string_view characters) {
        text(x, y, U"?");
        page_.text.pop_back();
        page_.text.append(characters);
        return *this;
    }

    /// Glyphs without characters behind the last run's, as the further ones of a cluster with an ActualText are.
    PageBuilder& glyphsWithoutText(std::uint32_t count) {
        Run& run = page_.runs.back();
        for (std::uint32_t i = 0; i < count; ++i) {
            const Glyph& before = page_.glyphs.back();
            const float offset = before.offset + before.width;
            page_.glyphs.push_back({static_cast<std::uint32_t>(page_.text.size()), offset, letter_ * size_});
        }
        run.glyphCount += count;
        return *this;
    }

    /// A column of lines, each below the one before it by `leading` points.
    PageBuilder& lines(float x, float y, std::initializer_list<std::u32string_view> lines, float leading = 12) {
        for (const std::u32string_view line : lines) {
            text(x, y, line);
            y -= leading;
        }
        return *this;
    }

    PageBuilder& rule(float left, float bottom, float right, float top) {
        page_.rules.push_back({Rule::Kind::line, {left, bottom, right, top}});
        return *this;
    }

    PageBuilder& box(float left, float bottom, float right, float top) {
        page_.rules.push_back({Rule::Kind::rectangle, {left, bottom, right, top}});
        return *this;
    }

    [[nodiscard]] const Page& page() const { return page_; }

private:
    Page page_;
    float size_ = 10;
    float letter_ = kLetter;
    Point direction_{1, 0};
    std::uint8_t flags_ = 0;
    std::int32_t mark_ = Run::kNoMark;
    std::uint32_t font_ = 0;
};

} // namespace quillow::pdf
