// What layout finds on a page and why it decides as it does, for people who want to see it. Layout works the same
// whether somebody collects evidence or not.
#pragma once

#include "engines/pdf/layout/Span.h"

#include <array>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::pdf {

enum class Topic : std::uint8_t {
    word,
    gap, ///< between letters: a blank or not
    line,
    ruling,
    gutter,    ///< a free stripe between columns of text, or what looked like one
    region,    ///< lines of one column
    table,     ///< a table, or what looked like one
    cell,      ///< of a table
    order,     ///< why what is in the area is read in its order
    paragraph, ///< why a paragraph begins with the row in the area
    dropped,   ///< characters that are not written
};

enum class Verdict : std::uint8_t { accepted, refused };

/// The corners of an area of a frame: lower left, lower right, upper right, upper left.
using Corners = std::array<Point, 4>;

/// Their places on the page.
template <class Area>
[[nodiscard]] Corners cornersOf(const Frame& frame, const Area& area) {
    const auto pointOf = [&frame](float along, float up) {
        return Point{along * frame.along.x - up * frame.along.y, along * frame.along.y + up * frame.along.x};
    };
    return {pointOf(area.left, area.bottom), pointOf(area.right, area.bottom), pointOf(area.right, area.top),
            pointOf(area.left, area.top)};
}

/// A number that a decision depends on: a measured one, or a constant with its name.
struct Fact {
    std::string_view name;
    float value = 0;
};

/// An area of the page and what is known of it.
struct Mark {
    Topic topic = Topic::word;
    Verdict verdict = Verdict::accepted;
    Corners corners{};
    std::string text; ///< in UTF-8: characters of the page, or the reason with its numbers
};

/// Collects marks. Layout has a pointer to one, null as a rule, and adds to it where it decides.
class Evidence {
public:
    /// So many marks are kept; no page for people needs a tenth.
    static constexpr std::size_t kMostMarks = 200'000;

    /// The areas that follow are in this frame.
    void setFrame(const Frame& frame) {
        frame_ = frame;
        isMirrored_ = false;
    }
    /// The areas that follow are those of the mirror image, in which pages are that are read from the right.
    void setMirrored(bool isMirrored) { isMirrored_ = isMirrored; }

    /// Adds an area of the current frame with characters of the page.
    template <class Area>
    void show(Topic topic, const Area& area, std::u32string_view characters = {}) {
        addCharacters(topic, placeOf(area), characters);
    }
    /// Adds a decision: why the area is what the topic says, or why it is not.
    template <class Area>
    void note(Topic topic, Verdict verdict, const Area& area, std::string_view reason,
              std::initializer_list<Fact> facts = {}) {
        addReason(topic, verdict, placeOf(area), reason, facts);
    }

    [[nodiscard]] const std::vector<Mark>& marks() const { return marks_; }
    /// How many marks were more than are kept.
    [[nodiscard]] std::size_t leftOut() const { return leftOut_; }

private:
    template <class Area>
    [[nodiscard]] Corners placeOf(const Area& area) const {
        if (isMirrored_) return cornersOf(frame_, Box{-area.right, area.bottom, -area.left, area.top});
        return cornersOf(frame_, Box{area.left, area.bottom, area.right, area.top});
    }
    void addCharacters(Topic topic, const Corners& corners, std::u32string_view characters);
    void addReason(Topic topic, Verdict verdict, const Corners& corners, std::string_view reason,
                   std::initializer_list<Fact> facts);
    Mark* add(Topic topic, Verdict verdict, const Corners& corners);

    Frame frame_;
    bool isMirrored_ = false;
    std::vector<Mark> marks_;
    std::size_t leftOut_ = 0;
};

} // namespace quillow::pdf
