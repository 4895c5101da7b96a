// The rendered text collection of the HTML Standard ("get the text", section 3.2.7) together with the white-space processing of
// CSS Text 3, section 4: what the renderer finds goes in, in document order, and the text comes out.
#pragma once

#include "engines/html/Style.h"
#include "text/TextSink.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillow::html {

/// Where an inline formatting context stands: what decides whether the next space is seen.
struct LineState {
    enum class Space : std::uint8_t { none, visible, hidden };
    bool atStart = true;         ///< collapsible white space here is removed
    Space pending = Space::none; ///< a collapsed space, seen only when something follows it on the line
    bool pendingBreak = false;   ///< there is a line break in the text that the pending space comes from
    std::size_t opportunity = static_cast<std::size_t>(-1); ///< the text's size at the last break opportunity
    std::size_t removable = 0; ///< one past the place of a space already written that goes if the line ends here, or 0
};

class TextCollector {
public:
    explicit TextCollector(std::size_t expectedBytes) { sink_.reserve(expectedBytes); }

    /// A text node's characters.
    void text(std::string_view characters, WhiteSpace mode, Visibility visibility) {
        if (mode == WhiteSpace::preserve) {
            preserved(characters, visibility);
        } else {
            collapsible(characters, mode, visibility);
        }
    }

    /// "Required line break count": counts that meet count once, the largest, and none at the start or end of the text.
    void requireLineBreaks(std::size_t count) {
        if (started_ && count > required_) required_ = count;
    }
    /// A line end or TAB of its own.
    void literal(char character);
    /// Characters that stand outside of white-space processing.
    void insert(std::string_view characters);

    /// The line ends here: collapsible space at its end and at the next one's start is removed.
    void endLine();
    /// A box that stands in the line like a letter.
    void atomicBox();
    /// A place where the line may break, like a zero width space that is not written.
    void breakOpportunity() {
        if (line_.pending == LineState::Space::none) line_.opportunity = sink_.size();
    }

    /// A collapsed space is written now, and taken back if the line ends after it.
    void writePending();

    /// Content that stands outside of the line around it (a float, an inline block) has lines of its own.
    [[nodiscard]] LineState enterContent();
    /// The same for content that stays out of the flow, after `writePending`.
    [[nodiscard]] LineState enterOutOfFlow();
    void leaveContent(const LineState& outer) {
        line_ = outer;
        boxEnd_ = sink_.size();
    }

    /// The marker of a list item, written before the next visible characters. Taken back with `dropMarker` if none came.
    void holdMarker(std::string_view marker) { heldMarkers_ += marker; }
    [[nodiscard]] std::size_t heldMarkerBytes() const { return heldMarkers_.size(); }
    void dropMarker(std::size_t bytesBefore) {
        if (heldMarkers_.size() > bytesBefore) heldMarkers_.resize(bytesBefore);
    }

    /// Grows whenever characters are written.
    [[nodiscard]] std::size_t written() const { return sink_.size(); }

    [[nodiscard]] std::string finish() &&;

private:
    void beforeWriting() {
        line_.removable = 0;
        if (required_ > 0 || !started_ || !heldMarkers_.empty()) writeWhatIsHeld();
    }
    void writeWhatIsHeld();
    void write(std::string_view characters);
    void collapsible(std::string_view characters, WhiteSpace mode, Visibility visibility);
    void preserved(std::string_view characters, Visibility visibility);
    void collapse(std::string_view whiteSpace, WhiteSpace mode, Visibility visibility);
    void flushPending(std::string_view following);
    [[nodiscard]] bool breakVanishes(std::string_view following) const;

    text::TextSink sink_;
    LineState line_;
    std::size_t boxEnd_ = static_cast<std::size_t>(-1); ///< the text's size at the end of the last box in a line
    std::size_t required_ = 0;
    bool started_ = false;
    std::vector<std::size_t> removed_; ///< places of spaces taken back
    struct Space {
        std::size_t place;
        std::size_t breaksBefore;
        std::size_t breaksAfter;
    };
    std::vector<Space> betweenBreaks_; ///< spaces that `writePending` wrote after required line breaks
    std::string heldMarkers_;
};

} // namespace quillow::html
