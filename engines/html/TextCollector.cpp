#include "engines/html/TextCollector.h"

#include "engines/html/Ascii.h"
#include "text/ByteScan.h"
#include "text/Utf8.h"

#include <algorithm>

namespace quillow::html {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

/// East Asian Wide and Fullwidth but not Hangul (UAX #11): between two of these a line break of the source is no space
/// (CSS Text 3, section 4.1.3).
constexpr Range kWide[] = {{0x2E80, 0x303E},   {0x3041, 0x3130},  {0x3190, 0xA4CF}, {0xF900, 0xFAFF},
                           {0xFE30, 0xFE6F},   {0xFF01, 0xFF60},  {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F},
                           {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};

bool isWide(char32_t c) {
    return std::any_of(std::begin(kWide), std::end(kWide),
                       [c](Range range) { return c >= range.first && c <= range.last; });
}

char32_t lastCodePoint(std::string_view text) {
    std::size_t start = text.size();
    while (start > 0 && text.size() - start < 4) {
        --start;
        if ((static_cast<unsigned char>(text[start]) & 0xC0) != 0x80)
            return text::decodeUtf8(text.substr(start)).codePoint;
    }
    return 0;
}

} // namespace

void TextCollector::writeWhatIsHeld() {
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
        // The space has been written because of what came after it out of the flow; nothing came after it in the line.
        removed_.push_back(line_.removable - 1);
        line_.removable = 0;
    }
    line_.pending = LineState::Space::none;
    line_.atStart = true;
}

void TextCollector::atomicBox() {
    flushPending({});
    line_.removable = 0;
    line_.atStart = false;
}

LineState TextCollector::enterContent() {
    atomicBox();
    const LineState outer = line_;
    line_ = LineState{};
    return outer;
}

LineState TextCollector::enterOutOfFlow() {
    LineState outer = line_;
    if (line_.pending == LineState::Space::visible && required_ == 0) {
        write(" ");
        outer.removable = sink_.size();
        outer.pending = LineState::Space::none;
        outer.atStart = true; // more collapsible space belongs to the one written
    }
    line_ = LineState{};
    return outer;
}

bool TextCollector::breakVanishes(std::string_view following) const {
    if (following.empty() || static_cast<unsigned char>(following[0]) < 0xE2) return false;
    return isWide(text::decodeUtf8(following).codePoint) && isWide(lastCodePoint(sink_.view()));
}

void TextCollector::flushPending(std::string_view following) {
    const LineState::Space pending = line_.pending;
    line_.pending = LineState::Space::none;
    if (pending != LineState::Space::visible) return;
    if (line_.pendingBreak && breakVanishes(following)) return;
    literal(' ');
}

void TextCollector::text(std::string_view characters, WhiteSpace mode, Visibility visibility) {
    if (mode == WhiteSpace::preserve) {
        preserved(characters, visibility);
    } else {
        collapsible(characters, mode, visibility);
    }
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
    line_.pendingBreak = false; // only breaks inside of one text vanish
    for (std::size_t at = 0; at < characters.size();) {
        const std::size_t start = text::skipBlanks(characters, at);
        if (start > at && (!line_.atStart || mode == WhiteSpace::preserveBreaks))
            collapse(characters.substr(at, start - at), mode, visibility);
        if (start == characters.size()) return;
        // Words are written together as long as what stands between them is a single space.
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
    if (line_.pending == LineState::Space::none)
        line_.pending = visibility == Visibility::visible ? LineState::Space::visible : LineState::Space::hidden;
    line_.pendingBreak = hasBreak;
}

std::string TextCollector::finish() && {
    std::string text = std::move(sink_).finish();
    if (removed_.empty()) return text;
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
    // Line ends that stood before a space taken back may be the last ones now.
    while (text.ends_with("\n\n"))
        text.pop_back();
    if (text == "\n") text.clear();
    return text;
}

} // namespace quillow::html
