#include "engines/pdf/explain/NotePanel.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

// In units, which are points on pages of usual size.
constexpr float kTextSize = 6.6F;
constexpr float kLineHeight = 8.4F;
constexpr float kIndent = 15;
constexpr std::size_t kKeyColumns = 3;
/// Characters that fit beside the indent.
constexpr std::size_t kLineLength = 92;

/// Cuts ASCII text at blanks into lines that fit.
std::vector<std::string_view> wrapped(std::string_view text) {
    std::vector<std::string_view> lines;
    while (text.size() > kLineLength) {
        std::size_t end = text.rfind(' ', kLineLength);
        if (end == std::string_view::npos || end == 0) end = kLineLength;
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(text.size(), end + (text[end] == ' ' ? 1 : 0)));
    }
    lines.push_back(text);
    return lines;
}

} // namespace

void NotePanel::addKey(std::string_view meaning, std::string_view colour) {
    keys_.push_back({std::string(meaning), std::string(colour)});
}

void NotePanel::beginSection(std::string_view heading, std::string_view colour) {
    sections_.push_back({std::string(heading), std::string(colour), {}, count_ + 1, 0});
}

std::size_t NotePanel::addNote(std::string_view text) {
    Section& section = sections_.back();
    if (count_ == kMostNotes) {
        ++section.leftOut;
        return 0;
    }
    section.notes.emplace_back(text);
    return ++count_;
}

float NotePanel::draw(SvgWriter& svg, SvgPoint at, float unit) const {
    const std::string size = SvgWriter::number(kTextSize * unit);
    const float height = kLineHeight * unit;
    float y = at.y + height;
    for (const std::string& title : titles_) {
        svg.text({at.x, y}, title, {{"font-size", size}, {"font-weight", "bold"}});
        y += height;
    }
    const float keyWidth = kWidth * unit / kKeyColumns;
    for (std::size_t i = 0; i < keys_.size(); ++i) {
        const float x = at.x + keyWidth * static_cast<float>(i % kKeyColumns);
        const float middle = y - 2.3F * unit;
        svg.line({x, middle}, {x + 9 * unit, middle}, {},
                 {{"stroke", keys_[i].colour}, {"stroke-width", SvgWriter::number(4 * unit)}});
        svg.text({x + 12 * unit, y}, keys_[i].meaning, {{"font-size", size}});
        if (i % kKeyColumns == kKeyColumns - 1 || i + 1 == keys_.size()) y += height;
    }
    for (const Section& section : sections_) {
        if (section.notes.empty() && section.leftOut == 0) continue;
        y += height / 2;
        svg.text({at.x, y}, section.heading, {{"font-size", size}, {"font-weight", "bold"}, {"fill", section.colour}});
        y += height;
        for (std::size_t i = 0; i < section.notes.size(); ++i) {
            svg.text({at.x + (kIndent - 3) * unit, y}, std::to_string(section.firstNumber + i),
                     {{"font-size", size}, {"text-anchor", "end"}, {"fill", section.colour}});
            for (const std::string_view line : wrapped(section.notes[i])) {
                svg.text({at.x + kIndent * unit, y}, line, {{"font-size", size}});
                y += height;
            }
        }
        if (section.leftOut == 0) continue;
        svg.text({at.x + kIndent * unit, y}, "and " + std::to_string(section.leftOut) + " more (kMostNotes)",
                 {{"font-size", size}});
        y += height;
    }
    return y - at.y;
}

} // namespace quillow::pdf
