// The panel beside the page: the legend, and the numbered notes with the reasons of decisions.
#pragma once

#include "engines/pdf/explain/SvgWriter.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::pdf {

class NotePanel {
public:
    /// Notes that are listed, at most; a page of small print has a hundred.
    static constexpr std::size_t kMostNotes = 600;

    /// A line of the legend: what has that colour.
    void addKey(std::string_view meaning, std::string_view colour);
    void addTitle(std::string_view text) { titles_.emplace_back(text); }
    /// The notes that follow are listed below the heading.
    void beginSection(std::string_view heading, std::string_view colour);
    /// Returns the note's number, from 1; 0 if there are too many.
    std::size_t addNote(std::string_view text);

    /// Draws the panel with its upper left corner there. Returns its height.
    float draw(SvgWriter& svg, SvgPoint at, float unit) const;

    /// The width, in units.
    static constexpr float kWidth = 330;

private:
    struct Section {
        std::string heading;
        std::string colour;
        std::vector<std::string> notes;
        std::size_t firstNumber = 0;
        std::size_t leftOut = 0;
    };
    struct Key {
        std::string meaning;
        std::string colour;
    };

    std::vector<std::string> titles_;
    std::vector<Key> keys_;
    std::vector<Section> sections_;
    std::size_t count_ = 0;
};

} // namespace quillow::pdf
