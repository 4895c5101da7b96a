#include "engines/html/render/TextCollector.h"

#include "text/Ascii.h"
#include "text/ByteScan.h"

#include <algorithm>

namespace quillow::html {

namespace {

/// U+200B ZERO WIDTH SPACE.
constexpr std::string_view kZeroWidthSpace = "\u200B";

} // namespace

void TextCollector::writeWhatIsHeld() {
    if (!betweenBreaks_.empty() && sink_.size() == betweenBreaks_.back().place + 1)
        betweenBreaks_.back().breaksAfter = required_;
    if (started_)
        for (; required_ > 0; --required_)
            sink_.appendAscii('\n');
    required_ = 0;
    started_ = true;
    if (!heldMarkers_.empty()) {
        sink_.appendUtf8(heldMarkers_);
        heldMarkers_.clear();
    }
}

void TextCollector::write(std::string_view characters) {
    if (characters.empty()) return;
    beforeWriting();
    sink_.appendUtf8(characters);
}

void TextCollector::literal(char character) {
    beforeWriting();
    sink_.appendAscii(character);
}

void TextCollector::insert(std::string_view characters) {
    write(characters);
    line_.atStart = false;
}

void TextCollector::endLine() {
    if (line_.removable != 0) {
        // The space was written because content out of the flow came after it, but nothing came
        // after it in the line.
        removed_.push_back(line_.removable - 1);
        line_.removable = 0;
    }
    line_.pending = LineState::Space::none;
    line_.atStart = true;
}

void TextCollector::atomicBox() {
    flushPending({});
    line_.removable = 0;
    line_.opportunity = static_cast<std::size_t>(-1);
    line_.atStart = false;
    boxEnd_ = sink_.size();
}

LineState TextCollector::enterContent() {
    atomicBox();
    const LineState outer = line_;
    line_ = LineState{};
    return outer;
}

void TextCollector::writePending() {
    if (line_.pending != LineState::Space::visible) return;
    const std::size_t breaksBefore = started_ ? required_ : 0;
    write(" ");
    line_.removable = sink_.size();
    const std::size_t place = sink_.size() - 1;
    if (breaksBefore > 0 || (!betweenBreaks_.empty() && betweenBreaks_.back().end() == place))
        betweenBreaks_.push_back({place, breaksBefore, 0});
    line_.pending = LineState::Space::none;
    line_.atStart = true; // further collapsible space merges with the written one
}

LineState TextCollector::enterOutOfFlow() {
    writePending();
    const LineState outer = line_;
    line_ = LineState{};
    return outer;
}

/// CSS Text 3, 4.1.3: a line break of the source vanishes beside a zero width space and at other break
/// opportunities. Anywhere else it is a space, as in browsers.
bool TextCollector::breakVanishes(std::string_view following) const {
    return following.starts_with(kZeroWidthSpace) || line_.opportunity == sink_.size() ||
           (boxEnd_ != sink_.size() && sink_.view().ends_with(kZeroWidthSpace));
}

void TextCollector::flushPending(std::string_view following) {
    const LineState::Space pending = line_.pending;
    line_.pending = LineState::Space::none;
    if (pending != LineState::Space::visible) return;
    if (line_.pendingBreak && breakVanishes(following)) return;
    literal(' ');
}

void TextCollector::preserved(std::string_view characters, Visibility visibility) {
    if (characters.empty()) return;
    if (characters.front() == '\n') line_.pending = LineState::Space::none;
    flushPending(characters);
    if (visibility == Visibility::visible) write(characters);
    line_.removable = 0;
    line_.atStart = characters.back() == '\n';
}

void TextCollector::collapsible(std::string_view characters, WhiteSpace mode, Visibility visibility) {
    for (std::size_t at = 0; at < characters.size();) {
        const std::size_t start = text::skipBlanks(characters, at);
        if (start > at && (!line_.atStart || mode == WhiteSpace::preserveBreaks))
            collapse(characters.substr(at, start - at), mode, visibility);
        if (start == characters.size()) return;
        // Words are written together while only single spaces separate them.
        at = text::findBlankRun(characters, start);
        const std::string_view words = characters.substr(start, at - start);
        if (line_.pending != LineState::Space::none) flushPending(words);
        if (visibility == Visibility::visible) write(words);
        line_.removable = 0;
        line_.atStart = false;
    }
}

void TextCollector::collapse(std::string_view whiteSpace, WhiteSpace mode, Visibility visibility) {
    const bool hasBreak = text::findFirstOf<'\n'>(whiteSpace, 0) < whiteSpace.size();
    if (mode == WhiteSpace::preserveBreaks && hasBreak) {
        endLine();
        if (visibility == Visibility::visible)
            for (auto breaks = std::count(whiteSpace.begin(), whiteSpace.end(), '\n'); breaks > 0; --breaks)
                literal('\n');
        return;
    }
    if (line_.atStart) return;
    if (line_.pending != LineState::Space::none) return;
    line_.pending = visibility == Visibility::visible ? LineState::Space::visible : LineState::Space::hidden;
    line_.pendingBreak = hasBreak;
}

std::string TextCollector::finish() && {
    std::string text = std::move(sink_).finish();
    if (removed_.empty()) return text;
    std::sort(removed_.begin(), removed_.end());
    // Line breaks required before a space taken back and after it have met: the larger count holds.
    const auto spaces = static_cast<std::ptrdiff_t>(removed_.size());
    std::size_t met = 0; // of the breaks before `end`, nothing but spaces taken back between them
    std::size_t end = 0;
    for (const Space& space : betweenBreaks_) {
        if (!std::binary_search(removed_.begin(), removed_.begin() + spaces, space.place)) continue;
        const std::size_t before = space.place == end ? met : space.breaksBefore;
        for (std::size_t n = 1; n <= std::min(before, space.breaksAfter); ++n)
            removed_.push_back(space.place + n);
        met = std::max(before, space.breaksAfter);
        end = space.end();
    }
    std::sort(removed_.begin(), removed_.end());
    std::size_t out = removed_.front();
    auto next = removed_.begin();
    for (std::size_t in = out; in < text.size(); ++in) {
        if (next != removed_.end() && *next == in) {
            ++next;
        } else {
            text[out++] = text[in];
        }
    }
    text.resize(std::min(out, text.size()));
    // Line ends before a removed space may now be the last ones of the text.
    while (text.ends_with("\n\n"))
        text.pop_back();
    if (text == "\n") text.clear();
    return text;
}

} // namespace quillow::html
